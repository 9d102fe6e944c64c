#include "core/mode_profiles.h"
#include "tests/files/file_facts.h"
#include "tests/support/generators.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using Profiles = std::vector<Profile>;

const KeyMapping copy{1, {Output::Chord{{Modifier::command}, Key{KeyName("c")}}}, "Copy"};
const KeyMapping tapA{2, {Output::Sequence{{Key{KeyName("a")}}}}, std::nullopt};

Profile profile(std::string name, std::vector<KeyMapping> mappings = {}) {
  return {UUID::random(), std::move(name), std::move(mappings)};
}

Names namesOf(const Profiles& profiles) {
  Names names;
  for (const Profile& each : profiles)
    names.push_back(each.name);
  return names;
}

/// New profiles P, M and R, where P has these mappings.
void expectModes(const Profiles& profiles, const std::vector<KeyMapping>& mappingsOfP,
                 const Profiles& old) {
  ASSERT_EQ(namesOf(profiles), (Names{"P", "M", "R"}));
  EXPECT_EQ(profiles[0].mappings, mappingsOfP);
  EXPECT_TRUE(profiles[1].mappings.empty());
  EXPECT_TRUE(profiles[2].mappings.empty());
  std::set<UUID> ids{UUID()};
  for (const Profile& each : old)
    ids.insert(each.id);
  for (const Profile& each : profiles)
    EXPECT_TRUE(ids.insert(each.id).second) << "not a fresh id: " << each.id.text();
}

TEST(ModeProfiles, areNamedInTheOrderOfTheSwitch) {
  EXPECT_EQ((Names{modeNames.begin(), modeNames.end()}), (Names{"P", "M", "R"}));
}

TEST(ModeProfiles, areThreeEmptyOnesAtFirst) { expectModes(migrated({}), {}, {}); }

TEST(ModeProfiles, takeOverTheMappingsOfTheOnlyOldProfile) {
  const Profiles old{profile("Default", {copy, tapA})};
  expectModes(migrated(old), {copy, tapA}, old);
}

TEST(ModeProfiles, takeOverTheMappingsOfTheFirstOldProfileAlone) {
  const Profiles old{profile("Work", {tapA}), profile("Play", {copy}), profile("Else", {copy})};
  expectModes(migrated(old), {tapA}, old);
  const Profiles emptyFirst{profile("Work"), profile("Play", {copy})};
  expectModes(migrated(emptyFirst), {}, emptyFirst);
}

TEST(ModeProfiles, replaceAListThatLacksOneOfThem) {
  for (const Names& names : std::vector<Names>{
           {"P", "M"}, {"P", "R"}, {"M", "R"}, {"M"}, {"M", "P", "X"}, {"P", "P", "M"}}) {
    Profiles old;
    for (const std::string& name : names)
      old.push_back(profile(name));
    old.front().mappings = {copy};
    old.back().mappings.push_back(tapA);
    expectModes(migrated(old), old.front().mappings, old);
  }
}

TEST(ModeProfiles, areFoundByTheirExactNames) {
  const Profiles old{profile("p", {copy}), profile("m"), profile("r")};
  expectModes(migrated(old), {copy}, old);
  const Profiles padded{profile("P "), profile("M"), profile("R")};
  expectModes(migrated(padded), {}, padded);
}

TEST(ModeProfiles, stayAsTheyAreInAnyOrderAmongOthers) {
  for (const Names& names : std::vector<Names>{{"P", "M", "R"},
                                               {"R", "M", "P"},
                                               {"M", "Own", "R", "P", "Other"},
                                               {"P", "P", "M", "R", "R"}}) {
    Profiles profiles;
    for (const std::string& name : names)
      profiles.push_back(profile(name, {tapA}));
    EXPECT_EQ(migrated(profiles), profiles);
  }
}

RC_GTEST_PROP(ModeProfiles, needNoSecondMigration, ()) {
  Profiles profiles;
  for (const std::string& name :
       *generate::upTo(8, rc::gen::elementOf(Names{"P", "M", "R", "Own"})))
    profiles.push_back(profile(name));
  const bool isComplete = std::ranges::all_of(Names{"P", "M", "R"}, [&](const std::string& name) {
    return std::ranges::count(profiles, name, &Profile::name) > 0;
  });
  const Profiles once = migrated(profiles);
  RC_CLASSIFY(isComplete, "complete");
  RC_ASSERT((once == profiles) == isComplete);
  RC_ASSERT(migrated(once) == once);
}

// At start

/// One start of the application: a load that fails counts as an empty list.
Profiles start(const ProfileStore& store) {
  Profiles loaded;
  try {
    loaded = store.load();
  } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): that is how it starts
  }
  return migrateAtStart(store, loaded);
}

struct StartTest : testing::Test {
  TemporaryFolder folder;
  ProfileStore store{folder.path()};

