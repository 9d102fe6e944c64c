#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

/// UTF-8 the plain way, by arithmetic on scalar values, to hold the product's byte ranges against.
namespace trellivar::plain {

inline bool isScalar(std::uint32_t value) {
  return value <= 0x10FFFFU && (value < 0xD800U || value > 0xDFFFU);
}

/// Requires: `isScalar(scalar)`.
inline std::string utf8(std::uint32_t scalar) {
  const auto byte = [](std::uint32_t bits) { return static_cast<char>(bits); };
  std::string text;
  if (scalar < 0x80U) {
    text += byte(scalar);
  } else if (scalar < 0x800U) {
    text += byte(0xC0U | scalar >> 6U);
  } else if (scalar < 0x10000U) {
    text += byte(0xE0U | scalar >> 12U);
    text += byte(0x80U | (scalar >> 6U & 0x3FU));
  } else {
    text += byte(0xF0U | scalar >> 18U);
    text += byte(0x80U | (scalar >> 12U & 0x3FU));
    text += byte(0x80U | (scalar >> 6U & 0x3FU));
  }
  if (scalar >= 0x80U) text += byte(0x80U | (scalar & 0x3FU));
  return text;
}

/// True when every piece of the text is what `utf8` would write for the scalar that it stands for.
inline bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80U ? 1 : lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : 4;
    const std::string_view piece = text.substr(0, std::min(length, text.size()));
    std::uint32_t scalar = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (const char next : piece.substr(1))
      scalar = scalar << 6U | (static_cast<unsigned char>(next) & 0x3FU);
    if (!isScalar(scalar) || utf8(scalar) != piece) return false;
    text.remove_prefix(piece.size());
  }
  return true;
}

} // namespace trellivar::plain
