#include "cli/data_folder.h"

#include "cli/input.h"
#include "core/json/coding.h"

#include <cstdlib>
#include <system_error>
#include <utility>

namespace trellivar::cli {

namespace {

std::filesystem::path defaultFolder() {
  const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): before any thread
  if (!home || !*home) throw Failure("HOME is not set; name the data folder with --data-dir");
  return std::filesystem::path(home) / "Library" / "Application Support" / "Trellivar";
}

/// A missing folder will be created, but nothing can be where a file stands in the way; without
/// this the profiles would seem to be empty.
void requireFolder(const std::filesystem::path& folder) {
  std::error_code error;
  const auto status = std::filesystem::status(folder, error);
  const bool isFile = std::filesystem::exists(status) && !std::filesystem::is_directory(status);
  if (isFile || error == std::errc::not_a_directory)
    throw Failure(folder.string() +
                  ": the data folder cannot be there, since a file is in its place");
}

} // namespace

std::filesystem::path dataFolder(const Context& context) {
  if (context.dataDir && context.dataDir->empty())
    throw BadInput("--data-dir: expected a folder, found \"\"");
  std::filesystem::path folder =
      context.dataDir ? std::filesystem::path(*context.dataDir) : defaultFolder();
  requireFolder(folder);
  return folder;
}

std::vector<Profile> loadProfiles(const ProfileStore& store) {
  return decodingFile(store.profilesFile().string(), [&] { return store.load(); });
}

std::vector<StoredDeviceSignatures> loadSignatures(const SignatureStore& store) {
  return decodingFile(store.signaturesFile().string(), [&] { return store.read(); });
}

ProfileListViewModel openProfiles(const ProfileStore& store, Report report) {
  return {store, loadProfiles(store), std::move(report)};
}

std::vector<Profile> readProfiles(Context& context, const std::string& file) {
  const Json document = readDocument(context, file);
  return decodingFile(file, [&] { return JsonReader(document).list<Profile>(); });
}

} // namespace trellivar::cli
