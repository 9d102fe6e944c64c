#pragma once

#include <optional>
#include <string>

namespace trellivar::darwin {

/// The callout device of the pad's serial port, such as "/dev/cu.usbmodem1101"; of several, that of
/// the first service in the registry's order. None without one. Needs no permission.
std::optional<std::string> discoverPadPort();

} // namespace trellivar::darwin
