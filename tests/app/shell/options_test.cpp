#include "app/folder_lock.h"
#include "files/durable_file.h"
#include "tests/app/shell/program.h"
#include "tests/support/child_process.h"
#include "tests/support/eventually.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

/// Without what Qt says on its own account where there is neither a screen nor a status area.
std::string ofOurs(const std::string& errors) {
  std::istringstream lines(errors);
  std::string ours;
  for (std::string line; std::getline(lines, line);) {
    const bool isOfQt = line == "This plugin does not support raise()" ||
                        line.ends_with("systemTrayWindowChanged(QScreen*)");
    if (!isOfQt) ours += line + '\n';
  }
  return ours;
}

/// The program as it is started by hand.
struct OptionsTest : testing::Test {
  TemporaryFolder home;
  std::map<QString, QString> environment;

  Ending run(const QStringList& arguments) const {
    return endingOf(home.path(), arguments, environment);
  }
  static Ending refused(const std::string& what) { return {2, "", "trellivar: " + what + "\n"}; }
  static Ending failed(const std::string& what) { return {1, "", "trellivar: " + what + "\n"}; }
  /// Nothing was kept anywhere.
  bool isHomeUntouched() const { return fs::is_empty(home.path()); }
  QString inHome(const std::string& name) const {
    return QString::fromStdString((home / name).string());
  }
};

TEST_F(OptionsTest, tellsItsVersion) {
  for (const QString option : {"--version", "-v"})
    EXPECT_EQ(run({option}), (Ending{0, "Trellivar " TRELLIVAR_VERSION "\n", ""}));
  EXPECT_TRUE(isHomeUntouched());
}

TEST_F(OptionsTest, explainsItself) {
  const Ending help = run({"--help"});
  EXPECT_EQ(help.code, 0);
  EXPECT_EQ(help.err, "");
  for (const std::string word : {"--simulate", "--data-dir <folder>", "--language <language>",
                                 "--version", "--help", "zh-Hans"})
    EXPECT_NE(help.out.find(word), std::string::npos) << word << "\n" << help.out;
  EXPECT_EQ(help.out.find("platform"), std::string::npos) << help.out;
  EXPECT_TRUE(isHomeUntouched());
}

TEST_F(OptionsTest, needsNoDisplayToAnswer) {
  environment["QT_QPA_PLATFORM"] = "none-such";
  EXPECT_EQ(run({"--version"}).code, 0);
  EXPECT_EQ(run({"--help"}).code, 0);
  EXPECT_EQ(run({"--none"}).code, 2);
}

TEST_F(OptionsTest, refusesWhatItDoesNotKnow) {
  EXPECT_EQ(run({"--fast"}), refused("Unknown option 'fast'."));
  EXPECT_EQ(run({"profiles"}), refused("unexpected: profiles"));
  EXPECT_EQ(run({"--simulate=yes"}), refused("Unexpected value after '--simulate'."));
  EXPECT_TRUE(isHomeUntouched());
}

TEST_F(OptionsTest, refusesALanguageThatItDoesNotSpeak) {
  for (const std::string language : {"de", "zh", "EN", ""})
    EXPECT_EQ(run({"--language", QString::fromStdString(language)}),
              refused("--language: expected en or zh-Hans, found \"" + language + '"'));
  EXPECT_EQ(run({"--language"}), refused("Missing value after '--language'."));
  EXPECT_TRUE(isHomeUntouched());
}

TEST_F(OptionsTest, refusesADataFolderWithoutAName) {
  EXPECT_EQ(run({"--data-dir", ""}), refused("--data-dir: expected a folder, found \"\""));
  EXPECT_EQ(run({"--data-dir"}), refused("Missing value after '--data-dir'."));
}

TEST_F(OptionsTest, asksForADataFolderWhereThereIsNoHome) {
  environment["HOME"] = "";
  EXPECT_EQ(run({}), refused("HOME is not set; name the data folder with --data-dir"));
}

TEST_F(OptionsTest, saysWhichFileIsInTheWayOfTheDataFolder) {
  std::ofstream(home / "file") << "something";
  EXPECT_EQ(run({"--data-dir", inHome("file")}),
            failed((home / "file").string() + ": Not a directory"));
  EXPECT_EQ(run({"--data-dir", inHome("file/below")}),
            failed((home / "file").string() + ": Not a directory"));
}

