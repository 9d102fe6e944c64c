#include "core/utf8.h"

namespace trellivar::utf8 {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD

/// What may follow a lead byte. The second byte's range excludes overlong forms and surrogates.
struct Lead {
  std::size_t length; ///< of the whole sequence; 0 for a byte that cannot lead
  unsigned char secondLow = 0x80;
  unsigned char secondHigh = 0xBF;
};

Lead leadOf(unsigned char byte) noexcept {
  if (byte <= 0x7F) return {1};
  if (byte >= 0xC2 && byte <= 0xDF) return {2};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  if (byte >= 0xF1 && byte <= 0xF3) return {4};
  return {0};
}

struct Character {
  std::size_t length; ///< bytes that belong together, well-formed or not; at least 1
  bool isValid;
};

/// Requires: `bytes` is not empty.
Character firstCharacter(std::string_view bytes) noexcept {
  const Lead lead = leadOf(static_cast<unsigned char>(bytes[0]));
  if (lead.length == 0) return {1, false};
  for (std::size_t i = 1; i < lead.length; ++i) {
    if (i == bytes.size()) return {i, false};
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const unsigned char low = i == 1 ? lead.secondLow : 0x80;
    const unsigned char high = i == 1 ? lead.secondHigh : 0xBF;
    if (byte < low || byte > high) return {i, false};
  }
  return {lead.length, true};
}

} // namespace

std::size_t validPrefix(std::string_view bytes) noexcept {
  std::size_t length = 0;
  while (length < bytes.size()) {
    const Character next = firstCharacter(bytes.substr(length));
    if (!next.isValid) break;
    length += next.length;
  }
  return length;
}

bool isValid(std::string_view bytes) noexcept { return validPrefix(bytes) == bytes.size(); }

std::string replacingInvalid(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  while (!bytes.empty()) {
    const Character next = firstCharacter(bytes);
    result += next.isValid ? bytes.substr(0, next.length) : replacement;
    bytes.remove_prefix(next.length);
  }
  return result;
}

} // namespace trellivar::utf8
