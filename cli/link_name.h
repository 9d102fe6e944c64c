#pragma once

#include "viewmodels/pad_link.h"

#include <string_view>

namespace trellivar::cli {

/// "usb", "wireless" or "disconnected".
std::string_view linkName(const PadLink& link) noexcept;

} // namespace trellivar::cli
