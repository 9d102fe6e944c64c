#pragma once

#include <string_view>

namespace trellivar {

/// `text` without white space and line ends at either end: those of ASCII, and the spaces and line
/// separators of Unicode (property White_Space). UTF-8.
std::string_view trimmed(std::string_view text) noexcept;

} // namespace trellivar
