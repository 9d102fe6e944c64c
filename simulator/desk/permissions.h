#pragma once

#include <cstdint>

namespace trellivar::desk {

enum class Access : std::uint8_t { granted, denied, unknown };

/// What goes wrong on request. Counts go down by one each time; `forever` never does.
struct Faults {
  static constexpr int forever = -1;

  int failingTaps = 0;          ///< taps that cannot be created although the process is trusted
  int failingOpens = 0;         ///< HID devices that refuse to be opened: attempts, not devices
  bool deafOpens = false;       ///< opening succeeds, but no value ever arrives
  int failingMatches = 0;       ///< look-ups of services that fail
  int failingPorts = 0;         ///< notification ports that cannot be created
  bool brokenIterators = false; ///< iterators turn invalid when the registry changes below them

  /// Whether this attempt fails.
  static bool strikes(int& count) { return count == forever || (count > 0 && count-- > 0); }
};

} // namespace trellivar::desk
