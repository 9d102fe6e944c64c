#include "app/application.h"
#include "app/options.h"

#include <QApplication>

int main(int argc, char* argv[]) {
  const QApplication loop(argc, argv);
  QApplication::setApplicationName("Trellivar");
  QApplication::setOrganizationName("Trellivar");
  QApplication::setApplicationVersion(TRELLIVAR_VERSION);
  QApplication::setQuitOnLastWindowClosed(false);

  const trellivar::Options options = trellivar::parseOptions(loop.arguments());
  trellivar::Application application(options);
  return application.run();
}
