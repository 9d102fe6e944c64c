#include "tests/app/scenes.h"
#include "tests/app/stage.h"
#include "tests/app/surroundings.h"

#include <QGuiApplication>
#include <cstdio>
int main(int argc, char* argv[]) {
  trellivar::useKnownSurroundings();
  trellivar::paintInMemory();
  QGuiApplication app(argc, argv);
  trellivar::Stage stage;
  for (auto& s : trellivar::scenes()) {
    try {
      stage.begin();
      s.arrange(stage);
      stage.resize(1100, 720);
      stage.window()->grabWindow().save(QString("/tmp/shots/") + s.name.data() + ".png", nullptr,
                                        0);
      if (!stage.warnings().isEmpty())
        printf("WARN %s %s\n", s.name.data(), qPrintable(stage.warnings().join("|")));
    } catch (std::exception& e) {
      printf("FAIL %s %s\n", s.name.data(), e.what());
    }
    stage.end();
  }
}