TEST_F(OptionsTest, saysWhichDataFolderCannotBeMade) {
  EXPECT_EQ(run({"--data-dir", "/proc/trellivar"}),
            failed("/proc/trellivar: No such file or directory"));
}

TEST_F(OptionsTest, saysWhichDataFolderCannotBeWritten) {
  const fs::path folder = home / "data";
  FolderLock(folder).tryToTake(); // leaves its file
  ::chmod(home.path().c_str(), 0755);
  ::chmod(folder.c_str(), 0555);
  ::chmod((folder / "trellivar.lock").c_str(), 0666);
  EXPECT_EQ(exitStatusOf([&] {
              if (::geteuid() == 0 && ::setuid(65534) != 0) return 2;
              try {
                const FolderLock lock(folder);
                return 3;
              } catch (const FileError& error) {
                return error.what() == folder.string() + ": Permission denied" ? 0 : 4;
              }
            }),
            0);
}

TEST_F(OptionsTest, keepsEverythingInTheDataFolder) {
  Program program(home.path(), {"--simulate", "--data-dir", "data/here", "--language", "zh-Hans"});
  const fs::path folder = home / "data" / "here";
  ASSERT_TRUE(eventually([&] {
    return fs::exists(folder / "profiles.json") &&
           readFile(folder / "settings.ini").value_or("").find("appLanguage=zh-Hans") !=
               std::string::npos;
  }));
  struct stat status {};
  EXPECT_EQ(::stat(folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0700u);
  EXPECT_FALSE(fs::exists(home / "Library"));
  EXPECT_FALSE(fs::exists(home / "config"));
  EXPECT_TRUE(program.isRunning());
}

TEST_F(OptionsTest, keepsTheDataInTheHomeFolderOtherwise) {
  const Program program(home.path(), {});
  EXPECT_TRUE(eventually(
      [&] { return fs::exists(home / "Library/Application Support/Trellivar/profiles.json"); }));
}

TEST_F(OptionsTest, theSimulatedDeskLeavesTheUsersOwnDataAndSettingsAlone) {
  const Program program(home.path(), {"--simulate"});
  const fs::path desk = home / "Library/Application Support/Trellivar Desk";
  EXPECT_TRUE(eventually(
      [&] { return fs::exists(desk / "profiles.json") && fs::exists(desk / "settings.ini"); }));
  EXPECT_FALSE(fs::exists(home / "Library/Application Support/Trellivar"));
  EXPECT_FALSE(fs::exists(home / "config"));
}

TEST_F(OptionsTest, theDeskOpensBesideTheApplicationThatIsRunning) {
  const Program program(home.path(), {});
  EXPECT_TRUE(eventually(
      [&] { return fs::exists(home / "Library/Application Support/Trellivar/profiles.json"); }));
  Program onTheDesk(home.path(), {"--simulate"});
  EXPECT_TRUE(eventually([&] {
    return fs::exists(home / "Library/Application Support/Trellivar Desk/profiles.json");
  }));
  EXPECT_TRUE(onTheDesk.isRunning());
}

TEST_F(OptionsTest, saysThatKeysAreNotRemappedWhereThereIsNoEngine) {
  Program program(home.path(), {});
  EXPECT_TRUE(eventually([&] {
    return program.errors().starts_with("trellivar: Keys can't be remapped on this computer. ");
  }));
  EXPECT_TRUE(program.isRunning());
}

TEST_F(OptionsTest, theDeskHasAnEngineAndSaysNothing) {
  Program onTheDesk(home.path(), {"--simulate", "--data-dir", "desk"});
  EXPECT_TRUE(eventually([&] { return fs::exists(home / "desk/profiles.json"); }));
  // Answered by the first one's window, which comes after everything that a start has to say.
  EXPECT_EQ(endingOf(home.path(), {"--simulate", "--data-dir", "desk"}), (Ending{0, "", ""}));
  EXPECT_EQ(ofOurs(onTheDesk.errors()), "");
}

} // namespace
} // namespace trellivar
