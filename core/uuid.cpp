#include "core/uuid.h"

#include <random>

namespace trellivar {

namespace {

constexpr std::size_t textLength = 36;

/// Dashes stand in front of these bytes.
constexpr bool dashBefore(std::size_t byte) {
  return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

std::optional<std::uint8_t> hexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<std::uint8_t>(c - 'a' + 10);
  return std::nullopt;
}

} // namespace

UUID UUID::random() {
  std::random_device source;
  UUID uuid;
  for (std::uint8_t& byte : uuid.bytes_)
    byte = static_cast<std::uint8_t>(source());
  uuid.bytes_[6] = static_cast<std::uint8_t>((uuid.bytes_[6] & 0x0FU) | 0x40U); // version 4
  uuid.bytes_[8] = static_cast<std::uint8_t>((uuid.bytes_[8] & 0x3FU) | 0x80U); // RFC variant
  return uuid;
}

std::optional<UUID> UUID::fromText(std::string_view text) {
  if (text.size() != textLength) return std::nullopt;
  UUID uuid;
  for (std::size_t byte = 0; byte < uuid.bytes_.size(); ++byte) {
    if (dashBefore(byte)) {
      if (text.front() != '-') return std::nullopt;
      text.remove_prefix(1);
    }
    const auto high = hexDigit(text[0]);
    const auto low = hexDigit(text[1]);
    if (!high || !low) return std::nullopt;
    uuid.bytes_[byte] = static_cast<std::uint8_t>(*high * 16 + *low);
    text.remove_prefix(2);
  }
  return uuid;
}

std::string UUID::text() const {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  result.reserve(textLength);
  for (std::size_t byte = 0; byte < bytes_.size(); ++byte) {
    if (dashBefore(byte)) result += '-';
    result += digits[bytes_[byte] >> 4U];
    result += digits[bytes_[byte] & 0x0FU];
  }
  return result;
}

} // namespace trellivar
