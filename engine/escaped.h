#pragma once

#include <string>
#include <string_view>

namespace trellivar {

/// `text` as it stands between the quotes of a JSON string. Plain words come back unchanged.
/// Ill-formed UTF-8 becomes U+FFFD.
std::string escaped(std::string_view text);

} // namespace trellivar
