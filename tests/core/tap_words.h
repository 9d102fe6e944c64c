#pragma once

#include "core/mapping_table.h"
#include "core/tap_action.h"
#include "core/tap_event.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The words in which tests speak about intercepted events and what becomes of them, and how failed
/// checks show them.
namespace trellivar {

inline std::ostream& operator<<(std::ostream& out, const TapEvent& event) {
  return out << rawValue(event.kind) << ' ' << event.name.text() << '@' << event.senderId;
}

template <class Events> void showEvents(std::ostream& out, const Events& events) {
  out << '[';
  const char* separator = "";
  for (const TapEvent& event : events) {
    out << separator << event;
    separator = ", ";
  }
  out << ']';
}

inline std::ostream& operator<<(std::ostream& out, const TapAction& action) {
  struct Show {
    std::ostream& out;
    void operator()(const TapAction::Pass&) const { out << "pass"; }
    void operator()(const TapAction::Suppress&) const { out << "suppress"; }
    void operator()(const TapAction::Rewrite& rewrite) const {
      out << "rewrite " << rewrite.name.text();
    }
    void operator()(const TapAction::Post& post) const {
      out << "post ";
      showEvents(out, *post.events);
    }
    void operator()(const TapAction::Replay& replay) const {
      out << "replay ";
      showEvents(out, replay.events);
    }
  };
  std::visit(Show{out}, action.value);
  return out;
}

namespace words {

using Actions = std::vector<TapAction>;

template <class... Each> Actions actions(Each&&... each) { return {std::forward<Each>(each)...}; }
inline Actions taken(const TapActions& result) { return {result.begin(), result.end()}; }

inline TapAction pass() { return {TapAction::Pass{}}; }
inline TapAction suppress() { return {TapAction::Suppress{}}; }
inline TapAction rewrite(std::string_view name) { return {TapAction::Rewrite{KeyName(name)}}; }
inline TapAction replay(std::initializer_list<TapEvent> events) {
  return {TapAction::Replay{TapEvents(events)}};
}
inline TapAction post(std::vector<TapEvent> events) {
  return {TapAction::Post{std::make_shared<const std::vector<TapEvent>>(std::move(events))}};
}

inline TapEvent down(std::string_view name, std::int64_t sender = 0) {
  return {sender, TapEvent::Kind::keyDown, KeyName(name)};
}
inline TapEvent up(std::string_view name, std::int64_t sender = 0) {
  return {sender, TapEvent::Kind::keyUp, KeyName(name)};
}

inline Key key(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }

/// An output that taps one key.
inline Output tapOf(std::string_view name) { return {Output::Sequence{{key(name)}}}; }
inline TapAction postTapOf(std::string_view name) { return post({down(name), up(name)}); }

} // namespace words
} // namespace trellivar
