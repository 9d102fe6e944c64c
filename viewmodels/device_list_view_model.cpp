#include "viewmodels/device_list_view_model.h"

#include "core/known_devices.h"
#include "core/trimmed.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace trellivar {

namespace {

std::optional<KnownDevices::Resolution> resolved(const ConnectedDevice& device) {
  return KnownDevices::resolve(device.vendorId, device.productId, device.name);
}

bool isPad(const ConnectedDevice& device) { return resolved(device).has_value(); }

/// `selected` as it is in the list now, else the first of the list.
std::optional<ConnectedDevice> matched(const std::optional<ConnectedDevice>& selected,
                                       const std::vector<ConnectedDevice>& devices) {
  if (devices.empty()) return std::nullopt;
  if (selected) {
    const auto same = std::ranges::find(devices, selected->id(), &ConnectedDevice::id);
    if (same != devices.end()) return *same;
  }
  return devices.front();
}

} // namespace

std::shared_ptr<DeviceListViewModel>
DeviceListViewModel::make(std::shared_ptr<DeviceEnumerating> enumerator,
                          std::shared_ptr<HotplugWatching> hotplug) {
  std::shared_ptr<DeviceListViewModel> model(
      new DeviceListViewModel(std::move(enumerator), std::move(hotplug)));
  model->refresh();
  if (model->hotplug_)
    model->hotplugCallback_ = model->hotplug_->onDevicesChanged([weak = std::weak_ptr(model)] {
      if (const auto self = weak.lock()) self->refresh();
    });
  return model;
}

void DeviceListViewModel::refresh() {
  const auto attached = enumerator_->connectedKeyboards();
  devices_.set(collapse(attached));
  padLink_.set(link(attached));
  selected_.set(matched(*selected_, *devices_));
}

void DeviceListViewModel::select(const ConnectedDevice& device) { selected_.set(device); }

std::vector<ConnectedDevice>
DeviceListViewModel::collapse(std::span<const ConnectedDevice> devices) {
  std::vector<ConnectedDevice> pads;
  std::set<std::string> models;
  for (const ConnectedDevice& device : devices) {
    const auto found = resolved(device);
    if (found && models.insert(found->device->name).second) pads.push_back(device);
  }
  return pads;
}

PadLink DeviceListViewModel::link(std::span<const ConnectedDevice> devices) {
  if (std::ranges::any_of(devices, isOnCable)) return {PadLink::Usb{}};
  const auto pad = std::ranges::find_if(devices, isPad);
  if (pad == devices.end()) return {PadLink::Disconnected{}};
  return {PadLink::Wireless{std::string(trimmed(pad->name))}};
}

bool DeviceListViewModel::isOnCable(const ConnectedDevice& device) {
  const KnownDevice* pad = KnownDevices::knownAcrossModes(device.vendorId, device.productId);
  return pad && std::ranges::any_of(pad->modes, [&](const KnownMode& mode) {
           const KnownTransport* found = mode.transport(device.vendorId, device.productId);
           return found && found->isUSB;
         });
}

} // namespace trellivar
