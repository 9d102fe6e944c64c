#pragma once

#include <QApplication>
#include <chrono>

namespace trellivar {

/// The loop of the application, which times its turns. A frame is one turn, and so is whatever
/// comes between frames.
class TimedLoop final : public QApplication {
public:
  using Duration = std::chrono::steady_clock::duration;
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override;

  /// The longest turn since the last call.
  Duration takeLongest();

private:
  int level_ = 0; ///< of nested loops, at which an event is being handled
  Duration longest_{};
};

} // namespace trellivar
