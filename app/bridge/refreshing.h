#pragma once

#include "viewmodels/published.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QTimer>
#include <functional>
#include <utility>
#include <vector>

namespace trellivar {

/// What shows models to QML: re-reads them in the turn of the loop after any of them has announced
/// a change, so that a burst of changes is one, and nothing is read before it is stored.
class Refreshing : public QObject {
  Q_OBJECT
  QML_ANONYMOUS

public:
  using QObject::QObject;

  /// Re-reads the models and emits the signals of the properties that differ.
  virtual void refresh() = 0;

protected:
  template <class Value> void watch(const Published<Value>& value) {
    subscriptions_.push_back(value.willChange([this](const Value&) { later(); }));
  }
  void stopWatching() { subscriptions_.clear(); }
  void later() {
    if (std::exchange(isDue_, true)) return;
    QTimer::singleShot(0, this, [this] {
      isDue_ = false;
      refresh();
    });
  }

  /// Stores a value; answers whether it differs.
  template <class Value> static bool take(Value& current, Value next) {
    if (current == next) return false;
    current = std::move(next);
    return true;
  }

private:
  std::vector<Subscription> subscriptions_;
  bool isDue_ = false;
};

} // namespace trellivar
