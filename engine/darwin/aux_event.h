#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <optional>

/// System-defined events for auxiliary controls (media keys), for which there is no C interface.
/// Main thread.
namespace trellivar::darwin {

/// NX_SUBTYPE_AUX_CONTROL_BUTTONS, NX_KEYDOWN and NX_KEYUP of IOKit/hidsystem/IOLLEvent.h.
inline constexpr int auxControlSubtype = 8;
inline constexpr int auxKeyDownState = 0x0A;
inline constexpr int auxKeyUpState = 0x0B;

/// The press or release of an auxiliary key (NX_KEYTYPE_* in IOKit/hidsystem/ev_keymap.h). The
/// caller owns one reference; NULL if the system refuses.
CGEventRef createAuxEvent(int auxKey, bool isDown);

struct SystemDefinedData {
  int subtype = 0;
  long data1 = 0; ///< of an auxiliary control: the key in bits 16 to 31, its state in bits 8 to 15
};

/// None if `event` is not a system-defined event or NULL.
std::optional<SystemDefinedData> systemDefinedData(CGEventRef event);

} // namespace trellivar::darwin
