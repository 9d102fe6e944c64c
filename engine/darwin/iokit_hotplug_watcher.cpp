#include "engine/darwin/iokit_hotplug_watcher.h"

#include "engine/log.h"

#include <IOKit/hid/IOHIDKeys.h>
#include <dispatch/dispatch.h>

#include <string>

namespace trellivar {

namespace {

/// Only an iterator that has been read to its end announces what comes next.
void drain(io_iterator_t iterator) {
  while (const io_object_t object = IOIteratorNext(iterator))
    IOObjectRelease(object);
}

} // namespace

IOKitHotplugWatcher::~IOKitHotplugWatcher() {
  matchedIter_ = {};
  terminatedIter_ = {};
  if (port_) IONotificationPortDestroy(port_);
}

void IOKitHotplugWatcher::start() {
  if (port_) return;
  port_ = IONotificationPortCreate(MACH_PORT_NULL);
  if (!port_) {
    debugLog("hot-plug: there is no notification port; devices are not watched");
    return;
  }
  IONotificationPortSetDispatchQueue(port_, dispatch_get_main_queue());
  matchedIter_ = watch(kIOFirstMatchNotification);
  terminatedIter_ = watch(kIOTerminatedNotification);
}

darwin::IoObject IOKitHotplugWatcher::watch(const char* notification) {
  darwin::IoObject iterator;
  // The registration consumes the dictionary, whether it succeeds or not.
  const kern_return_t result = IOServiceAddMatchingNotification(
      port_, notification, IOServiceMatching(kIOHIDDeviceKey), changed, this, iterator.out());
  if (result != kIOReturnSuccess) {
    debugLog("hot-plug: " + std::string(notification) + " refused, error " +
             std::to_string(result));
    return {};
  }
  drain(iterator.get());
  fireDebounced();
  return iterator;
}

void IOKitHotplugWatcher::changed(void* context, io_iterator_t iterator) noexcept {
  drain(iterator);
  static_cast<IOKitHotplugWatcher*>(context)->fireDebounced();
}

void IOKitHotplugWatcher::fireDebounced() {
  debounce_ = queue_.asyncAfter(debounceInterval_, [this] { notify(); });
}

} // namespace trellivar
