#pragma once

#include "core/stored_signatures.h"

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
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
/// that cannot be read or decoded loads as empty, and the next save sets it aside; a save that
/// fails leaves the previous file as it was. One thread.
class SignatureStore final : public SignaturePersisting {
public:
  /// `report` takes what could not be done and why, the same failure of successive operations once.
  explicit SignatureStore(std::filesystem::path directory,
                          std::function<void(std::string_view)> report = {});

  const std::filesystem::path& directory() const noexcept { return directory_; }
  std::filesystem::path signaturesFile() const { return directory_ / "signatures.json"; }

  std::vector<StoredDeviceSignatures> load() const override;
  void save(std::span<const StoredDeviceSignatures> records) const override;

  /// As `load`, but throws FileError and DecodingError.
  std::vector<StoredDeviceSignatures> read() const;

private:
  void setAsideIfUnreadable() const;
  void failed(const std::string& what) const;

  std::filesystem::path directory_;
  std::function<void(std::string_view)> report_;
  mutable std::string lastFailure_; ///< empty since the last success
};

/// Signatures that are kept nowhere else.
class MemorySignatures final : public SignaturePersisting {
public:
  std::vector<StoredDeviceSignatures> load() const override { return records_; }
  void save(std::span<const StoredDeviceSignatures> records) const override {
    records_.assign(records.begin(), records.end());
  }

private:
  mutable std::vector<StoredDeviceSignatures> records_;
};

} // namespace trellivar
