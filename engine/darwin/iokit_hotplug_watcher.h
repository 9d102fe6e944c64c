#pragma once

#include "engine/darwin/io_object.h"
#include "engine/hotplug_watching.h"
#include "engine/main_queue.h"

namespace trellivar {

/// Watches HID devices in the I/O registry. A burst of changes makes one notice, `debounceInterval`
/// after the last of them.
class IOKitHotplugWatcher final : public HotplugWatching {
public:
  /// `queue` must outlive the watcher.
  IOKitHotplugWatcher(MainQueue& queue, Seconds debounceInterval)
      : queue_(queue), debounceInterval_(debounceInterval) {}
  IOKitHotplugWatcher(const IOKitHotplugWatcher&) = delete;
  IOKitHotplugWatcher& operator=(const IOKitHotplugWatcher&) = delete;
  ~IOKitHotplugWatcher() override;

  void start() override;

private:
  static void changed(void* context, io_iterator_t iterator) noexcept;
  darwin::IoObject watch(const char* notification);
  void fireDebounced();

  MainQueue& queue_;
  Seconds debounceInterval_;
  IONotificationPortRef port_ = nullptr;
  darwin::IoObject matchedIter_;
  darwin::IoObject terminatedIter_;
  WorkItem debounce_;
};

} // namespace trellivar