  Profiles backup() const {
    const TemporaryFolder place;
    const ProfileStore reader(place.path());
    fs::copy_file(store.legacyBackupFile(), reader.profilesFile());
    return reader.load();
  }
};

/// Tells whether a file has been replaced or written.
struct FileVersion {
  explicit FileVersion(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    inode = status.st_ino;
    content = contentOf(path);
  }
  ino_t inode = 0;
  std::string content;
  friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

TEST_F(StartTest, savesThreeEmptyModesAndTheBackupOfAnEmptyListAtTheVeryFirst) {
  const Profiles profiles = start(store);
  expectModes(profiles, {}, {});
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(contentOf(store.legacyBackupFile()), "[]\n");
  EXPECT_EQ(namesIn(folder.path()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
}

TEST_F(StartTest, createsTheDataFolder) {
  const ProfileStore deep(folder / "a" / "b");
  const Profiles profiles = start(deep);
  EXPECT_EQ(deep.load(), profiles);
  EXPECT_EQ(namesIn(deep.directory()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
}

TEST_F(StartTest, keepsTheProfilesOfTheStartBefore) {
  const Profiles first = start(store);
  const FileVersion before(store.profilesFile());
  EXPECT_EQ(start(store), first);
  EXPECT_EQ(start(ProfileStore(folder.path())), first);
  EXPECT_EQ(FileVersion(store.profilesFile()), before);
}

TEST_F(StartTest, writesNothingWhenEveryModeHasItsProfile) {
  put(store.profilesFile(),
      R"([ {"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"Own","mappings":[]},
      {"name":"R","mappings":[],"id":"00000000-0000-0000-0000-000000000003","future":1},
      {"name":"M","mappings":[],"id":"00000000-0000-0000-0000-000000000002"},
      {"name":"P","mappings":[],"id":"00000000-0000-0000-0000-000000000001"}])");
  const FileVersion before(store.profilesFile());
  EXPECT_EQ(namesOf(start(store)), (Names{"Own", "R", "M", "P"}));
  EXPECT_EQ(FileVersion(store.profilesFile()), before);
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
}

TEST_F(StartTest, movesOneOldProfileToModePAndKeepsItInTheBackup) {
  const Profiles old{profile("Default", {copy, tapA})};
  store.save(old);
  const Profiles profiles = start(store);
  expectModes(profiles, {copy, tapA}, old);
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(backup(), old);
}

TEST_F(StartTest, keepsAllOldProfilesInTheBackup) {
  const Profiles old{profile("Work", {copy}), profile("M", {tapA}), profile("P")};
  store.save(old);
  expectModes(start(store), {copy}, old);
  EXPECT_EQ(backup(), old);
}

TEST_F(StartTest, leavesTheBackupAloneOnceMigrated) {
  store.save(Profiles{profile("Default", {copy})});
  start(store);
  const FileVersion before(store.legacyBackupFile());
  start(store);
  EXPECT_EQ(FileVersion(store.legacyBackupFile()), before);
}

TEST_F(StartTest, replacesTheBackupOfAnEarlierMigration) {
  start(store);
  const Profiles later{profile("Later", {tapA})};
  store.save(later);
  start(store);
  EXPECT_EQ(backup(), later);
}

TEST_F(StartTest, replacesADamagedFileByThreeEmptyModes) {
  for (const char* damaged : {"", "[", "{}", "[{}]", "null", "\xFF"}) {
    put(store.profilesFile(), damaged);
    store.saveLegacyBackup(Profiles{profile("Older")});
    const Profiles profiles = start(store);
    expectModes(profiles, {}, {});
    EXPECT_EQ(store.load(), profiles) << damaged;
    EXPECT_EQ(contentOf(store.legacyBackupFile()), "[]\n") << damaged;
    EXPECT_EQ(namesIn(folder.path()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
  }
}

TEST_F(StartTest, worksWithoutAFolderToSaveIn) {
  put(folder / "file", "not a folder");
  const Profiles old{profile("Default", {copy})};
  expectModes(migrateAtStart(ProfileStore(folder / "file"), old), {copy}, old);
  EXPECT_EQ(contentOf(folder / "file"), "not a folder");
}

TEST_F(StartTest, savesTheProfilesEvenIfTheBackupFails) {
  fs::create_directory(store.legacyBackupFile());
  const Profiles profiles = start(store);
  EXPECT_EQ(store.load(), profiles);
}

TEST_F(StartTest, writesTheBackupEvenIfTheProfilesCannotBeSaved) {
  fs::create_directory(store.profilesFile());
  const Profiles old{profile("Default", {copy})};
  expectModes(migrateAtStart(store, old), {copy}, old);
  EXPECT_EQ(backup(), old);
  EXPECT_EQ(namesIn(store.profilesFile()), Names{});
}

} // namespace
} // namespace trellivar
