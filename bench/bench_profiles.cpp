#include "bench/table_reporter.h"
#include "core/json/coding.h"
#include "core/profile_store.h"

#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

using namespace trellivar;
using namespace trellivar::bench;

namespace {

std::vector<Profile> thousandProfiles() {
  std::vector<Profile> profiles;
  for (int i = 0; i < 1000; ++i) {
    Profile profile{UUID::random(), "Profile " + std::to_string(i), {}};
    const Key letter{KeyName(std::string(1, static_cast<char>('a' + i % 26)))};
    profile.mappings = {
        {1, {Output::Chord{{Modifier::command, Modifier::shift}, letter}}, "Copy"},
        {2, {Output::Sequence{{letter, letter, letter}}}, std::nullopt},
        {3, {Output::Modifiers{{Modifier::rightOption}}}, "Option"},
    };
    profiles.push_back(profile);
  }
  return profiles;
}

/// A folder in memory where there is one, so that flushing to disk costs nothing.
std::filesystem::path folder() {
  const std::filesystem::path memory = "/dev/shm";
  const auto base = exists(memory) ? memory : std::filesystem::temp_directory_path();
  return base / ("trellivar-bench-" + std::to_string(getpid()));
}

} // namespace

int main(int argc, char** argv) {
  const ProfileStore store(folder());
  const auto profiles = thousandProfiles();
  store.save(profiles);
  addRow("load 1,000 profiles of three keys", Unit::milliseconds, 30, 1,
         [&](benchmark::State& state) {
           for (auto _ : state)
             benchmark::DoNotOptimize(store.load());
         });
  addRow("save 1,000 profiles of three keys", Unit::milliseconds, 30, 1,
         [&](benchmark::State& state) {
           for (auto _ : state)
             store.save(profiles);
         });
  const int result = runAndPrintTable(argc, argv);
  std::filesystem::remove_all(store.directory());
  return result;
}
