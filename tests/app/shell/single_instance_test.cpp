#include "app/single_instance.h"
#include "app/trellivar_app.h"
#include "files/durable_file.h"
#include "tests/app/shell/program.h"
#include "tests/support/eventually.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QQuickWindow>
#include <chrono>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// The loop turns until the condition holds.
template <class Condition> bool eventuallyOnTheLoop(Condition condition) {
  return eventually([&] {
    QCoreApplication::processEvents();
    return condition();
  });
}

struct SingleInstanceTest : testing::Test {
  TemporaryFolder home;
  fs::path folder = home / "data";
  QByteArray runtimeBefore = qgetenv("XDG_RUNTIME_DIR");

  SingleInstanceTest() { qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(home.path())); }
  ~SingleInstanceTest() override { qputenv("XDG_RUNTIME_DIR", runtimeBefore); }

  /// Another start on the folder, as a process.
  std::unique_ptr<Program> start(const fs::path& on) const {
    return std::make_unique<Program>(
        home.path(), QStringList{"--simulate", "--data-dir", QString::fromStdString(on)});
  }
  std::unique_ptr<Program> start() const { return start(folder); }
  /// The process works on the folder, and listens.
  bool holds(const fs::path& dataFolder) const {
    return eventually([&] {
      if (!fs::exists(dataFolder / "trellivar.lock") || FolderLock(dataFolder).tryToTake())
        return false;
      return start(dataFolder)->ending().code == 0;
    });
  }
  static bool isFree(const fs::path& dataFolder) { return FolderLock(dataFolder).tryToTake(); }
};

// The lock

TEST_F(SingleInstanceTest, oneHasTheLockUntilItGoes) {
  std::optional<FolderLock> first(folder);
  FolderLock second(folder);
  EXPECT_FALSE(first->isHeld());
  EXPECT_TRUE(first->tryToTake());
  EXPECT_TRUE(first->tryToTake());
  EXPECT_FALSE(second.tryToTake());
  EXPECT_FALSE(second.isHeld());
  first.reset();
  EXPECT_TRUE(second.tryToTake());
}

TEST_F(SingleInstanceTest, aFolderIsTheSameUnderEveryName) {
  fs::create_directory(folder);
  fs::create_directory_symlink(folder, home / "link");
  SingleInstance first(folder);
  first.listen([] {});
  EXPECT_FALSE(FolderLock(home / "link").tryToTake());
  EXPECT_TRUE(isFree(home / "other"));
}

TEST_F(SingleInstanceTest, aFolderThatCannotBeIsNamed) {
  std::ofstream(home / "file") << "something";
  try {
    const SingleInstance instance(home / "file");
    FAIL() << "no exception";
  } catch (const FileError& error) {
    EXPECT_EQ(error.what(), (home / "file").string() + ": Not a directory");
  }
}

TEST_F(SingleInstanceTest, givesUpOnOneThatDoesNotAnswer) {
  FolderLock silent(folder);
  ASSERT_TRUE(silent.tryToTake());
  try {
    const SingleInstance instance(folder, 50ms);
    FAIL() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(),
              folder.string() + ": Trellivar is running on this data folder and does not answer");
  }
}

TEST_F(SingleInstanceTest, givesUpOnOneThatAcceptsButDoesNotAnswer) {
  SingleInstance busy(folder);
  busy.listen([] {}); // and the loop does not turn
  EXPECT_THROW(SingleInstance(folder, 50ms), std::runtime_error);
}

// The application in this process, with starts in processes of their own

struct RunningAppTest : SingleInstanceTest {
  SingleInstance instance{folder};
  TrellivarApp app{onTheDesk(folder)};

