#pragma once

#include "engine/device_enumerating.h"
#include "engine/hotplug_watching.h"
#include "viewmodels/pad_link.h"
#include "viewmodels/published.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace trellivar {

/// The pads that are attached, the one that is worked with, and how it is connected. Main thread.
class DeviceListViewModel : public std::enable_shared_from_this<DeviceListViewModel> {
public:
  /// Looks once, and again whenever `hotplug`, which may be null, tells of a change.
  static std::shared_ptr<DeviceListViewModel> make(std::shared_ptr<DeviceEnumerating> enumerator,
                                                   std::shared_ptr<HotplugWatching> hotplug);
  DeviceListViewModel(const DeviceListViewModel&) = delete;
  DeviceListViewModel& operator=(const DeviceListViewModel&) = delete;

  const Published<std::vector<ConnectedDevice>>& devices() const noexcept { return devices_; }
  const Published<PadLink>& padLink() const noexcept { return padLink_; }
  /// Stays on the same device for as long as it is there; else the first one, if there is any.
  const Published<std::optional<ConnectedDevice>>& selected() const noexcept { return selected_; }

  void refresh();
  void select(const ConnectedDevice& device);

  /// The devices that are known pads, by identity or name, in the order given; of several that are
  /// the same model only the first, since one pad may be there under several identities.
  static std::vector<ConnectedDevice> collapse(std::span<const ConnectedDevice> devices);
  /// How the pads among the devices are reached: by cable if any of them is, else as the first one.
  /// To be asked before `collapse`, which may drop the cable.
  static PadLink link(std::span<const ConnectedDevice> devices);
  /// Whether the registry knows the device's identity as that of a pad on the cable.
  static bool isOnCable(const ConnectedDevice& device);

private:
  DeviceListViewModel(std::shared_ptr<DeviceEnumerating> enumerator,
                      std::shared_ptr<HotplugWatching> hotplug)
      : enumerator_(std::move(enumerator)), hotplug_(std::move(hotplug)) {}

  std::shared_ptr<DeviceEnumerating> enumerator_;
  std::shared_ptr<HotplugWatching> hotplug_;
  std::shared_ptr<void> hotplugCallback_;
  Published<std::vector<ConnectedDevice>> devices_;
  Published<PadLink> padLink_;
  Published<std::optional<ConnectedDevice>> selected_;
};

} // namespace trellivar
