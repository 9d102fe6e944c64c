#pragma once

#include <cstdint>
#include <cstdlib>
#include <limits>

namespace trellivar {

/// Counts the generations of an activity. Who starts something remembers the current value; when it
/// comes back and finds another one, nobody wants its result any more.
class SessionToken {
public:
  using Value = std::int64_t;

  constexpr explicit SessionToken(Value value = 0) noexcept : value_(value) {}

  constexpr Value value() const noexcept { return value_; }
  constexpr bool isCurrent(Value token) const noexcept { return token == value_; }

  /// Makes everything stale that has been started. Aborts rather than begin again, since a value
  /// that returns would revive what is stale.
  void advance() noexcept {
    if (value_ == std::numeric_limits<Value>::max()) std::abort();
    ++value_;
  }

private:
  Value value_;
};

} // namespace trellivar
