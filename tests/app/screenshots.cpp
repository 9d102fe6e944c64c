// Draws every screen in both languages and both appearances into a folder, for the documents and
// for the tests that compare.

#include "tests/app/pictures.h"
#include "tests/app/scenes.h"
#include "tests/app/stage.h"
#include "tests/app/surroundings.h"

#include <QApplication>
#include <QDir>
#include <cstdio>

namespace trellivar {
namespace {

/// Answers whether the file could be written.
bool draw(Stage& stage, const Scene& scene, const Look& look, const QDir& to) {
  constexpr int smallest = 0;
  const QString file = to.filePath(fileName(scene, look));
  if (withFewColors(picture(stage, scene, look)).save(file, "PNG", smallest)) return true;
  std::fprintf(stderr, "screenshots: cannot write %s\n", qPrintable(file));
  return false;
}

int drawAll(const QDir& to) {
  Stage stage;
  for (const Scene& scene : scenes()) {
    for (const Look& look : looks) {
      if (!draw(stage, scene, look, to)) return 1;
    }
  }
  return 0;
}

} // namespace
} // namespace trellivar

int main(int argc, char* argv[]) {
  trellivar::useKnownSurroundings();
  trellivar::paintInMemory();
  const QApplication application(argc, argv);
  if (argc != 2 || !QDir().mkpath(argv[1])) {
    std::fprintf(stderr, "usage: screenshots FOLDER\n");
    return 2;
  }
  return trellivar::drawAll(QDir(argv[1]));
}
