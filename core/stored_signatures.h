#pragma once

#include "core/key_layout.h"

#include <optional>
#include <string>
#include <vector>

namespace trellivar {

/// The learned signature of one pad key.
struct StoredKeySignature {
  int keyId = 0; ///< `PhysicalKey::id`
  KeySignature signature;

  friend bool operator==(const StoredKeySignature&, const StoredKeySignature&) = default;
};

/// What has been learned about one device identity in one mode, which together address the record.
struct StoredDeviceSignatures {
  int vendorId = 0;
  int productId = 0;
  std::vector<StoredKeySignature> keySignatures;
  /// Absent in records from before modes were stored.
  std::optional<std::string> modeId;

  friend bool operator==(const StoredDeviceSignatures&, const StoredDeviceSignatures&) = default;
};

} // namespace trellivar
