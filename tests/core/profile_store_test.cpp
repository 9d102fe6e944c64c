#include "core/json/decoding_error.h"
#include "core/profile_store.h"
#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/generators.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using Profiles = std::vector<Profile>;

static_assert(noexcept(std::declval<const ProfileStore&>().saveLegacyBackup({})));

const UUID firstId = UUID::fromText("E621E1F8-C36C-495A-93FC-0C247A3E6E5F").value();
const UUID secondId = UUID::fromText("01234567-89AB-CDEF-0123-456789ABCDEF").value();

/// Two profiles; the second has every kind of output, with a label and without.
Profiles someProfiles() {
  const Key c{KeyName("c")};
  const Key mute{KeyName("mute"), Key::Kind::consumerKeyCode};
  return {
      {firstId, "P", {}},
      {secondId,
       "Étude ⌘",
       {{2, {Output::Chord{{Modifier::command}, c}}, "Copy"},
        {1, {Output::Sequence{{c, mute}}}, std::nullopt},
        {3, {Output::Modifiers{{Modifier::rightOption}}}, std::nullopt}}},
  };
}

constexpr auto textOfSomeProfiles = R"([
  {
    "id": "E621E1F8-C36C-495A-93FC-0C247A3E6E5F",
    "mappings": [],
    "name": "P"
  },
  {
    "id": "01234567-89AB-CDEF-0123-456789ABCDEF",
    "mappings": [
      {
        "fromKeyId": 2,
        "label": "Copy",
        "output": {
          "chord": {
            "key": {
              "keyCode": "c"
            },
            "modifiers": [
              "left_command"
            ]
          }
        }
      },
      {
        "fromKeyId": 1,
        "output": {
          "sequence": {
            "keys": [
              {
                "keyCode": "c"
              },
              {
                "keyCode": "mute",
                "kind": "consumerKeyCode"
              }
            ]
          }
        }
      },
      {
        "fromKeyId": 3,
        "output": {
          "modifiers": {
            "_0": [
              "right_option"
            ]
          }
        }
      }
    ],
    "name": "Étude ⌘"
  }
]
)";

struct ProfileStoreTest : testing::Test {
  TemporaryFolder folder;
  ProfileStore store{folder.path()};
};

TEST_F(ProfileStoreTest, keepsItsFilesInItsDirectory) {
  EXPECT_EQ(store.directory(), folder.path());
  EXPECT_EQ(store.profilesFile(), folder / "profiles.json");
  EXPECT_EQ(store.legacyBackupFile(), folder / "profiles-legacy-backup.json");
}

