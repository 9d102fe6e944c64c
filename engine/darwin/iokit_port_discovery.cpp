#include "engine/darwin/iokit_port_discovery.h"

#include "engine/darwin/registry.h"

#include <IOKit/serial/IOSerialKeys.h>

#include <cstdint>
#include <string_view>
#include <utility>

namespace trellivar::darwin {

namespace {

constexpr std::string_view pathPart = "usbmodem";
constexpr std::int64_t padVendorId = 0x4C4A;
/// The service itself and up to eleven entries above it.
constexpr int entriesInspected = 12;

/// That of the USB device which the service belongs to; the nearest entry that has a number counts.
std::optional<std::int64_t> usbVendorId(IoObject entry) {
  for (int inspected = 1; entry; ++inspected) {
    if (const auto id = integerProperty(entry.get(), CFSTR("idVendor"))) return id;
    if (inspected == entriesInspected) break;
    entry = parent(entry.get());
  }
  return std::nullopt;
}

} // namespace

std::optional<std::string> discoverPadPort() {
  for (IoObject& service : services(kIOSerialBSDServiceValue)) {
    auto path = textProperty(service.get(), CFSTR(kIOCalloutDeviceKey));
    if (!path || path->find(pathPart) == std::string::npos) continue;
    if (usbVendorId(std::move(service)) == padVendorId) return path;
  }
  return std::nullopt;
}

} // namespace trellivar::darwin
