#include "app/platform/autostart_entry.h"
#include "files/durable_file.h"
#include "tests/app/shell/program.h"
#include "tests/support/eventually.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// The value of a key, with the escapes that every line of such a file may have undone.
std::string valueOf(const std::string& key, const fs::path& file) {
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(key + "=")) continue;
    std::string value;
    for (std::size_t i = key.size() + 1; i < line.size(); ++i) {
      if (line[i] != '\\') {
        value += line[i];
        continue;
      }
      const char escape = line.at(++i);
      EXPECT_NE(std::string("sntr\\").find(escape), std::string::npos) << "no escape: " << escape;
      value += escape == 'n' ? '\n' : escape;
    }
    return value;
  }
  return "no " + key;
}

/// The words of a command line as desktops take it apart.
Words wordsOf(const std::string& command) {
  Words words;
  for (std::size_t i = 0; i < command.size(); ++i) {
    EXPECT_EQ(command.at(i), '"');
    std::string word;
    for (++i; command.at(i) != '"'; ++i) {
      const char c = command[i];
      EXPECT_FALSE(c == '`' || c == '$') << "not escaped";
      if (c == '\\') {
        EXPECT_NE(std::string("\"`$\\").find(command.at(i + 1)), std::string::npos);
        ++i;
      } else if (c == '%') {
        EXPECT_EQ(command.at(++i), '%') << "a code for files";
      }
      word += command[i];
    }
    words.push_back(word);
    ++i;
    EXPECT_TRUE(i == command.size() || command[i] == ' ');
  }
  return words;
}

struct AutostartEntryTest : testing::Test {
  TemporaryFolder home;
  AutostartEntry entry{home / "config" / "autostart"};

  Words installed() const { return wordsOf(valueOf("Exec", entry.file())); }
};

TEST_F(AutostartEntryTest, startsTheProgramWithItsArguments) {
  const Words command{"/usr/bin/trellivar", "--data-dir", "/home/me/data"};
  entry.install(command);
  EXPECT_EQ(installed(), command);
  EXPECT_EQ(valueOf("Type", entry.file()), "Application");
  EXPECT_EQ(valueOf("Name", entry.file()), "Trellivar");
}

TEST_F(AutostartEntryTest, takesEveryCharacterAsItStands) {
  const Words command{R"(/opt/a b/"c"/d'e/$HOME/`f`/g\h/i\\j/100%/%f/k;l#m~n*o?)", "", "two\nlines",
                      "按键", "a=b"};
  entry.install(command);
  EXPECT_EQ(installed(), command);
}

TEST_F(AutostartEntryTest, everyInstallationReplacesTheOneBefore) {
  entry.install(Words{"/old", "--data-dir", "/somewhere/else"});
  entry.install(Words{"/new"});
  EXPECT_EQ(installed(), Words{"/new"});
}

TEST_F(AutostartEntryTest, isGoneAfterItsRemoval) {
  entry.remove();
  entry.install(Words{"/usr/bin/trellivar"});
  entry.remove();
  EXPECT_FALSE(fs::exists(entry.file()));
  EXPECT_TRUE(fs::is_empty(home / "config" / "autostart"));
  entry.remove();
}

TEST_F(AutostartEntryTest, saysWhyItCannotBeWritten) {
  std::ofstream(home / "config") << "no folder";
  EXPECT_THROW(entry.install(Words{"/usr/bin/trellivar"}), FileError);
}

// The program, which registers itself anew at every start

struct StartAtLoginTest : AutostartEntryTest {
  const fs::path data = home / "data";

  /// As the settings are found by a start.
  void set(bool startAtLogin, bool wasTried) const {
    fs::create_directories(data);
    std::ofstream(data / "settings.ini") << "[General]\ndidAutoEnableLoginItem=" << std::boolalpha
                                         << wasTried << "\nstartAtLogin=" << startAtLogin << '\n';
  }
  QStringList arguments() const { return {"--data-dir", QString::fromStdString(data.string())}; }
  bool isInstalled() const { return fs::exists(entry.file()); }
  bool isUnderWay() const { return fs::exists(data / "profiles.json"); }
};

TEST_F(StartAtLoginTest, everyStartRegistersAgainWhileItIsOn) {
  set(true, true);
  for (int again = 0; again < 2; ++again) {
    const Program program(home.path(), arguments());
    EXPECT_TRUE(eventually([&] { return isInstalled(); })) << again;
    EXPECT_EQ(installed(), (Words{TRELLIVAR_PROGRAM, "--data-dir", data.string()}));
    entry.remove();
  }
}

TEST_F(StartAtLoginTest, findsItsFolderInTheUsersConfiguration) {
  set(true, true);
  const Program program(home.path(), arguments(),
                        {{"XDG_CONFIG_HOME", QString::fromStdString((home / "mine").string())}});
  EXPECT_TRUE(eventually([&] { return fs::exists(home / "mine/autostart/trellivar.desktop"); }));
  EXPECT_FALSE(isInstalled());
}

TEST_F(StartAtLoginTest, theSimulatedDeskIsNeverStartedAtLogin) {
  set(true, false);
  // A first start on the desk, where everything is permitted, would switch it on too.
  const Program program(home.path(), arguments() + QStringList{"--simulate"});
  EXPECT_TRUE(eventually(
      [&] { return valueOf("didAutoEnableLoginItem", data / "settings.ini") == "true"; }));
  EXPECT_FALSE(isInstalled());
}

} // namespace
} // namespace trellivar
