#include "bench/scratch_folder.h"
#include "bench/table_reporter.h"
#include "core/json/coding.h"
#include "core/profile_store.h"

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

} // namespace

int main(int argc, char** argv) {
  const ScratchFolder folder = ScratchFolder::inMemory();
  const ProfileStore store(folder.path());
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
  return runAndPrintTable(argc, argv);
}
