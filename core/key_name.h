#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace trellivar {

/// The name of a key ("a", "left_command", "volume_increment", "button1"), interned: each distinct
/// text is kept once for the life of the process, so that comparing and hashing a name cost as much
/// as a pointer, while printing it gives the text.
///
/// Any text is a valid name, whether a key table knows it or not. Safe to create and use on every
/// thread. Creating one from text takes a lock and may allocate, so hot paths keep `KeyName`s.
class KeyName {
public:
  /// The empty name.
  KeyName() noexcept;
  explicit KeyName(std::string_view text);

  const std::string& text() const noexcept { return *text_; }

  /// Identity; it equals equality of the texts.
  friend bool operator==(KeyName, KeyName) noexcept = default;

  /// Orders names by their texts, for output that people read.
  struct ByText {
    bool operator()(KeyName a, KeyName b) const noexcept { return a.text() < b.text(); }
  };

  /// Well spread over the high bits, which is where power-of-two tables take their index from.
  std::uint64_t hash() const noexcept {
    return reinterpret_cast<std::uintptr_t>(text_) * 0x9E3779B97F4A7C15U;
  }

private:
  const std::string* text_;
};

} // namespace trellivar

template <> struct std::hash<trellivar::KeyName> {
  std::size_t operator()(trellivar::KeyName name) const noexcept {
    return static_cast<std::size_t>(name.hash() >> 16U);
  }
};
