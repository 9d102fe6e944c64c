#include "tests/viewmodels/profile_folder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using namespace words;

struct ProfileStartTest : ProfileFolderTest {
  std::string file = store.profilesFile().string();
  std::string noBackup = "the backup " + store.legacyBackupFile().string() + " cannot be written";
};

TEST_F(ProfileStartTest, savesThreeEmptyModesAndTheBackupOfAnEmptyListAtTheVeryFirst) {
  const Profiles profiles = start();
  expectModes(profiles, {}, {});
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(contentOf(store.legacyBackupFile()), "[]\n");
  EXPECT_EQ(namesIn(folder.path()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
  EXPECT_EQ(reports, Names{});
}

TEST_F(ProfileStartTest, createsTheDataFolder) {
  store = ProfileStore(folder / "a" / "b");
  const Profiles profiles = start();
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(namesIn(store.directory()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
}

TEST_F(ProfileStartTest, keepsTheProfilesOfTheStartBefore) {
  const Profiles first = start();
  const FileVersion before(store.profilesFile());
  EXPECT_EQ(start(), first);
  EXPECT_EQ(start(), first);
  EXPECT_EQ(FileVersion(store.profilesFile()), before);
}

TEST_F(ProfileStartTest, writesNothingWhenEveryModeHasItsProfile) {
  put(store.profilesFile(),
      R"([ {"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"Own","mappings":[]},
      {"name":"R","mappings":[],"id":"00000000-0000-0000-0000-000000000003","future":1},
      {"name":"M","mappings":[],"id":"00000000-0000-0000-0000-000000000002"},
      {"name":"P","mappings":[],"id":"00000000-0000-0000-0000-000000000001"}])");
  const FileVersion before(store.profilesFile());
  EXPECT_EQ(namesOf(start()), (Names{"Own", "R", "M", "P"}));
  EXPECT_EQ(FileVersion(store.profilesFile()), before);
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
  EXPECT_EQ(reports, Names{});
}

TEST_F(ProfileStartTest, movesOneOldProfileToModePAndKeepsItInTheBackup) {
  const Profiles old{profile("Default", {copy, tapA})};
  store.save(old);
  const Profiles profiles = start();
  expectModes(profiles, {copy, tapA}, old);
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(backup(), old);
  EXPECT_EQ(reports, Names{});
}

TEST_F(ProfileStartTest, keepsAllOldProfilesInTheBackup) {
  const Profiles old{profile("Work", {copy}), profile("M", {tapA}), profile("P")};
  store.save(old);
  expectModes(start(), {copy}, old);
  EXPECT_EQ(backup(), old);
}

TEST_F(ProfileStartTest, leavesTheBackupAloneOnceMigrated) {
  store.save(Profiles{profile("Default", {copy})});
  start();
  const FileVersion before(store.legacyBackupFile());
  start();
  EXPECT_EQ(FileVersion(store.legacyBackupFile()), before);
}

TEST_F(ProfileStartTest, replacesTheBackupOfAnEarlierMigration) {
  start();
  const Profiles later{profile("Later", {tapA})};
  store.save(later);
  start();
  EXPECT_EQ(backup(), later);
}

TEST_F(ProfileStartTest, takesAListThatIsLoadedAlready) {
  const Profiles kept{profile("M"), profile("R", {copy}), profile("P")};
  EXPECT_EQ(*ProfileListViewModel(store, kept, report).profiles(), kept);
  EXPECT_EQ(namesIn(folder.path()), Names{});
  const Profiles old{profile("Default", {copy})};
  const ProfileListViewModel migrated(store, old, report);
  expectModes(*migrated.profiles(), {copy}, old);
  EXPECT_EQ(store.load(), *migrated.profiles());
  EXPECT_EQ(backup(), old);
}

TEST_F(ProfileStartTest, beginsWithTheProfileOfModePWhereverItStands) {
  const Profiles several{profile("Own"), profile("R"), profile("P", {copy}), profile("M"),
                         profile("P")};
  store.save(several);
  const ProfileListViewModel list(store, report);
  EXPECT_EQ(*list.activeId(), several[2].id);
  ASSERT_NE(list.active(), nullptr);
  EXPECT_EQ(*list.active(), several[2]);
}

TEST_F(ProfileStartTest, beginsWithModePOnceMigrated) {
  const ProfileListViewModel list(store, report);
  EXPECT_EQ(*list.activeId(), list.profiles()->front().id);
  EXPECT_EQ(list.active()->name, "P");
}

// Failures of the store

TEST_F(ProfileStartTest, worksWithoutAFolderToSaveInAndSaysSo) {
  put(folder / "file", "not a folder");
  store = ProfileStore(folder / "file");
  const Profiles old{profile("Default", {copy})};
  expectModes(*ProfileListViewModel(store, old, report).profiles(), {copy}, old);
  EXPECT_EQ(contentOf(folder / "file"), "not a folder");
  const std::string reason = store.profilesFile().string() + ": Not a directory";
  const std::string backup =
      "the backup " + store.legacyBackupFile().string() + " cannot be written";
  EXPECT_EQ(reports,
            (Names{backup + "; " + store.profilesFile().string() + " could not be kept: " + reason,
                   reason}));
  reports.clear();
  expectModes(start(), {}, {});
  EXPECT_EQ(reports, (Names{backup, reason})) << "there is nothing to keep";
}

TEST_F(ProfileStartTest, savesTheProfilesEvenIfTheBackupFails) {
  fs::create_directory(store.legacyBackupFile());
  const Profiles profiles = start();
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(reports, Names{noBackup}) << "an empty list needs no other copy";
  EXPECT_EQ(namesIn(folder.path()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
}

TEST_F(ProfileStartTest, setsTheOldProfilesAsideIfTheBackupFails) {
  fs::create_directory(store.legacyBackupFile());
  store.save(Profiles{profile("Default", {copy}), profile("Other", {tapA})});
  const std::string old = contentOf(file);
  const Profiles profiles = start();
  expectModes(profiles, {copy}, {});
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(contentOf(file + ".unreadable"), old);
  EXPECT_EQ(reports, Names{noBackup + "; " + file + " is kept as " + file + ".unreadable"});
  EXPECT_EQ(namesIn(store.legacyBackupFile()), Names{});
}

TEST_F(ProfileStartTest, doesNotSetAnEmptyListAside) {
  fs::create_directory(store.legacyBackupFile());
  put(file, "[]");
  start();
  EXPECT_EQ(reports, Names{noBackup});
  EXPECT_EQ(namesIn(folder.path()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
}

TEST_F(ProfileStartTest, writesTheBackupEvenIfTheProfilesCannotBeSaved) {
  fs::create_directory(store.profilesFile());
  const Profiles old{profile("Default", {copy})};
  expectModes(*ProfileListViewModel(store, old, report).profiles(), {copy}, old);
  EXPECT_EQ(backup(), old);
  EXPECT_EQ(namesIn(store.profilesFile()), Names{});
  EXPECT_EQ(reports, Names{store.profilesFile().string() + ": Is a directory"});
}

TEST_F(ProfileStartTest, writesTheBackupBeforeItReplacesTheProfiles) {
  fs::create_symlink(store.profilesFile(), store.legacyBackupFile());
  const Profiles old{profile("Default", {copy})};
  store.save(old);
  const Profiles profiles = start();
  EXPECT_EQ(store.load(), profiles) << "both names lead to one file, which the last one wrote";
}

} // namespace
} // namespace trellivar
