#pragma once

#include "core/signature_store.h"

#include <span>
#include <vector>

namespace trellivar {

/// A store of signatures that counts how often it is saved.
class RecordingSignatures final : public SignaturePersisting {
public:
  std::vector<StoredDeviceSignatures> load() const override { return records; }
  void save(std::span<const StoredDeviceSignatures> next) const override {
    records.assign(next.begin(), next.end());
    ++saves;
  }

  mutable std::vector<StoredDeviceSignatures> records;
  mutable int saves = 0;
};

} // namespace trellivar
