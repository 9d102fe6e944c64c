#pragma once

#include "core/device_identity.h"
#include "core/key_layout.h"

#include <optional>
#include <span>
#include <string>

namespace trellivar {

struct StoredDeviceSignatures;

/// One concrete pad, as the application uses it.
struct TrellivarDevice {
  std::string name;
  int vendorId = 0;
  int productId = 0;
  KeyLayout layout;

  DeviceIdentity identity() const noexcept { return {vendorId, productId}; }

  /// A copy in which the key with this id carries `signature` and, because a learned signature
  /// replaces the defaults entirely, no alternative ones. Without such a key the copy is equal.
  TrellivarDevice updatingSignature(int forKeyId, const KeySignature& signature) const;

  /// The keys that have a signature, in layout order, without a mode; none when no key has one,
  /// since there is nothing to store then.
  std::optional<StoredDeviceSignatures> storedSignatures() const;

  /// A copy with the signatures of the first record that has this vendor and product id, whatever
  /// the record's mode. Entries for keys that the layout lacks are ignored.
  TrellivarDevice applyingStoredSignatures(std::span<const StoredDeviceSignatures> records) const;

  friend bool operator==(const TrellivarDevice&, const TrellivarDevice&) = default;
};

} // namespace trellivar
