#include "tests/app/pictures.h"
#include "tests/app/scene_test.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>

namespace trellivar {
namespace {

class Pictures : public SceneTest {};

/// An unintended change of how a screen looks is noticed.
TEST_P(Pictures, areThoseOfTheDocuments) {
  for (const Look& look : looks) {
    const QString name = fileName(GetParam(), look);
    const QString file = QDir(TRELLIVAR_PICTURES).filePath(name);
    if (!QFileInfo::exists(file)) {
      ADD_FAILURE() << "docs/screens/" << name.toStdString()
                    << " is missing: script/screens draws it";
      continue;
    }
    const QImage actual = picture(stage, GetParam(), look);
    const auto difference =
        Difference::between(QImage(file).convertToFormat(QImage::Format_RGB32), actual);
    if (!difference) continue;
    const QDir folder(TRELLIVAR_ACTUAL_PICTURES);
    folder.mkpath(".");
    actual.save(folder.filePath(name));
    ADD_FAILURE() << name.toStdString() << ": " << difference->share * 100
                  << " % of the pixels differ clearly, and " << difference->tileShare * 100
                  << " % at " << difference->tile.x() << ", " << difference->tile.y()
                  << ", by at most " << difference->largest << " of 255. Now it looks like "
                  << folder.filePath(name).toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(Screens, Pictures, everyScene(), nameOfScene);

/// That the comparison sees what people would see.
class Comparison : public StageTest {
protected:
  QImage usb() { return picture(stage, scene("usb"), looks[0]); }
  QImage now() { return stage.window()->grabWindow().convertToFormat(QImage::Format_RGB32); }
};

TEST_F(Comparison, aPictureIsAlwaysTheSame) {
  const QImage once = usb();
  EXPECT_EQ(once, usb());
  EXPECT_FALSE(Difference::between(once, once));
}
TEST_F(Comparison, fewColorsAreEnough) {
  const QImage once = usb();
  EXPECT_FALSE(
      Difference::between(once, withFewColors(once).convertToFormat(QImage::Format_RGB32)));
}
TEST_F(Comparison, anotherColorOfASmallLightIsNoticed) {
  const QImage before = usb();
  QQuickItem* light = stage.part("StatusDot");
  ASSERT_NE(light, nullptr);
  light->setProperty("color", QColor("#6cb2ff"));
  EXPECT_TRUE(Difference::between(before, now()));
}
TEST_F(Comparison, aThingThatMovedIsNoticed) {
  const QImage before = usb();
  QQuickItem* pill = stage.part("ActionPill");
  ASSERT_NE(pill, nullptr);
  pill->setX(pill->x() + 2);
  EXPECT_TRUE(Difference::between(before, now()));
}
TEST_F(Comparison, anotherTextIsNoticed) {
  const QImage before = usb();
  stage.root().mapping().rename(1, "Cut");
  stage.settle();
  EXPECT_TRUE(Difference::between(before, now()));
}
TEST_F(Comparison, anotherSizeIsNoticed) {
  const QImage before = usb();
  EXPECT_TRUE(Difference::between(before, before.copy(0, 0, before.width(), 719)));
}

} // namespace
} // namespace trellivar
