#include "app/platform/platform_services.h"
#include "tests/app/shell/palettes.h"
#include "tests/support/eventually.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QStringList>
#include <filesystem>
#include <memory>
#include <optional>

namespace trellivar {
namespace {

/// What the application asks of a Linux desktop, one that nobody answers for on a bus.
struct PlatformServicesTest : testing::Test {
  TemporaryFolder home;
  const QByteArray configurationBefore = qgetenv("XDG_CONFIG_HOME");
  int changes = 0;
  std::unique_ptr<PlatformServices> platform;

  PlatformServicesTest() {
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.path()));
    platform = platformServices(QStringList());
    platform->onAppearanceChanged([this] { ++changes; });
  }
  ~PlatformServicesTest() override {
    QApplication::setPalette({});
    if (configurationBefore.isNull()) {
      qunsetenv("XDG_CONFIG_HOME");
    } else {
      qputenv("XDG_CONFIG_HOME", configurationBefore);
    }
  }

  bool isStartedAtLogin() const {
    return std::filesystem::exists(home / "autostart/trellivar.desktop");
  }
  bool hears(int expected) {
    return eventually([&] {
      QCoreApplication::processEvents();
      return changes >= expected;
    });
  }
};

TEST_F(PlatformServicesTest, switchesStartAtLoginOnAndOff) {
  platform->setLoginItem(true);
  EXPECT_TRUE(isStartedAtLogin());
  platform->setLoginItem(false);
  EXPECT_FALSE(isStartedAtLogin());
}

TEST_F(PlatformServicesTest, withoutArgumentsForAStartAtLoginThereIsNone) {
  platform = platformServices(std::nullopt);
  platform->setLoginItem(true);
  EXPECT_FALSE(isStartedAtLogin());
}

TEST_F(PlatformServicesTest, theAppearanceOfTheSystemIsThatOfTheDesktop) {
  for (const bool isDark : {true, false}) {
    const int before = changes;
    QApplication::setPalette(isDark ? darkPalette() : lightPalette());
    EXPECT_TRUE(hears(before + 1)) << isDark;
    EXPECT_EQ(platform->isDark(), isDark);
  }
}

TEST_F(PlatformServicesTest, anAppearanceThatIsForcedIsNotThatOfTheDesktop) {
  QApplication::setPalette(darkPalette());
  platform->setAppearance(AppAppearance::light);
  EXPECT_FALSE(platform->isDark());
  EXPECT_GE(changes, 1);
  QApplication::setPalette(lightPalette());
  platform->setAppearance(AppAppearance::dark);
  EXPECT_TRUE(platform->isDark());
  platform->setAppearance(AppAppearance::system);
  EXPECT_FALSE(platform->isDark());
}

} // namespace
} // namespace trellivar
