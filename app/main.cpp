#include "app/computer.h"
#include "app/options.h"
#include "app/single_instance.h"
#include "app/trellivar_app.h"

#include <QApplication>
#include <cstdio>
#include <exception>

namespace {

/// Read without a display, which --help and a mistake do not need.
trellivar::Options optionsOf(int argc, char* argv[]) {
  const QCoreApplication loop(argc, argv);
  trellivar::Options options = trellivar::parseOptions(QCoreApplication::arguments());
  if (options.simulate) trellivar::continueOnTheDesk(argv);
  return options;
}

int run(int argc, char* argv[]) {
  QCoreApplication::setApplicationName("Trellivar");
  QCoreApplication::setOrganizationName("Trellivar");
  QCoreApplication::setApplicationVersion(TRELLIVAR_VERSION);
  const trellivar::Options options = optionsOf(argc, argv);

  const QApplication loop(argc, argv);
  trellivar::SingleInstance instance(options.dataFolder);
  if (!instance.isFirst()) return 0;
  trellivar::TrellivarApp app(options);
  if (!app.launch()) return 1;
  instance.listen([&app] { app.delegate().openMainWindow(); });
  return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "trellivar: %s\n", error.what());
    return 1;
  }
}
