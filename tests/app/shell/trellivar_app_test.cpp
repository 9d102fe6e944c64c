#include "app/options.h"
#include "app/trellivar_app.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <memory>
#include <stdexcept>

namespace trellivar {
namespace {

/// The whole application on the simulated desk, on which everything is permitted.
struct TrellivarAppTest : testing::Test {
  TemporaryFolder folder;
  std::unique_ptr<TrellivarApp> app;

  void launch() {
    app.reset();
    Options options;
    options.simulate = true;
    options.dataFolder = folder.path();
    options.isDataFolderGiven = true;
    app = std::make_unique<TrellivarApp>(options);
    ASSERT_TRUE(app->launch());
  }
  /// As it is kept for the next start.
  QVariant setting(const char* name) const {
    return QSettings(settingsFile(), QSettings::IniFormat).value(name);
  }
  QString settingsFile() const {
    return QString::fromStdString((folder / "settings.ini").string());
  }
  static QWindow& window(const QString& title) {
    for (QWindow* each : QGuiApplication::topLevelWindows())
      if (each->title() == title) return *each;
    throw std::runtime_error("there is no such window");
  }
};

TEST_F(TrellivarAppTest, showsItsWindowAndTheDesk) {
  launch();
  EXPECT_TRUE(window("Trellivar").isVisible());
  const auto& desk = window("Desk");
  EXPECT_TRUE(desk.isVisible());
  EXPECT_EQ(desk.geometry().right(), desk.screen()->virtualGeometry().right());
}

TEST_F(TrellivarAppTest, bothPermissionsSwitchStartAtLoginOnOnce) {
  launch();
  app.reset();
  EXPECT_EQ(setting("startAtLogin"), true);
  QSettings(settingsFile(), QSettings::IniFormat).setValue("startAtLogin", false);
  for (int again = 0; again < 2; ++again) {
    launch();
    app.reset();
    EXPECT_EQ(setting("startAtLogin"), false) << again;
  }
}

TEST_F(TrellivarAppTest, speaksTheLanguageThatIsSet) {
  QSettings(settingsFile(), QSettings::IniFormat).setValue("appLanguage", "zh-Hans");
  launch();
  EXPECT_EQ(app->delegate().menu().actions().front()->text(), "打开 Trellivar");
}

TEST_F(TrellivarAppTest, closingTheWindowLeavesTheRestAlone) {
  launch();
  window("Trellivar").close();
  QCoreApplication::processEvents();
  EXPECT_FALSE(window("Trellivar").isVisible());
  EXPECT_TRUE(window("Desk").isVisible());
  app->delegate().openMainWindow();
  EXPECT_TRUE(window("Trellivar").isVisible());
}

TEST_F(TrellivarAppTest, theKeyOfTheQuitItemWorksInTheWindowToo) {
  launch();
  bool isQuitting = false;
  const auto asked =
      QObject::connect(qGuiApp, &QCoreApplication::aboutToQuit, [&] { isQuitting = true; });
  QTimer::singleShot(0, &window("Trellivar"), [] {
    window("Trellivar").requestActivate();
    QTest::keyClick(&window("Trellivar"), Qt::Key_Q, Qt::ControlModifier);
    QTimer::singleShot(5000, &window("Trellivar"), [] { QCoreApplication::exit(1); });
  });
  EXPECT_EQ(QGuiApplication::exec(), 0);
  EXPECT_TRUE(isQuitting);
  QObject::disconnect(asked);
}

} // namespace
} // namespace trellivar
