#include "simulator/desk/hid_bus.h"

#include <utility>

namespace trellivar::desk {

void HIDBus::report(const HIDValue& value) {
  std::erase_if(listeners_, [](const auto& listener) { return listener.expired(); });
  for (const auto& weak : std::vector(listeners_)) {
    if (const auto listener = weak.lock()) (*listener)(value);
  }
}

std::shared_ptr<void> HIDBus::listen(Listener listener) {
  auto shared = std::make_shared<Listener>(std::move(listener));
  listeners_.push_back(shared);
  return shared;
}

} // namespace trellivar::desk