TEST_F(ProfileStoreTest, isEmptyBeforeTheFirstSaveAndCreatesNothing) {
  EXPECT_EQ(store.load(), Profiles{});
  EXPECT_EQ(namesIn(folder.path()), Names{});
  EXPECT_EQ(ProfileStore(folder / "not yet").load(), Profiles{});
  EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST_F(ProfileStoreTest, isEmptyWhereNoDirectoryCanBe) {
  put(folder / "file", "not a folder");
  EXPECT_EQ(ProfileStore(folder / "file").load(), Profiles{});
}

TEST_F(ProfileStoreTest, loadsWhatItSavedInTheSameOrder) {
  store.save(someProfiles());
  EXPECT_EQ(store.load(), someProfiles());
  Profiles reversed = someProfiles();
  std::ranges::reverse(reversed);
  store.save(reversed);
  EXPECT_EQ(store.load(), reversed);
}

RC_GTEST_FIXTURE_PROP(ProfileStoreTest, loadsWhateverItSaved, ()) {
  const auto profiles = *generate::upTo<Profile>(3);
  store.save(profiles);
  RC_ASSERT(store.load() == profiles);
}

TEST_F(ProfileStoreTest, writesPrettyTextWithSortedKeys) {
  store.save(someProfiles());
  EXPECT_EQ(contentOf(store.profilesFile()), textOfSomeProfiles);
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
}

TEST_F(ProfileStoreTest, writesAnEmptyListAsAnEmptyArray) {
  store.save({});
  EXPECT_EQ(contentOf(store.profilesFile()), "[]\n");
  EXPECT_EQ(store.load(), Profiles{});
}

TEST_F(ProfileStoreTest, replacesTheWholeFile) {
  store.save(someProfiles());
  store.save(Profiles{{firstId, "P", {}}});
  EXPECT_EQ(store.load(), (Profiles{{firstId, "P", {}}}));
}

TEST_F(ProfileStoreTest, createsTheDirectoryWithItsParents) {
  const ProfileStore deep(folder / "Library" / "Application Support" / "Trellivar");
  deep.save(someProfiles());
  EXPECT_EQ(deep.load(), someProfiles());
  EXPECT_EQ(namesIn(deep.directory()), Names{"profiles.json"});
}

TEST_F(ProfileStoreTest, createsTheDirectoryAgainOnEverySave) {
  const ProfileStore inner(folder / "data");
  inner.save(someProfiles());
  fs::remove_all(inner.directory());
  inner.save(someProfiles());
  EXPECT_EQ(inner.load(), someProfiles());
}

TEST_F(ProfileStoreTest, keepsOthersOut) {
  const ProfileStore inner(folder / "data");
  inner.save(someProfiles());
  inner.saveLegacyBackup(someProfiles());
  EXPECT_EQ(modeOf(inner.directory()), 0700U);
  EXPECT_EQ(modeOf(inner.profilesFile()), 0600U);
  EXPECT_EQ(modeOf(inner.legacyBackupFile()), 0600U);
}

TEST_F(ProfileStoreTest, readsTheFileOnEveryLoad) {
  store.save(someProfiles());
  EXPECT_EQ(store.load(), someProfiles());
  put(store.profilesFile(), R"([{"name":"X","mappings":[],"later":true,
    "id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f"}])");
  EXPECT_EQ(store.load(), (Profiles{{firstId, "X", {}}}));
  fs::remove(store.profilesFile());
  EXPECT_EQ(store.load(), Profiles{});
}

TEST_F(ProfileStoreTest, changesNothingByLoading) {
  put(store.profilesFile(), "  [ ]  ");
  EXPECT_EQ(store.load(), Profiles{});
  EXPECT_EQ(contentOf(store.profilesFile()), "  [ ]  ");
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
}

/// Where loading fails.
std::string placeOfError(const ProfileStore& store) {
  try {
    store.load();
  } catch (const DecodingError& error) {
    return error.where();
  }
  return "nowhere";
}

TEST_F(ProfileStoreTest, reportsAFileThatIsNoListOfProfiles) {
  for (const auto& [content, where] : std::vector<std::pair<std::string, std::string>>{
           {"", "1"},
           {"{}", "1"},
           {"null", "1"},
           {"[\n", "1"},
           {"[\n{\n", "2"},
           {"[]\n]", "2"},
           {"[{}]", "[0].id"},
           {R"([{"id":"P","name":"P","mappings":[]}])", "[0].id"},
           {R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"P"}])", "[0].mappings"},
           {R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","mappings":[]}])", "[0].name"},
           {R"([{"name":"P","mappings":[]}])", "[0].id"},
       }) {
    put(store.profilesFile(), content);
    EXPECT_EQ(placeOfError(store), where) << content;
    EXPECT_EQ(contentOf(store.profilesFile()), content);
  }
}

TEST_F(ProfileStoreTest, reportsAFileThatCannotBeRead) {
  fs::create_directory(store.profilesFile());
  EXPECT_THROW(store.load(), FileError);
}

TEST_F(ProfileStoreTest, reportsADirectoryThatCannotBeCreated) {
  put(folder / "file", "not a folder");
  EXPECT_THROW(ProfileStore(folder / "file").save(someProfiles()), FileError);
  EXPECT_THROW(ProfileStore(folder / "file" / "below").save(someProfiles()), FileError);
  EXPECT_EQ(contentOf(folder / "file"), "not a folder");
}

