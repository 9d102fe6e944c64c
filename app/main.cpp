#include "app/options.h"
#include "app/trellivar_app.h"

#include <QApplication>

int main(int argc, char* argv[]) {
  const QApplication loop(argc, argv);
  QApplication::setApplicationName("Trellivar");
  QApplication::setOrganizationName("Trellivar");
  QApplication::setApplicationVersion(TRELLIVAR_VERSION);

  const trellivar::Options options = trellivar::parseOptions(loop.arguments());
  trellivar::TrellivarApp app(options);
  return app.run();
}
