#include "simulator/desk/event_stream.h"

#include "engine/modifier_flags.h"
#include "simulator/desk/key_codes.h"

#include <algorithm>
#include <utility>

namespace trellivar::desk {

namespace {

bool sees(const EventStream::Tap& tap, const InputEvent& event) {
  return event.type < 64 && (tap.mask >> event.type & 1U) != 0;
}

} // namespace

EventStream::TapId EventStream::addTap(Tap tap) {
  const auto level = tap.level;
  const bool atHead = tap.atHead;
  const auto place = std::ranges::find_if(taps_, [&](const Standing& other) {
    return atHead ? other.tap.level >= level : other.tap.level > level;
  });
  taps_.insert(place, {++lastId_, std::move(tap), true});
  return lastId_;
}

void EventStream::removeTap(TapId id) {
  const bool wasFrozen = isFrozen();
  std::erase_if(taps_, [&](const Standing& standing) { return standing.id == id; });
  if (!wasFrozen || isFrozen()) return;
  for (auto& [level, event] : std::exchange(stopped_, {}))
    post(level, event);
}

EventStream::Standing* EventStream::find(TapId id) {
  const auto found = std::ranges::find(taps_, id, &Standing::id);
  return found == taps_.end() ? nullptr : &*found;
}

const EventStream::Standing* EventStream::find(TapId id) const {
  return const_cast<EventStream*>(this)->find(id); // NOLINT(*-const-cast): the same search
}

void EventStream::setEnabled(TapId id, bool enabled) {
  if (Standing* standing = find(id)) standing->enabled = enabled;
}

bool EventStream::isEnabled(TapId id) const {
  const Standing* standing = find(id);
  return standing && standing->enabled;
}

void EventStream::disableTaps(std::uint32_t notice) {
  std::vector<TapId> told;
  for (Standing& standing : taps_) {
    if (std::exchange(standing.enabled, false)) told.push_back(standing.id);
  }
  for (const TapId id : told) {
    queue_.async([this, id, notice] {
      const Standing* standing = find(id);
      if (standing && standing->tap.disabled) std::function(standing->tap.disabled)(notice);
    });
  }
}

void EventStream::setMayFilter(bool may) {
  if (std::exchange(mayFilter_, may) && !may) disableTaps(InputEvent::tapDisabledByUserInput);
}

bool EventStream::isFrozen() const {
  return !mayFilter_ && std::ranges::any_of(taps_, [](const Standing& standing) {
    return standing.enabled && standing.tap.isFilter;
  });
}

void EventStream::post(Level level, const InputEvent& event) {
  posted_.emplace_back(level, event);
  queue_.async([this] {
    auto [from, next] = std::move(posted_.front());
    posted_.pop_front();
    deliver(from, next);
  });
}

void EventStream::deliver(Level from, InputEvent& event) {
  if (isFrozen()) {
    stopped_.emplace_back(from, event);
    return;
  }
  InlineVector<TapId, 4> way; // a list of its own: taps come and go while it is walked
  for (const Standing& standing : taps_) {
    if (standing.tap.level >= from) way.push_back(standing.id);
  }
  for (const TapId id : way) {
    const Standing* standing = find(id);
    if (!standing || !standing->enabled || !standing->tap.handle || !sees(standing->tap, event))
      continue;
    const bool isFilter = standing->tap.isFilter;
    auto answer = std::function(standing->tap.handle)(event);
    if (!isFilter) continue;
    if (!answer) return;
    event = std::move(*answer);
  }
  arrive(event);
}

/// An event speaks for its own key, whatever else its flags repeat. What programs have pressed may
/// come up by a program or by hardware.
void EventStream::notePostedModifier(const InputEvent& event) {
  const auto key = named(event);
  if (!key) return;
  if (!isDown(key->kind))
    postedFlags_ = modifier_flags::releasing(postedFlags_, key->name);
  else if (event.field(InputEvent::sourceProcessId) != 0)
    postedFlags_ = modifier_flags::pressing(postedFlags_, key->name);
}

void EventStream::arrive(const InputEvent& event) {
  if (event.type == InputEvent::flagsChanged) notePostedModifier(event);
  const Received received{queue_.now(), event};
  if (recording_) received_.push_back(received);
  if (receiver_) receiver_(received);
}

} // namespace trellivar::desk