TEST_F(ProfileStoreTest, reportsAFileThatCannotBeReplaced) {
  fs::create_directory(store.profilesFile());
  put(store.profilesFile() / "inside", "kept");
  EXPECT_THROW(store.save(someProfiles()), FileError);
  EXPECT_EQ(contentOf(store.profilesFile() / "inside"), "kept");
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
}

/// Runs `action` in a process that can write no more than a few bytes to any file.
template <class Action> int exitStatusOnAFullDisk(const Action& action) {
  return exitStatusOf([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit few{10, 10};
    if (::setrlimit(RLIMIT_FSIZE, &few) != 0) return 2;
    return action();
  });
}

TEST_F(ProfileStoreTest, leavesThePreviousFileWhenWritingFails) {
  store.save(someProfiles());
  const int status = exitStatusOnAFullDisk([&] {
    try {
      store.save(Profiles{{secondId, "new", {}}});
    } catch (const FileError&) {
      return 0;
    }
    return 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(contentOf(store.profilesFile()), textOfSomeProfiles);
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
}

TEST_F(ProfileStoreTest, keepsASymbolicLinkAndReplacesItsTarget) {
  fs::create_directory(folder / "elsewhere");
  put(folder / "elsewhere" / "mine.json", "[]");
  fs::create_symlink("elsewhere/mine.json", store.profilesFile());
  store.save(someProfiles());
  EXPECT_TRUE(fs::is_symlink(store.profilesFile()));
  EXPECT_EQ(contentOf(folder / "elsewhere" / "mine.json"), textOfSomeProfiles);
  EXPECT_EQ(store.load(), someProfiles());
}

TEST_F(ProfileStoreTest, takesALinkToNowhereForNoFile) {
  fs::create_symlink("nowhere.json", store.profilesFile());
  EXPECT_EQ(store.load(), Profiles{});
}

TEST_F(ProfileStoreTest, writesTheBackupInTheSameFormBesideTheProfiles) {
  store.save(Profiles{{firstId, "P", {}}});
  const std::string profiles = contentOf(store.profilesFile());
  EXPECT_TRUE(store.saveLegacyBackup(someProfiles()));
  EXPECT_EQ(contentOf(store.legacyBackupFile()), textOfSomeProfiles);
  EXPECT_EQ(contentOf(store.profilesFile()), profiles);
  EXPECT_EQ(namesIn(folder.path()), (Names{"profiles-legacy-backup.json", "profiles.json"}));
}

TEST_F(ProfileStoreTest, createsTheDirectoryForTheBackupToo) {
  const ProfileStore deep(folder / "a" / "b");
  EXPECT_TRUE(deep.saveLegacyBackup({}));
  EXPECT_EQ(contentOf(deep.legacyBackupFile()), "[]\n");
  EXPECT_EQ(namesIn(deep.directory()), Names{"profiles-legacy-backup.json"});
}

TEST_F(ProfileStoreTest, answersWhenTheBackupCannotBeSaved) {
  put(folder / "file", "not a folder");
  EXPECT_FALSE(ProfileStore(folder / "file").saveLegacyBackup(someProfiles()));
  EXPECT_EQ(contentOf(folder / "file"), "not a folder");

  fs::create_directory(store.legacyBackupFile());
  EXPECT_FALSE(store.saveLegacyBackup(someProfiles()));
  EXPECT_EQ(namesIn(store.legacyBackupFile()), Names{});
  EXPECT_EQ(namesIn(folder.path()), (Names{"file", "profiles-legacy-backup.json"}));
}

TEST_F(ProfileStoreTest, leavesThePreviousBackupWhenWritingFails) {
  store.saveLegacyBackup(someProfiles());
  const int status = exitStatusOnAFullDisk([&] {
    return store.saveLegacyBackup(Profiles{{secondId, "new", {}}}) ? 1 : 0;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(contentOf(store.legacyBackupFile()), textOfSomeProfiles);
}

TEST_F(ProfileStoreTest, neverReadsTheBackup) {
  store.saveLegacyBackup(someProfiles());
  EXPECT_EQ(store.load(), Profiles{});
}

} // namespace
} // namespace trellivar
