#include "core/signature_store.h"

#include "core/json/coding.h"
#include "files/durable_file.h"

#include <exception>
#include <utility>

namespace trellivar {

SignatureStore::SignatureStore(std::filesystem::path directory)
    : directory_(std::move(directory)) {}

std::vector<StoredDeviceSignatures> SignatureStore::load() const {
  try {
    const auto text = readFile(signaturesFile());
    if (!text) return {};
    const Json document = parseJson(*text);
    return JsonReader(document).list<StoredDeviceSignatures>();
  } catch (const std::exception&) {
    return {};
  }
}

void SignatureStore::save(std::span<const StoredDeviceSignatures> records) const {
  try {
    replaceFile(signaturesFile(), prettyPrinted(encodeList(records)));
  } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): see the header
  }
}

} // namespace trellivar
