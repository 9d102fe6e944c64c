#pragma once

#include <QObject>
#include <QQuickWindow>
#include <functional>

namespace trellivar {

/// Waits for the main window to show its first frame.
class FirstFrame final : public QObject {
public:
  explicit FirstFrame(std::function<void(QQuickWindow&)> shown) : shown_(std::move(shown)) {}

  /// As a filter of the events of the application.
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  std::function<void(QQuickWindow&)> shown_;
  bool isWatching_ = false;
};

} // namespace trellivar
