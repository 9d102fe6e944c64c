#include "core/profile_store.h"

#include "core/json/coding.h"
#include "files/durable_file.h"

#include <exception>
#include <string>
#include <utility>

namespace trellivar {

namespace {

std::string fileText(std::span<const Profile> profiles) {
  return prettyPrinted(encodeList(profiles));
}

} // namespace

ProfileStore::ProfileStore(std::filesystem::path directory) : directory_(std::move(directory)) {}

std::vector<Profile> ProfileStore::load() const {
  const auto text = readFile(profilesFile());
  if (!text) return {};
  const Json document = parseJson(*text);
  return JsonReader(document).list<Profile>();
}

void ProfileStore::save(std::span<const Profile> profiles) const {
  replaceFile(profilesFile(), fileText(profiles));
}

bool ProfileStore::saveLegacyBackup(std::span<const Profile> profiles) const noexcept {
  try {
    replaceFile(legacyBackupFile(), fileText(profiles));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

} // namespace trellivar