  RunningAppTest() {
    instance.listen([this] { app.delegate().openMainWindow(); });
    EXPECT_TRUE(app.launch());
  }
  static Options onTheDesk(const fs::path& dataFolder) {
    Options options;
    options.simulate = true;
    options.dataFolder = dataFolder;
    options.isDataFolderGiven = true;
    return options;
  }
  static QWindow& mainWindow() {
    for (QWindow* window : QGuiApplication::topLevelWindows())
      if (window->title() == "Trellivar") return *window;
    throw std::runtime_error("there is no main window");
  }
  /// The exit code of one more start, while the loop of this process turns.
  int codeOfOneMore() const {
    const auto other = start();
    EXPECT_TRUE(eventuallyOnTheLoop([&] { return !other->isRunning(); }));
    return other->ending().code;
  }
};

TEST_F(RunningAppTest, aSecondStartBringsAClosedWindowBack) {
  mainWindow().close();
  ASSERT_FALSE(mainWindow().isVisible());
  EXPECT_EQ(codeOfOneMore(), 0);
  EXPECT_TRUE(mainWindow().isVisible());
}

TEST_F(RunningAppTest, aSecondStartBringsAMinimizedWindowBack) {
  mainWindow().showMinimized();
  EXPECT_EQ(codeOfOneMore(), 0);
  EXPECT_EQ(mainWindow().windowStates(), Qt::WindowNoState);
}

TEST_F(RunningAppTest, everyFurtherStartDoesTheSame) {
  for (int again = 0; again < 3; ++again) {
    mainWindow().close();
    EXPECT_EQ(codeOfOneMore(), 0);
    EXPECT_TRUE(mainWindow().isVisible()) << again;
  }
}

TEST_F(RunningAppTest, aCallerThatGoesAtOnceDoesNoHarm) {
  const auto other = start();
  other->kill();
  EXPECT_EQ(codeOfOneMore(), 0);
}

// Processes among themselves

TEST_F(SingleInstanceTest, aSecondStartLeavesTheFirstAlone) {
  const auto first = start();
  ASSERT_TRUE(holds(folder));
  EXPECT_EQ(start()->ending(), (Ending{0, "", ""}));
  EXPECT_TRUE(first->isRunning());
}

TEST_F(SingleInstanceTest, startsAgainAfterACrash) {
  const auto first = start();
  ASSERT_TRUE(holds(folder));
  first->kill();
  const auto sockets = [&] {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(home.path()))
      count += entry.is_socket();
    return count;
  };
  EXPECT_EQ(sockets(), 1) << "the crash has left its socket";
  const auto second = start();
  EXPECT_TRUE(holds(folder));
  EXPECT_TRUE(second->isRunning());
}

TEST_F(SingleInstanceTest, anotherDataFolderRunsBeside) {
  const auto first = start();
  const auto second = start(home / "other");
  EXPECT_TRUE(holds(folder));
  EXPECT_TRUE(holds(home / "other"));
  EXPECT_TRUE(first->isRunning());
  EXPECT_TRUE(second->isRunning());
}

TEST_F(SingleInstanceTest, aCopyElsewhereStartsLikeTheOriginal) {
  fs::create_directory(home / "copy");
  fs::copy_file(TRELLIVAR_PROGRAM, home / "copy" / "program");
  Program copy(home.path(), {"--simulate", "--data-dir", QString::fromStdString(folder.string())},
               {}, QString::fromStdString((home / "copy" / "program").string()));
  ASSERT_TRUE(holds(folder));
  copy.kill();
  const std::string complaints = copy.ending().err;
  EXPECT_EQ(complaints.find(".qml"), std::string::npos) << complaints;
}

TEST_F(SingleInstanceTest, ofManyStartsAtOnceOneStays) {
  std::vector<std::unique_ptr<Program>> starts;
  for (int i = 0; i < 5; ++i)
    starts.push_back(start());
  const auto running = [&] {
    return std::ranges::count_if(starts, [](const auto& each) {
      QCoreApplication::processEvents();
      return each->isRunning();
    });
  };
  EXPECT_TRUE(eventually([&] { return running() == 1; })) << running() << " are running";
  for (const auto& each : starts) {
    if (each->isRunning()) continue;
    EXPECT_EQ(each->ending(), (Ending{0, "", ""}));
  }
  EXPECT_TRUE(holds(folder));
  EXPECT_EQ(running(), 1);
}

} // namespace
} // namespace trellivar
