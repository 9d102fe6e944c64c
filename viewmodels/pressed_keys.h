#pragma once

#include "core/trellivar_device.h"
#include "engine/remap_engine.h"
#include "viewmodels/published.h"

#include <memory>
#include <set>
#include <vector>

namespace trellivar {

/// Which keys of the pad that is worked on are down, in whatever mode or profile is shown: what the
/// drawn keycaps follow. A key is down while the engine sees what fires its binding, or would if it
/// had one. Main thread.
class PressedKeys {
public:
  /// `device` must outlive this.
  PressedKeys(RemapEngine& engine, const Published<TrellivarDevice>& device);
  PressedKeys(const PressedKeys&) = delete;
  PressedKeys& operator=(const PressedKeys&) = delete;

  /// By their ids.
  const Published<std::set<int>>& ids() const noexcept { return ids_; }

private:
  std::set<int> idsOn(const TrellivarDevice& device) const;

  Published<std::set<int>> ids_;
  std::vector<DeviceKey> down_; ///< on all pads
  Subscription deviceChanges_;
  std::shared_ptr<void> keyChanges_;
};

} // namespace trellivar
