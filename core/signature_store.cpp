#include "core/signature_store.h"

#include "core/json/coding.h"
#include "core/json/decoding_error.h"
#include "files/durable_file.h"
#include "files/set_aside.h"

#include <exception>
#include <utility>

namespace trellivar {

SignatureStore::SignatureStore(std::filesystem::path directory,
                               std::function<void(std::string_view)> report)
    : directory_(std::move(directory)), report_(std::move(report)) {}

std::vector<StoredDeviceSignatures> SignatureStore::read() const {
  const auto text = readFile(signaturesFile());
  if (!text) return {};
  const Json document = parseJson(*text);
  return JsonReader(document).list<StoredDeviceSignatures>();
}

std::vector<StoredDeviceSignatures> SignatureStore::load() const {
  try {
    auto records = read();
    lastFailure_.clear();
    return records;
  } catch (const DecodingError& error) {
    failed("the learned keys cannot be read: " + signaturesFile().string() + ":" + error.what());
  } catch (const std::exception& error) {
    failed(std::string("the learned keys cannot be read: ") + error.what());
  }
  return {};
}

void SignatureStore::save(std::span<const StoredDeviceSignatures> records) const {
  try {
    setAsideIfUnreadable();
    replaceFile(signaturesFile(), prettyPrinted(encodeList(records)));
    lastFailure_.clear();
  } catch (const std::exception& error) {
    failed(std::string("the learned keys cannot be saved: ") + error.what());
  }
}

/// What it holds is replaced, but not lost.
void SignatureStore::setAsideIfUnreadable() const {
  try {
    read();
  } catch (const std::exception&) {
    const auto aside = setAside(signaturesFile());
    if (report_) report_("the learned keys that cannot be read are kept as " + aside.string());
  }
}

void SignatureStore::failed(const std::string& what) const {
  if (report_ && what != lastFailure_) report_(what);
  lastFailure_ = what;
}

} // namespace trellivar
