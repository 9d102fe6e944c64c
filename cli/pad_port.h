#pragma once

#include <optional>
#include <string>

namespace trellivar::cli {

/// The device path of the serial port of the pad on the cable; none when there is no such pad.
std::optional<std::string> discoverPort();

} // namespace trellivar::cli
