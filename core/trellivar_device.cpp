#include "core/trellivar_device.h"

#include "core/stored_signatures.h"

#include <algorithm>

namespace trellivar {

TrellivarDevice TrellivarDevice::updatingSignature(int forKeyId,
                                                   const KeySignature& signature) const {
  TrellivarDevice copy = *this;
  for (PhysicalKey& key : copy.layout.keys) {
    if (key.id != forKeyId) continue;
    key.signature = signature;
    key.altSignatures.clear();
  }
  return copy;
}

std::optional<StoredDeviceSignatures> TrellivarDevice::storedSignatures() const {
  StoredDeviceSignatures stored{vendorId, productId, {}, std::nullopt};
  for (const PhysicalKey& key : layout.keys) {
    if (!key.signature.codes.empty()) stored.keySignatures.push_back({key.id, key.signature});
  }
  if (stored.keySignatures.empty()) return std::nullopt;
  return stored;
}

TrellivarDevice
TrellivarDevice::applyingStoredSignatures(std::span<const StoredDeviceSignatures> records) const {
  const auto record = std::ranges::find_if(records, [&](const StoredDeviceSignatures& each) {
    return each.vendorId == vendorId && each.productId == productId;
  });
  TrellivarDevice result = *this;
  if (record == records.end()) return result;
  for (const StoredKeySignature& learned : record->keySignatures)
    result = result.updatingSignature(learned.keyId, learned.signature);
  return result;
}

} // namespace trellivar
