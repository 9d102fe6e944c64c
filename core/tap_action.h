#pragma once

#include "core/inline_vector.h"
#include "core/mapping_table.h"
#include "core/tap_event.h"

#include <variant>
#include <vector>

namespace trellivar {

/// A few events by value, without the heap.
using TapEvents = InlineVector<TapEvent, 8>;

/// What is to be done about the current event, and besides it. Actions are carried out in order.
struct TapAction {
  /// Let the current event through, changed to the key of this name.
  struct Rewrite {
    KeyName name;
    friend bool operator==(const Rewrite&, const Rewrite&) = default;
  };
  /// Make these events; they carry sender 0. Equality compares the events.
  struct Post {
    SharedEvents events; ///< never null
    friend bool operator==(const Post& a, const Post& b) { return *a.events == *b.events; }
  };
  /// Emit these events, which were held back, unchanged. The list may end with the current event.
  struct Replay {
    TapEvents events;
    friend bool operator==(const Replay&, const Replay&) = default;
  };
  /// Let the current event through unchanged.
  struct Pass {
    friend bool operator==(const Pass&, const Pass&) = default;
  };
  /// Drop the current event.
  struct Suppress {
    friend bool operator==(const Suppress&, const Suppress&) = default;
  };

  std::variant<Pass, Suppress, Rewrite, Post, Replay> value;

  friend bool operator==(const TapAction&, const TapAction&) = default;
};

/// At most three for one event (suppress, replay and post, in the order that the case asks for);
/// one for each sender that is due when holds are flushed.
using TapActions = InlineVector<TapAction, 4>;

/// Whether the current event goes on: the last action that says so decides, and it does if none
/// says anything.
inline bool letsThrough(const TapActions& actions) noexcept {
  bool result = true;
  for (const TapAction& action : actions) {
    if (std::holds_alternative<TapAction::Suppress>(action.value)) result = false;
    if (std::holds_alternative<TapAction::Pass>(action.value) ||
        std::holds_alternative<TapAction::Rewrite>(action.value))
      result = true;
  }
  return result;
}

} // namespace trellivar
