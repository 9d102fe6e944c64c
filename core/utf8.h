#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trellivar::utf8 {

/// The length of the longest prefix that is well-formed UTF-8 (Unicode, table 3-7: no overlong
/// forms, no surrogates, nothing above U+10FFFF).
std::size_t validPrefix(std::string_view bytes) noexcept;

bool isValid(std::string_view bytes) noexcept;

/// The text with each maximal ill-formed part replaced by U+FFFD, as the Unicode standard
/// recommends.
std::string replacingInvalid(std::string_view bytes);

} // namespace trellivar::utf8
