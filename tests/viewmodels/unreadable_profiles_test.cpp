#include "tests/support/child_process.h"
#include "tests/viewmodels/profile_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using namespace words;

struct UnreadableProfilesTest : ProfileFolderTest {
  std::string file = store.profilesFile().string();

  /// What is reported of a file that cannot be read and is renamed.
  std::string keptAs(const std::string& reason, const std::string& suffix = ".unreadable") const {
    return "the profiles cannot be read: " + file + ":" + reason +
           "; the file counts as empty and is kept as " + file + suffix;
  }

  /// What is reported, line by line, when somebody starts whom permissions bind.
  std::string reportsToAStranger() {
    const TemporaryFolder place;
    put(place / "reports", "");
    fs::permissions(place.path(), fs::perms::all);
    fs::permissions(place / "reports", fs::perms::all);
    const int status = exitStatusOf([&] {
      if (::geteuid() == 0 && ::setuid(65534) != 0) return 2;
      const bool areModes = namesOf(start()) == Names{"P", "M", "R"};
      std::string lines;
      for (const std::string& each : reports)
        lines += each + "\n";
      put(place / "reports", lines);
      return areModes ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    return contentOf(place / "reports");
  }
};

TEST_F(UnreadableProfilesTest, giveWayToThreeEmptyModesAndAreKept) {
  put(file, "[1,]");
  const Profiles profiles = start();
  expectModes(profiles, {}, {});
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(contentOf(file + ".unreadable"), "[1,]");
  EXPECT_EQ(contentOf(store.legacyBackupFile()), "[]\n");
  EXPECT_EQ(namesIn(folder.path()),
            (Names{"profiles-legacy-backup.json", "profiles.json", "profiles.json.unreadable"}));
}

TEST_F(UnreadableProfilesTest, areReportedWithThePlaceOfTheMistake) {
  put(file, "[\n  1,\n]");
  start();
  put(file, R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"P","mappings":{}}])");
  start();
  ASSERT_EQ(reports.size(), 2U);
  EXPECT_EQ(reports[0].find("the profiles cannot be read: " + file + ":3"), 0U) << reports[0];
  EXPECT_EQ(reports[1].find("the profiles cannot be read: " + file + ":[0].mappings"), 0U)
      << reports[1];
}

TEST_F(UnreadableProfilesTest, areOfAnyWrongContent) {
  Names kept;
  for (const char* damaged : {"", "[", "{}", "[{}]", "null", "\xFF"}) {
    put(file, damaged);
    store.saveLegacyBackup(Profiles{profile("Older")});
    const Profiles profiles = start();
    expectModes(profiles, {}, {});
    EXPECT_EQ(store.load(), profiles) << damaged;
    EXPECT_EQ(contentOf(store.legacyBackupFile()), "[]\n") << damaged;
    kept.emplace_back(damaged);
    for (std::size_t i = 0; i < kept.size(); ++i) {
      const std::string suffix = i == 0 ? "" : "-" + std::to_string(i + 1);
      EXPECT_EQ(contentOf(file + ".unreadable" + suffix), kept[i]);
    }
    EXPECT_TRUE(reports.back().ends_with(kept.size() == 1 ? " is kept as " + file + ".unreadable"
                                                          : " is kept as " + file + ".unreadable-" +
                                                                std::to_string(kept.size())))
        << reports.back();
  }
  EXPECT_EQ(reports.size(), kept.size());
}

TEST_F(UnreadableProfilesTest, areReadableAgainFromTheNextStartOn) {
  put(file, "damaged");
  const Profiles profiles = start();
  reports.clear();
  EXPECT_EQ(start(), profiles);
  EXPECT_EQ(reports, Names{});
  EXPECT_EQ(contentOf(file + ".unreadable"), "damaged");
}

TEST_F(UnreadableProfilesTest, mayBeAFolder) {
  fs::create_directory(file);
  put(file + "/notes", "mine");
  const Profiles profiles = start();
  EXPECT_EQ(store.load(), profiles);
  EXPECT_EQ(contentOf(file + ".unreadable/notes"), "mine");
  EXPECT_EQ(reports, Names{keptAs(" Is a directory")});
}

TEST_F(UnreadableProfilesTest, mayLieBehindALinkWhichIsRenamed) {
  put(folder / "mine.json", "{damaged");
  fs::create_symlink("mine.json", file);
  const Profiles profiles = start();
  EXPECT_EQ(store.load(), profiles);
  EXPECT_FALSE(fs::is_symlink(file));
  EXPECT_EQ(fs::read_symlink(file + ".unreadable"), "mine.json");
  EXPECT_EQ(contentOf(folder / "mine.json"), "{damaged");
}

TEST_F(UnreadableProfilesTest, mayBeForbidden) {
  store.save(Profiles{profile("Secret", {copy})});
  fs::permissions(file, fs::perms::none);
  fs::permissions(folder.path(), fs::perms::all);
  EXPECT_EQ(reportsToAStranger(), keptAs(" Permission denied") + "\n");
  fs::permissions(file + ".unreadable", fs::perms::owner_all);
  const TemporaryFolder place;
  fs::copy_file(file + ".unreadable", ProfileStore(place.path()).profilesFile());
  EXPECT_EQ(namesOf(ProfileStore(place.path()).load()), Names{"Secret"});
  EXPECT_EQ(namesOf(store.load()), (Names{"P", "M", "R"}));
}

TEST_F(UnreadableProfilesTest, stayWhereTheyAreWhenNothingMayBeRenamed) {
  put(file, "damaged");
  fs::permissions(file, fs::perms::none);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  EXPECT_EQ(reportsToAStranger(),
            "the profiles cannot be read: " + file +
                ": Permission denied; the file counts as empty and could not be kept: " + file +
                ": Permission denied\nthe backup " + store.legacyBackupFile().string() +
                " cannot be written\n" + file + ": Permission denied\n");
  fs::permissions(folder.path(), fs::perms::owner_all);
  fs::permissions(file, fs::perms::owner_all);
  EXPECT_EQ(contentOf(file), "damaged");
  EXPECT_EQ(namesIn(folder.path()), Names{"profiles.json"});
}

} // namespace
} // namespace trellivar
