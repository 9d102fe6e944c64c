#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace trellivar {

/// Tells when devices come and go. One watcher serves everyone who wants to know. Main thread.
class HotplugWatching {
public:
  using Callback = std::function<void()>;

  virtual ~HotplugWatching() = default;

  /// `callback` is called after each change for as long as the returned handle lives; those who
  /// asked earlier are called earlier.
  [[nodiscard]] std::shared_ptr<void> onDevicesChanged(Callback callback) {
    auto shared = std::make_shared<Callback>(std::move(callback));
    callbacks_.push_back(shared);
    return shared;
  }

  /// Begins to watch, which counts as a first change; while it watches, nothing.
  virtual void start() = 0;

protected:
  HotplugWatching() = default;
  HotplugWatching(const HotplugWatching&) = default;
  HotplugWatching& operator=(const HotplugWatching&) = default;

  void notify() {
    std::erase_if(callbacks_, [](const auto& callback) { return callback.expired(); });
    for (const auto& weak : std::vector(callbacks_)) {
      if (const auto callback = weak.lock()) (*callback)();
    }
  }

private:
  std::vector<std::weak_ptr<Callback>> callbacks_;
};

/// Watches nothing; `notify` stands in for a change.
class StubHotplugWatcher final : public HotplugWatching {
public:
  void start() override {}
  using HotplugWatching::notify;
};

} // namespace trellivar
