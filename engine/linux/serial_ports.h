#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace trellivar {

/// The device file of the first pad in the order of the names, such as "/dev/ttyACM0"; none when no
/// pad is on the cable. Of the ports below class/tty only those of USB modems can be pads.
///
/// `sysfs` is where the kernel shows its devices. A port is the pad's if its vendor id is, which
/// stands at the USB device, some levels above: 12 entries are inspected, the port itself and up to
/// 11 of its ancestors, and the first vendor id counts.
std::optional<std::string> discoverPadPort(const std::filesystem::path& sysfs = "/sys");

} // namespace trellivar
