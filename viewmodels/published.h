#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace trellivar {

/// Keeps an observer registered; it ends with its owner.
using Subscription = std::shared_ptr<void>;

/// A value that tells its observers when it changes. Reads like a pointer to the value:
///
///     Published<int> count{1};
///     const Subscription seen = count.willChange([](int next) { show(next); });
///     count.set(*count + 1);
///
/// One thread. An observer must not set the value that it is just being told of.
template <class Value> class Published {
public:
  /// Receives the value that comes; the one that goes is still there to be read.
  using Observer = std::function<void(const Value& next)>;

  Published() = default;
  explicit Published(Value initial) : value_(std::move(initial)) {}
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  const Value& operator*() const noexcept { return value_; }
  const Value* operator->() const noexcept { return &value_; }

  /// Announces and stores a value; an equal one is no change.
  void set(Value next) {
    if (next == value_) return;
    announce(next);
    value_ = std::move(next);
  }

  /// Calls `observer` before each change until the subscription ends; those who asked earlier are
  /// called earlier.
  [[nodiscard]] Subscription willChange(Observer observer) const {
    auto shared = std::make_shared<Observer>(std::move(observer));
    std::erase_if(observers_, [](const auto& each) { return each.expired(); });
    observers_.push_back(shared);
    return shared;
  }

private:
  /// From a copy, since an observer may add and end subscriptions.
  void announce(const Value& next) const {
    for (const auto& each : std::vector(observers_)) {
      if (const auto observer = each.lock()) (*observer)(next);
    }
  }

  Value value_{};
  mutable std::vector<std::weak_ptr<Observer>> observers_;
};

} // namespace trellivar
