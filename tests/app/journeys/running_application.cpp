#include "tests/app/journeys/running_application.h"

#include "app/options.h"
#include "app/trellivar_app.h"

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
          TrellivarApp app(parseOptions(QStringList{"trellivar"} + arguments));
          exitCode = app.launch() ? QApplication::exec() : 1;
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
