#pragma once

#include <optional>
#include <string>

namespace trellivar::cli {

/// The device path of the serial port of the pad on the cable; none when there is no such pad. On a
/// system where nobody looks for pads: throws Failure that says what to do instead.
std::optional<std::string> discoverPort();

} // namespace trellivar::cli
