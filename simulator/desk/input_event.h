#pragma once

#include "core/inline_vector.h"

#include <cstdint>
#include <utility>

namespace trellivar::desk {

/// Numbers of an event by the numbers of their fields.
class EventFields {
public:
  /// 0 for a field that was never set.
  std::int64_t get(std::uint32_t number) const noexcept {
    for (const auto& [known, value] : fields_) {
      if (known == number) return value;
    }
    return 0;
  }
  void set(std::uint32_t number, std::int64_t value) {
    for (auto& [known, old] : fields_) {
      if (known == number) {
        old = value;
        return;
      }
    }
    fields_.push_back({number, value});
  }

private:
  InlineVector<std::pair<std::uint32_t, std::int64_t>, 8> fields_;
};

/// An event on its way from a device or a program to the applications, numbered and flagged as
/// macOS does (CGEventTypes.h, IOLLEvent.h).
struct InputEvent {
  /// Event types.
  static constexpr std::uint32_t leftMouseDown = 1;
  static constexpr std::uint32_t leftMouseUp = 2;
  static constexpr std::uint32_t rightMouseDown = 3;
  static constexpr std::uint32_t rightMouseUp = 4;
  static constexpr std::uint32_t keyDown = 10;
  static constexpr std::uint32_t keyUp = 11;
  static constexpr std::uint32_t flagsChanged = 12;
  static constexpr std::uint32_t systemDefined = 14;
  static constexpr std::uint32_t otherMouseDown = 25;
  static constexpr std::uint32_t otherMouseUp = 26;
  /// What a tap is told in place of an event when the system has switched it off.
  static constexpr std::uint32_t tapDisabledByTimeout = 0xFFFFFFFE;
  static constexpr std::uint32_t tapDisabledByUserInput = 0xFFFFFFFF;

  /// Field numbers.
  static constexpr std::uint32_t clickState = 1;
  static constexpr std::uint32_t buttonNumber = 3;
  static constexpr std::uint32_t autorepeat = 8;
  static constexpr std::uint32_t keyCode = 9;
  static constexpr std::uint32_t sourceProcessId = 41; ///< 0 on events of hardware
  static constexpr std::uint32_t sourceUserData = 42;
  static constexpr std::uint32_t senderId = 87; ///< registry id of the service; no public name

  /// Flags that say more than which modifiers are down.
  static constexpr std::uint64_t nonCoalesced = 0x100;
  static constexpr std::uint64_t numericPad = 0x200000;
  static constexpr std::uint64_t secondaryFn = 0x800000;

  /// System-defined events for auxiliary controls such as media keys.
  static constexpr int auxiliaryControl = 8;
  static constexpr int auxiliaryDown = 0x0A;
  static constexpr int auxiliaryUp = 0x0B;

  std::uint32_t type = 0;
  std::uint64_t flags = 0;
  double x = 0; ///< of the pointer, in points from the top left
  double y = 0;
  int subtype = 0; ///< system-defined events only
  long data1 = 0;  ///< system-defined events only

  EventFields fields;

  /// 0 for a field that was never set.
  std::int64_t field(std::uint32_t number) const noexcept { return fields.get(number); }
  void setField(std::uint32_t number, std::int64_t value) { fields.set(number, value); }
};

} // namespace trellivar::desk
