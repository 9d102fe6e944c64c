#include "cli/link_name.h"

namespace trellivar::cli {

std::string_view linkName(const PadLink& link) noexcept {
  if (link.is<PadLink::Usb>()) return "usb";
  return link.is<PadLink::Wireless>() ? "wireless" : "disconnected";
}

} // namespace trellivar::cli
