#pragma once

#include "engine/orlo3_link.h"

#include <optional>
#include <string_view>

namespace trellivar {

/// The reply in what has arrived so far: from the first "{" to the last "}", an object whose "o" is
/// text. None for everything else, so that the reader waits for more.
///
/// Two replies in a row are none, on purpose: only one command is ever under way, so a second
/// answer means that neither can be trusted.
std::optional<Orlo3Reply> parseReply(std::string_view bytes);

} // namespace trellivar
