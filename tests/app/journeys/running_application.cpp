#include "tests/app/journeys/running_application.h"

#include "app/application.h"
#include "app/options.h"

#include <QApplication>
#include <QMenu>
#include <memory>

namespace trellivar {

void prepare(QApplication& loop) {
  loop.setApplicationName("Trellivar");
  loop.setOrganizationName("Trellivar");
  loop.setQuitOnLastWindowClosed(false);
}

RunningApplication::RunningApplication(const QStringList& arguments) {
  const auto promise = std::make_shared<std::promise<int>>();
  exitCode_ = promise->get_future().share();
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [arguments, promise] {
        int exitCode = 0;
        {
          Application application(parseOptions(QStringList{"trellivar"} + arguments));
          exitCode = application.run();
        }
        promise->set_value(exitCode);
      },
      Qt::QueuedConnection);
}

RunningApplication::~RunningApplication() {
  if (!isRunning()) return;
  onMainThread([] { QCoreApplication::quit(); });
  exitCode_.wait();
}

bool RunningApplication::isRunning() const {
  return exitCode_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}

QMenu* statusMenu() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* menu = qobject_cast<QMenu*>(widget)) return menu;
  }
  return nullptr;
}

} // namespace trellivar
