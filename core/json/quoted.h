#pragma once

#include <string>
#include <string_view>

namespace trellivar {

/// `text` as a JSON string, quotes included: on one line whatever it contains. Ill-formed UTF-8
/// becomes U+FFFD.
std::string quotedJson(std::string_view text);

} // namespace trellivar
