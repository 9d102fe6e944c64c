#pragma once

#include "engine/connected_device.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace trellivar::cli {

enum class PadLinkState : std::uint8_t { usb, wireless, disconnected };

/// How the pads among the devices are reached; a cable counts before Bluetooth.
PadLinkState padLinkState(std::span<const ConnectedDevice> devices);

/// "usb", "wireless" or "disconnected".
std::string_view rawValue(PadLinkState state) noexcept;

} // namespace trellivar::cli
