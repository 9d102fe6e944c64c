#include "engine/darwin/iokit_device_enumerator.h"

#include "core/known_devices.h"
#include "core/trimmed.h"
#include "engine/darwin/registry.h"
#include "engine/hid_usages.h"
#include "engine/log.h"

#include <IOKit/hid/IOHIDKeys.h>

#include <algorithm>
#include <set>
#include <string>
#include <tuple>

namespace trellivar {

namespace {

/// -1 stands for a property that the device lacks; no usage has this number.
int number(io_service_t service, CFStringRef key) {
  return static_cast<int>(darwin::integerProperty(service, key).value_or(-1));
}

std::optional<ConnectedDevice> listed(io_service_t service) {
  const auto vendorId = darwin::integerProperty(service, CFSTR(kIOHIDVendorIDKey));
  const auto productId = darwin::integerProperty(service, CFSTR(kIOHIDProductIDKey));
  if (!vendorId || !productId) return std::nullopt;
  ConnectedDevice device{.name = {},
                         .enumeratedName = {},
                         .vendorId = static_cast<int>(*vendorId),
                         .productId = static_cast<int>(*productId)};
  if (!IOKitDeviceEnumerator::shouldInclude(number(service, CFSTR(kIOHIDPrimaryUsagePageKey)),
                                            number(service, CFSTR(kIOHIDPrimaryUsageKey)),
                                            device.vendorId, device.productId))
    return std::nullopt;
  const auto product = darwin::textProperty(service, CFSTR(kIOHIDProductKey));
  device.name = trimmed(product.value_or("Keyboard"));
  device.enumeratedName = product.value_or("");
  return device;
}

void logList(const std::vector<ConnectedDevice>& devices) {
  std::string list;
  for (const ConnectedDevice& device : devices) {
    list += (list.empty() ? "" : ", ") + device.name + " (" + std::to_string(device.vendorId) +
            ":" + std::to_string(device.productId) + ")";
  }
  debugLog("enumerate → " + (list.empty() ? "nothing" : list));
}

} // namespace

std::vector<ConnectedDevice> IOKitDeviceEnumerator::connectedKeyboards() {
  std::vector<ConnectedDevice> result;
  std::set<DeviceIdentity> seen;
  for (const darwin::IoObject& service : darwin::services(kIOHIDDeviceKey)) {
    auto device = listed(service.get());
    if (device && seen.insert(device->id()).second) result.push_back(*std::move(device));
  }
  std::ranges::sort(result, {}, [](const ConnectedDevice& device) {
    return std::tie(device.name, device.vendorId, device.productId);
  });
  logList(result);
  return result;
}

bool IOKitDeviceEnumerator::shouldInclude(int usagePage, int usage, int vendorId, int productId) {
  const bool isKeyboard = usagePage == static_cast<int>(hid::genericDesktopPage) &&
                          usage == static_cast<int>(hid::keyboardUsage);
  return isKeyboard || KnownDevices::knownAcrossModes(vendorId, productId) != nullptr;
}

} // namespace trellivar
