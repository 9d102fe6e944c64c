#include "core/trimmed.h"

#include <array>

namespace trellivar {

namespace {

/// The characters of Unicode's White_Space property, in UTF-8.
constexpr std::array<std::string_view, 25> spaces{
    "\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000",
};

std::size_t leadingSpace(std::string_view text) noexcept {
  for (const std::string_view space : spaces) {
    if (text.starts_with(space)) return space.size();
  }
  return 0;
}

std::size_t trailingSpace(std::string_view text) noexcept {
  for (const std::string_view space : spaces) {
    if (text.ends_with(space)) return space.size();
  }
  return 0;
}

} // namespace

std::string_view trimmed(std::string_view text) noexcept {
  while (const std::size_t length = leadingSpace(text))
    text.remove_prefix(length);
  while (const std::size_t length = trailingSpace(text))
    text.remove_suffix(length);
  return text;
}

} // namespace trellivar
