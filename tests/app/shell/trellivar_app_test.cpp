#include "app/bridge/own_texts.h"
#include "app/bridge/text.h"
#include "app/options.h"
#include "app/trellivar_app.h"
#include "tests/app/shell/program.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>

namespace trellivar {
namespace {

bool shows(const QQuickItem& item, const QString& text) {
  if (!item.isVisible()) return false;
  return item.property("text") == text ||
         std::ranges::any_of(item.childItems(),
                             [&](const QQuickItem* child) { return shows(*child, text); });
}

/// The whole application on the simulated desk, on which everything is permitted.
struct TrellivarAppTest : testing::Test {
  TemporaryFolder folder;
  std::unique_ptr<TrellivarApp> app;

  void launch(bool simulate = true, std::optional<AppLanguage> language = std::nullopt) {
    app.reset();
    Options options;
    options.simulate = simulate;
    options.language = language;
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

TEST_F(TrellivarAppTest, speaksTheLanguageOfTheSystemAtFirst) {
  const auto languageIn = [this](const QString& locale) {
    return Program(folder.path(), {"--language", settingsFile()},
                   {{"LC_ALL", locale}, {"LANGUAGE", ""}}, QCoreApplication::applicationFilePath())
        .ending()
        .out;
  };
  EXPECT_EQ(languageIn("zh_CN.UTF-8"), "zh-Hans");
  EXPECT_EQ(languageIn("en_GB.UTF-8"), "en");
}

TEST_F(TrellivarAppTest, speaksTheLanguageThatItIsStartedWithAndKeepsIt) {
  launch(true, AppLanguage::zhHans);
  EXPECT_EQ(app->delegate().menu().actions().front()->text(), "打开 Trellivar");
  app.reset();
  EXPECT_EQ(setting("appLanguage"), "zh-Hans");
}

TEST_F(TrellivarAppTest, saysInItsWindowWhereThereIsNoEngine) {
  const auto isSaid = [] {
    const auto& main = dynamic_cast<QQuickWindow&>(window("Trellivar"));
    return shows(*main.contentItem(), qtText(OwnTexts::noEngineTitle.english));
  };
  launch(true, AppLanguage::en);
  EXPECT_FALSE(isSaid());
  launch(false, AppLanguage::en);
  EXPECT_TRUE(isSaid());
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
