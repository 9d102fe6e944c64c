#pragma once

#include "core/stored_signatures.h"

#include <filesystem>
#include <span>
#include <vector>

namespace trellivar {

/// Where learned signatures live. Neither operation reports failure: a store that cannot be read is
/// one without learned keys. Merging records is the caller's work, on the whole list.
class SignaturePersisting {
public:
  virtual ~SignaturePersisting() = default;
  virtual std::vector<StoredDeviceSignatures> load() const = 0;
  virtual void save(std::span<const StoredDeviceSignatures> records) const = 0;
};

/// The signatures in one file of the data folder, replaced whole, atomically and durably. A file
/// that cannot be read or decoded loads as empty, and the next save overwrites it; a save that
/// fails leaves the previous file as it was.
class SignatureStore final : public SignaturePersisting {
public:
  explicit SignatureStore(std::filesystem::path directory);

  const std::filesystem::path& directory() const noexcept { return directory_; }
  std::filesystem::path signaturesFile() const { return directory_ / "signatures.json"; }

  std::vector<StoredDeviceSignatures> load() const override;
  void save(std::span<const StoredDeviceSignatures> records) const override;

private:
  std::filesystem::path directory_;
};

} // namespace trellivar
