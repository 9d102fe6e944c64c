#include "core/mode_sets.h"

#include "core/known_devices.h"

#include <optional>

namespace trellivar {

namespace {

/// The pad that the device is, and its mode if that is known.
struct Resolved {
  const KnownDevice* pad = nullptr;
  std::optional<std::string> modeId;
};

/// Failing its identity and name, what was learned about the device tells which pad it is.
Resolved resolved(const TrellivarDevice& device, std::span<const StoredDeviceSignatures> stored) {
  if (const auto found = KnownDevices::resolve(device.vendorId, device.productId, device.name))
    return {found->device, found->modeId};
  for (const StoredDeviceSignatures& record : stored) {
    if (record.vendorId != device.vendorId || record.productId != device.productId ||
        !record.modeId)
      continue;
    return {KnownDevices::knownAcrossModes(device.vendorId, device.productId), std::nullopt};
  }
  return {};
}

TrellivarDevice deviceOf(const KnownDevice& pad, const KnownTransport& transport) {
  return {pad.name, transport.identity.vendorId, transport.identity.productId, transport.layout};
}

/// The mode's device on its first transport, with what was learned about it in that mode.
TrellivarDevice learnedDevice(const KnownDevice& pad, const KnownMode& mode,
                              std::span<const StoredDeviceSignatures> stored) {
  const TrellivarDevice device = deviceOf(pad, mode.transports.front());
  std::vector<StoredDeviceSignatures> records;
  for (const StoredDeviceSignatures& record : stored) {
    if (record.modeId == mode.id) records.push_back(record);
  }
  return device.applyingStoredSignatures(records);
}

} // namespace

TrellivarDevice initialDevice() {
  const KnownDevice& pad = KnownDevices::all().front();
  return deviceOf(pad, pad.primaryMode()->transports.front());
}

std::vector<MappingSet> setsForAllModes(const TrellivarDevice& device,
                                        std::span<const Profile> profiles,
                                        std::span<const StoredDeviceSignatures> stored,
                                        const std::set<std::string>& portableModes) {
  std::vector<MappingSet> result;
  const auto [pad, modeId] = resolved(device, stored);
  for (const Profile& profile : profiles) {
    const KnownMode* mode = pad ? pad->mode(profile.name) : nullptr;
    if (mode && portableModes.contains(profile.name)) {
      for (const KnownTransport& transport : mode->transports)
        result.push_back({deviceOf(*pad, transport), profile, true});
    }
    if (!pad || modeId == profile.name)
      result.push_back({device, profile, false});
    else if (mode && !mode->transports.empty())
      result.push_back({learnedDevice(*pad, *mode, stored), profile, false});
  }
  return result;
}

} // namespace trellivar
