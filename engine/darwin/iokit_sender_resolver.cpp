#include "engine/darwin/iokit_sender_resolver.h"

#include "engine/darwin/cf_values.h"
#include "engine/darwin/registry.h"

#include <IOKit/hid/IOHIDManager.h>

#include <vector>

namespace trellivar {

namespace {

/// Complete without opening or scheduling the manager.
std::vector<const void*> devices(CFSetRef set) {
  std::vector<const void*> result;
  if (!set) return result; // nothing ever matched
  result.resize(static_cast<std::size_t>(CFSetGetCount(set)));
  if (!result.empty()) CFSetGetValues(set, result.data());
  return result;
}

} // namespace

std::unordered_set<std::int64_t> IOKitSenderResolver::senderIds(int vendorId, int productId) {
  using darwin::CFRef;
  const auto manager =
      CFRef<IOHIDManagerRef>::adopt(IOHIDManagerCreate(kCFAllocatorDefault, kIOHIDOptionsTypeNone));
  const auto matching = darwin::numbers(
      {{CFSTR(kIOHIDVendorIDKey), vendorId}, {CFSTR(kIOHIDProductIDKey), productId}});
  IOHIDManagerSetDeviceMatching(manager.get(), matching.get());
  const auto set = CFRef<CFSetRef>::adopt(IOHIDManagerCopyDevices(manager.get()));

  std::unordered_set<std::int64_t> ids;
  for (const void* device : devices(set.get())) {
    // CFSet hands out const pointers; the type of a device is one to a mutable structure.
    const auto ref = static_cast<IOHIDDeviceRef>(const_cast<void*>(device)); // NOLINT
    for (const std::uint64_t id : darwin::entryIdsOfSubtree(IOHIDDeviceGetService(ref))) {
      // 0 is what events carry whose sender nobody knows.
      if (id != 0) ids.insert(static_cast<std::int64_t>(id));
    }
  }
  return ids;
}

} // namespace trellivar
