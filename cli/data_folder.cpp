#include "cli/data_folder.h"

#include "cli/input.h"
#include "core/json/coding.h"
#include "core/mode_profiles.h"

#include <cstdlib>

namespace trellivar::cli {

std::filesystem::path dataFolder(const Context& context) {
  if (!context.dataDir.empty()) return context.dataDir;
  const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): before any thread
  if (!home || !*home) throw Failure("HOME is not set; name the data folder with --data-dir");
  return std::filesystem::path(home) / "Library" / "Application Support" / "Trellivar";
}

std::vector<Profile> loadProfiles(const ProfileStore& store) {
  const auto loaded = decodingFile(store.profilesFile().string(), [&] { return store.load(); });
  return migrateAtStart(store, loaded);
}

std::vector<Profile> readProfiles(Context& context, const std::string& file) {
  const Json document = readDocument(context, file);
  return decodingFile(file, [&] { return JsonReader(document).list<Profile>(); });
}

} // namespace trellivar::cli
