#pragma once

#include "simulator/desk/registry.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace trellivar::desk {

/// One element of a device has changed.
struct HIDValue {
  EntryId device = 0; ///< the entry of class "IOHIDDevice" that reports it
  Usage usage;
  std::int64_t value = 0; ///< 1 pressed, 0 released
};

/// Where devices report values, to whoever has opened them. Reports are heard at once.
class HIDBus {
public:
  using Listener = std::function<void(const HIDValue&)>;

  void report(const HIDValue& value);
  /// Until the returned handle is destroyed.
  [[nodiscard]] std::shared_ptr<void> listen(Listener listener);

private:
  std::vector<std::weak_ptr<Listener>> listeners_;
};

} // namespace trellivar::desk
