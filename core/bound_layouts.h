#pragma once

#include "core/device_identity.h"
#include "core/key_layout.h"
#include "core/trellivar_device.h"

#include <vector>

namespace trellivar {

/// An identity under which the bindings of a device are in force, and what its keys send there.
struct BoundLayout {
  DeviceIdentity identity;
  const KeyLayout* layout; ///< of the registry or of the device; never null
};

/// As `MappingTable::compile` binds the device: a known pad under each transport of its mode "P",
/// with the layouts of the registry; any other device as it is. The device must outlive the result.
std::vector<BoundLayout> boundLayouts(const TrellivarDevice& device);
std::vector<BoundLayout> boundLayouts(TrellivarDevice&&) = delete;

} // namespace trellivar
