#include "tests/cli/documents.h"
#include "tests/cli/profiles_fixture.h"

#include <sys/stat.h>

namespace trellivar::cli {
namespace {

using namespace documents;

using ProfilesFile = ProfilesTest;

const std::vector<std::vector<std::string>> readingCommands{{"profiles", "list"},
                                                            {"profiles", "show"},
                                                            {"profiles", "show", "P", "--json"},
                                                            {"profiles", "bind", "P", "1", "a"},
                                                            {"profiles", "unbind", "P", "1"},
                                                            {"profiles", "label", "P", "1", "x"},
                                                            {"profiles", "export", "-"},
                                                            {"profiles", "import", "-"},
                                                            {"write", "--dry-run"}};

TEST_F(ProfilesFile, aDamagedFileIsLeftAloneAndReportedByEveryCommand) {
  const std::pair<std::string, std::string> damages[] = {
      {"[\n{\"id\"", "2: "},
      {"", "1: "},
      {"{}", "1: expected a list, found an object\n"},
      {"[" + profile("P", mapping(1, "{}")) + "]",
       "[0].mappings[0].output: Invalid number of keys found, expected one.\n"},
  };
  for (const auto& [content, where] : damages) {
    store(content);
    const auto before = tree();
    for (const auto& command : readingCommands) {
      const Answer answer = on("data", command, oddList);
      EXPECT_EQ(answer.code, 2) << testing::PrintToString(command);
      EXPECT_EQ(answer.out, "");
      EXPECT_TRUE(answer.err.starts_with("trellivarctl: " + profilesFile() + ":" + where))
          << answer.err;
      EXPECT_EQ(answer.err.find('\n'), answer.err.size() - 1);
      EXPECT_EQ(tree(), before) << testing::PrintToString(command);
    }
  }
}

TEST_F(ProfilesFile, exportOverDamagedProfilesLeavesTheTargetAlone) {
  store("[");
  const std::string target = file("target", "old");
  EXPECT_EQ(profiles({"export", target}).code, 2);
  EXPECT_EQ(contentOf(target), "old");
}

TEST_F(ProfilesFile, aFolderInPlaceOfTheFileIsAFailure) {
  std::filesystem::create_directories(profilesFile());
  const auto before = tree();
  for (const auto& command : readingCommands)
    EXPECT_EQ(on("data", command, oddList), failure(profilesFile() + ": Is a directory"));
  EXPECT_EQ(tree(), before);
}

TEST_F(ProfilesFile, aFileInPlaceOfTheDataFolderIsAFailure) {
  file("data", "mine");
  const auto before = tree();
  for (const auto& command : readingCommands) {
    for (const char* folder : {"data", "data/below/it"})
      EXPECT_EQ(on(folder, command, oddList),
                failure(path(folder) +
                        ": the data folder cannot be there, since a file is in its place"));
  }
  EXPECT_EQ(tree(), before);
}

TEST_F(ProfilesFile, savingThatFailsSaysWhy) {
  // Nothing can be saved into the folder, whoever runs the test: the name is taken by a folder.
  store(oddList);
  std::filesystem::create_directories(path("data") + "/profiles.json.bak/in the way");
  const Answer answer = profiles({"import", "-"}, "[" + profile("P", "") + "]");
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.err, "trellivarctl: " + path("data") + "/profiles.json.bak: Is a directory\n");
  EXPECT_EQ(contentOf(profilesFile()), oddList);
}

TEST_F(ProfilesFile, aLegacyListIsMigratedOnceWithABackup) {
  const std::string id = "5C1F7A52-3B0E-4E0B-9C63-0D9B8C6A1E01";
  store("[" + profile("Default", mapping(1, tap("a")) + "," + mapping(2, tap("b"))) + "," +
        profile("P", mapping(3, tap("c"))) + "]");
  const auto legacy = nlohmann::json::parse(contentOf(profilesFile()));
  EXPECT_EQ(profiles({"list"}), printed("P  2 bindings\nM  no bindings\nR  no bindings\n"));
  const std::string backup = path("data") + "/profiles-legacy-backup.json";
  EXPECT_EQ(nlohmann::json::parse(contentOf(backup)), legacy);
  for (const Json& each : stored())
    EXPECT_NE(each["id"], id);
  EXPECT_EQ(mappings()[1]["output"].dump(), R"({"sequence":{"keys":[{"keyCode":"b"}]}})");

  put(backup, "kept");
  const auto before = tree();
  profiles({"list"});
  profiles({"show"});
  EXPECT_EQ(tree(), before);
}

TEST_F(ProfilesFile, aListWithAllModesIsNotMigrated) {
  store(oddList);
  for (const Arguments& command : std::vector<Arguments>{{"list"}, {"show"}, {"export", "-"}})
    EXPECT_EQ(profiles(command).code, 0);
  EXPECT_EQ(treeOf(path("data")), (std::map<std::string, std::string>{{"profiles.json", oddList}}));
}

TEST_F(ProfilesFile, exportPrintsTheWholeList) {
  store(oddList);
  const auto list = nlohmann::json::parse(profiles({"show", "--json"}).out);
  EXPECT_EQ(profiles({"export", "-"}), printed(list.dump(2) + "\n"));
}

TEST_F(ProfilesFile, exportCreatesOrReplacesAFile) {
  store(oddList);
  const std::string whole = profiles({"export", "-"}).out;
  expectDone({"export", path("new")});
  EXPECT_EQ(contentOf(path("new")), whole);
  expectDone({"export", file("old", std::string(100'000, 'x'))});
  EXPECT_EQ(contentOf(path("old")), whole);
}

TEST_F(ProfilesFile, exportThatCannotBeWrittenSaysWhy) {
  std::filesystem::create_directory(path("folder"));
  file("file", "");
  EXPECT_EQ(profiles({"export", path("folder")}), failure(path("folder") + ": Is a directory"));
  EXPECT_EQ(profiles({"export", "/dev/full"}), failure("/dev/full: No space left on device"));
  const Answer below = profiles({"export", path("file") + "/below"});
  EXPECT_EQ(below.code, 1);
  EXPECT_NE(below.err.find("Not a directory"), std::string::npos) << below.err;
  const std::string longName(300, 'x');
  const Answer tooLong = profiles({"export", path(longName)});
  EXPECT_EQ(tooLong.code, 1);
  EXPECT_NE(tooLong.err.find("File name too long"), std::string::npos) << tooLong.err;
  EXPECT_TRUE(tooLong.err.starts_with("trellivarctl: /")) << tooLong.err;
}

TEST_F(ProfilesFile, importReplacesTheListAndKeepsTheOldBytes) {
  store(oddList);
  expectDone({"import", file("list", "[" + profile("P", "") + "," + profile("M", "") + "," +
                                         profile("R", mapping(1, tap("q"))) + "]")});
  EXPECT_EQ(contentOf(profilesFile() + ".bak"), oddList);
  EXPECT_EQ(profiles({"list"}), printed("P  no bindings\nM  no bindings\nR  1 binding\n"));
  const std::string second = contentOf(profilesFile());
  EXPECT_EQ(profiles({"import", "-"}, oddList), printed(""));
  EXPECT_EQ(contentOf(profilesFile() + ".bak"), second);
}

TEST_F(ProfilesFile, importIsValidatedFirst) {
  store(oddList);
  const std::string wrong =
      file("list", "[" + profile("P", "") + "," + profile("M", mapping(1, "[]")) + "]");
  const auto before = tree();
  EXPECT_EQ(profiles({"import", wrong}),
            badInput(wrong + ":[1].mappings[0].output: expected an object, found a list"));
  EXPECT_EQ(tree(), before);
  EXPECT_EQ(on("fresh", {"profiles", "import", wrong}).code, 2);
  EXPECT_EQ(tree(), before);
}

TEST_F(ProfilesFile, exportAndImportElsewhereGiveTheSameFile) {
  store(oddList);
  expectDone({"bind", "P", "2", "cmd+v", "--label", "Paste \"it\" 粘贴"});
  expectDone({"export", path("list")});
  EXPECT_EQ(on("other", {"profiles", "import", path("list")}), printed(""));
  EXPECT_EQ(contentOf(path("other") + "/profiles.json"), contentOf(profilesFile()));
  EXPECT_EQ(contentOf(path("list")), contentOf(profilesFile()));
}

TEST_F(ProfilesFile, filesAndFolderAreOfTheUserAlone) {
  store(oddList);
  std::filesystem::remove_all(path("data"));
  expectDone({"bind", "P", "1", "a"});
  EXPECT_EQ(profiles({"import", "-"}, oddList), printed(""));
  const auto modeOf = [](const std::string& name) {
    struct stat status {};
    EXPECT_EQ(::stat(name.c_str(), &status), 0) << name;
    return status.st_mode & 07777;
  };
  EXPECT_EQ(modeOf(path("data")), 0700u);
  for (const char* name : {"/profiles.json", "/profiles.json.bak", "/profiles-legacy-backup.json"})
    EXPECT_EQ(modeOf(path("data") + name), 0600u) << name;
}

TEST_F(ProfilesFile, anImportedLegacyListShowsAtOnceWhatItBecame) {
  const std::string legacy = "[" + profile("Default", mapping(1, tap("a"))) + "]";
  expectDone({"import", file("legacy", legacy)});
  EXPECT_EQ(stored()[0]["name"], "P");
  EXPECT_EQ(stored()[2]["name"], "R");
  EXPECT_EQ(mappings()[0]["output"].dump(), R"({"sequence":{"keys":[{"keyCode":"a"}]}})");
  const std::string backup = contentOf(path("data") + "/profiles-legacy-backup.json");
  EXPECT_EQ(nlohmann::json::parse(backup), nlohmann::json::parse(legacy));
}

TEST_F(ProfilesFile, whatAStartCannotSaveIsNoErrorOfAListing) {
  std::filesystem::create_symlink(path("nowhere"), path("data"));
  const std::string modes = "P  no bindings\nM  no bindings\nR  no bindings\n";
  EXPECT_EQ(profiles({"list"}), printed(modes));
  EXPECT_FALSE(std::filesystem::exists(profilesFile())) << "it could not be saved";
  EXPECT_EQ(profiles({"bind", "P", "1", "a"}).code, 1) << "while an edit is lost";
}

TEST_F(ProfilesFile, listingsLetNoControlCharacterOfALabelReachTheTerminal) {
  store("[" + profile("P", R"({"fromKeyId":1,"label":"\u001b[31m\nx","output":)" + tap("a") + "}") +
        "," + profile("M", "") + "," + profile("R", "") + "]");
  const std::string shown = profiles({"show", "P"}).out;
  EXPECT_EQ(shown.find('\x1b'), std::string::npos);
  EXPECT_NE(shown.find("\uFFFD[31m\uFFFDx\n"), std::string::npos);
}

} // namespace
} // namespace trellivar::cli
