#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QStringList>
#include <future>
#include <utility>

class QApplication;
class QMenu;

namespace trellivar {

/// Sets up what the process of the application has before anything else is built.
void prepare(QApplication& loop);

/// One run of the application, on the main thread, as its own process would run it. The person acts
/// on another thread.
class RunningApplication {
public:
  /// With the arguments of the command line. Returns before there is a window.
  explicit RunningApplication(const QStringList& arguments);
  RunningApplication(const RunningApplication&) = delete;
  RunningApplication& operator=(const RunningApplication&) = delete;
  /// Quits, if it is still running.
  ~RunningApplication();

  bool isRunning() const;
  /// Of its process. Requires: it has ended.
  int exitCode() const { return exitCode_.get(); }

private:
  std::shared_future<int> exitCode_;
};

/// The menu of the icon in the status area, which a display without such an area does not show.
QMenu* statusMenu();

/// Has something done on the main thread, and waits for it.
template <class Act> void onMainThread(Act act) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(act),
                            Qt::BlockingQueuedConnection);
}

} // namespace trellivar
