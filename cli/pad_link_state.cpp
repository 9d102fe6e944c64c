#include "cli/pad_link_state.h"

#include "engine/recognised_pads.h"

#include <algorithm>
#include <array>

namespace trellivar::cli {

PadLinkState padLinkState(std::span<const ConnectedDevice> devices) {
  if (std::ranges::any_of(devices, isOnCable)) return PadLinkState::usb;
  return recognisedPads(devices).empty() ? PadLinkState::disconnected : PadLinkState::wireless;
}

std::string_view rawValue(PadLinkState state) noexcept {
  constexpr std::array<std::string_view, 3> names{"usb", "wireless", "disconnected"};
  return names[static_cast<std::size_t>(state)];
}

} // namespace trellivar::cli
