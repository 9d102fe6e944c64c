#include "app/platform/desktop_settings.h"
#include "tests/app/shell/desktop_portal.h"
#include "tests/app/shell/palettes.h"
#include "tests/support/eventually.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <memory>
#include <string>

namespace trellivar {
namespace {

using Changes = int;

/// A desktop on a bus of its own, with an application on it.
struct DesktopSettingsTest : testing::Test {
  Bus bus;
  DesktopPortal portal;
  Changes changes = 0;
  std::unique_ptr<DesktopSettings> desktop;

  ~DesktopSettingsTest() override { QApplication::setPalette({}); }

  void start() {
    desktop = std::make_unique<DesktopSettings>(bus.connect("application"), [this] { ++changes; });
  }
  /// Until the loop has brought so many changes.
  bool hears(Changes expected) {
    return eventually([&] {
      QCoreApplication::processEvents();
      return changes >= expected;
    });
  }
};

TEST_F(DesktopSettingsTest, thePaletteDecidesWhereNobodyAnswers) {
  start();
  QApplication::setPalette(darkPalette());
  EXPECT_TRUE(desktop->isDark());
  QApplication::setPalette(lightPalette());
  EXPECT_FALSE(desktop->isDark());
  EXPECT_FALSE(desktop->isMotionReduced());
}

TEST_F(DesktopSettingsTest, tellsWhenThePaletteChanges) {
  start();
  QApplication::setPalette(darkPalette());
  EXPECT_TRUE(hears(1));
}

TEST_F(DesktopSettingsTest, thePreferenceGoesBeforeThePalette) {
  QApplication::setPalette(lightPalette());
  portal.prefer(1U);
  portal.appear(bus.connect("desktop"));
  start();
  EXPECT_FALSE(desktop->isDark()) << "not before the answer";
  ASSERT_TRUE(hears(1));
  EXPECT_TRUE(desktop->isDark());
}

TEST_F(DesktopSettingsTest, followsThePreference) {
  portal.appear(bus.connect("desktop"));
  start();
  ASSERT_TRUE(hears(2)) << "both answers";
  for (const bool isDark : {true, false, true}) {
    const Changes before = changes;
    portal.prefer(isDark ? 1U : 2U);
    ASSERT_TRUE(hears(before + 1));
    EXPECT_EQ(desktop->isDark(), isDark);
  }
  QApplication::setPalette(lightPalette());
  const Changes before = changes;
  portal.prefer(0U);
  ASSERT_TRUE(hears(before + 1));
  EXPECT_FALSE(desktop->isDark()) << "no preference: the palette";
}

TEST_F(DesktopSettingsTest, followsTheWishForLessMotion) {
  portal.animate(false);
  portal.appear(bus.connect("desktop"));
  start();
  ASSERT_TRUE(hears(2));
  EXPECT_TRUE(desktop->isMotionReduced());
  portal.animate(true);
  ASSERT_TRUE(hears(3));
  EXPECT_FALSE(desktop->isMotionReduced());
}

TEST_F(DesktopSettingsTest, takesNoOtherSettingForItsOwn) {
  portal.appear(bus.connect("desktop"));
  start();
  ASSERT_TRUE(hears(2));
  portal.tell("org.freedesktop.appearance", "contrast", 1U);
  portal.tell("elsewhere", "color-scheme", 1U);
  portal.tell("elsewhere", "enable-animations", false);
  portal.prefer(2U);
  ASSERT_TRUE(hears(3));
  EXPECT_EQ(changes, 3);
  EXPECT_FALSE(desktop->isDark());
  EXPECT_FALSE(desktop->isMotionReduced());
}

} // namespace
} // namespace trellivar
