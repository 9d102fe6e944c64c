#include "core/tap_processor.h"

#include <algorithm>
#include <utility>

namespace trellivar {

namespace {

const TapActions passed{{TapAction::Pass{}}};
const TapActions suppressed{{TapAction::Suppress{}}};

} // namespace

bool TapProcessor::NameSet::contains(KeyName name) const noexcept {
  return std::ranges::find(names_, name) != names_.end();
}

void TapProcessor::NameSet::insert(KeyName name) {
  if (!contains(name)) names_.push_back(name);
}

bool TapProcessor::NameSet::erase(KeyName name) noexcept {
  KeyName* const found = std::ranges::find(names_, name);
  if (found == names_.end()) return false;
  names_.eraseUnordered(found);
  return true;
}

TapProcessor::TapProcessor(Seconds chordWindow) : chordWindow_(chordWindow) {}

void TapProcessor::setTable(MappingTable table) {
  states_.clear();
  holding_.clear();
  rules_.clear();
  table_ = std::move(table);
  for (const auto& [identity, compiled] : table_.identities)
    rules_.try_emplace(identity, compiled);
  resolveSenders();
}

void TapProcessor::setSenders(Senders senders) {
  senders_ = std::move(senders);
  resolveSenders();
}

void TapProcessor::setPaused(PausedDevices paused) {
  paused_ = std::move(paused);
  resolveSenders();
}

void TapProcessor::resolveSenders() {
  std::erase_if(states_, [&](const auto& entry) {
    const SenderState& state = entry.second.state;
    return !senders_.contains(entry.first) && !state.isHolding() && state.consumed.size() == 0;
  });
  active_ = {};
  for (const auto& [id, identity] : senders_) {
    const auto rules = rules_.find(identity);
    if (rules == rules_.end() || paused_.contains(identity)) continue;
    Sender& sender = states_[id];
    sender.rules = &rules->second;
    active_[id] = &sender;
  }
}

const TapActions& TapProcessor::process(const TapEvent& event, Instant now) {
  Sender* const* const found = active_.find(event.senderId);
  if (!found) return passed;
  Sender& sender = **found;
  result_.clear();
  if (sender.state.isHolding() && now >= sender.state.deadline) replayHold(sender);
  return isDown(event.kind) ? down(event, sender, now) : up(event, sender);
}

const TapActions& TapProcessor::down(const TapEvent& event, Sender& sender, Instant now) {
  if (sender.state.consumed.contains(event.name)) return answer(suppressed);
  const NameRules& rules = sender.rules->of(event.name);
  if (!rules.candidates.empty()) return holdForChord(event, sender, rules, now);

  if (rules.single) {
    sender.state.consumed.insert(event.name);
    const auto* fire = std::get_if<MappingTable::SingleAction::Fire>(&rules.single->value);
    if (!fire && !sender.state.isHolding()) return answer(suppressed);
    result_.push_back({TapAction::Suppress{}});
    if (sender.state.isHolding()) replayHold(sender);
    if (fire) result_.push_back({TapAction::Post{fire->output.events()}});
    return result_;
  }
  if (rules.normalized) {
    result_.push_back({TapAction::Rewrite{*rules.normalized}});
    if (sender.state.isHolding()) replayHold(sender);
    return result_;
  }
  if (!sender.state.isHolding()) return answer(passed);
  result_.push_back({TapAction::Suppress{}});
  replayHoldWith(sender, event);
  return result_;
}

const TapActions& TapProcessor::holdForChord(const TapEvent& event, Sender& sender,
                                             const NameRules& rules, Instant now) {
  hold(event, sender, now);
  SenderState& state = sender.state;
  const auto isComplete = [&](const NameRules::Candidate& candidate) {
    return candidate.members.size() <= state.heldNames.size() &&
           std::ranges::all_of(candidate.members,
                               [&](KeyName member) { return state.heldNames.contains(member); });
  };
  const auto chord = std::ranges::find_if(rules.candidates, isComplete);
  if (chord == rules.candidates.end()) return answer(suppressed);
  for (const KeyName member : chord->members)
    state.consumed.insert(member);
  dropHold(sender);
  result_.push_back({TapAction::Suppress{}});
  result_.push_back({TapAction::Post{*chord->events}});
  return result_;
}

const TapActions& TapProcessor::up(const TapEvent& event, Sender& sender) {
  if (sender.state.consumed.erase(event.name)) return answer(suppressed);
  if (sender.state.heldNames.contains(event.name)) {
    result_.push_back({TapAction::Suppress{}});
    replayHoldWith(sender, event);
    return result_;
  }
  const NameRules& rules = sender.rules->of(event.name);
  if (rules.single) return answer(suppressed);
  if (rules.normalized) {
    result_.push_back({TapAction::Rewrite{*rules.normalized}});
    return result_;
  }
  return answer(passed);
}

std::optional<KeyName> TapProcessor::releasedAs(std::int64_t senderId, KeyName name) const {
  Sender* const* const found = active_.find(senderId);
  if (!found) return name;
  const Sender& sender = **found;
  if (sender.state.consumed.contains(name)) return std::nullopt;
  if (sender.state.heldNames.contains(name)) return name;
  const NameRules& rules = sender.rules->of(name);
  if (rules.single) return std::nullopt;
  return rules.normalized ? *rules.normalized : name;
}

bool TapProcessor::countsAsDown(std::int64_t senderId, KeyName name) const {
  Sender* const* const found = active_.find(senderId);
  if (!found) return false;
  const SenderState& state = (*found)->state;
  return state.consumed.contains(name) || state.heldNames.contains(name);
}

const TapActions& TapProcessor::flush(Instant now) {
  result_.clear();
  if (holding_.empty()) return result_;
  for (auto& [id, sender] : states_) {
    if (sender.state.isHolding() && now >= sender.state.deadline) replayHold(sender);
  }
  return result_;
}

const TapActions& TapProcessor::flushUnhandled() {
  result_.clear();
  for (auto& [id, sender] : states_) {
    if (sender.state.isHolding() && !handles(id)) replayHold(sender);
  }
  return result_;
}

std::optional<Instant> TapProcessor::earliestDeadline() const noexcept {
  std::optional<Instant> earliest;
  for (const Sender* sender : holding_) {
    const Instant deadline = sender->state.deadline;
    if (!earliest || deadline < *earliest) earliest = deadline;
  }
  return earliest;
}

/// The shared list itself, unless an overdue replay has to precede it.
const TapActions& TapProcessor::answer(const TapActions& constant) {
  if (result_.empty()) return constant;
  result_.append(constant);
  return result_;
}

void TapProcessor::hold(const TapEvent& event, Sender& sender, Instant now) {
  if (!sender.state.isHolding()) {
    sender.state.deadline = now + chordWindow_;
    holding_.push_back(&sender);
  }
  sender.state.held.push_back(event);
  sender.state.heldNames.insert(event.name);
}

void TapProcessor::dropHold(Sender& sender) noexcept {
  sender.state.held.clear();
  sender.state.heldNames.clear();
  std::erase(holding_, &sender);
}

void TapProcessor::replayHold(Sender& sender) {
  result_.push_back({TapAction::Replay{}});
  std::get<TapAction::Replay>(result_.back().value).events = std::move(sender.state.held);
  dropHold(sender);
}

void TapProcessor::replayHoldWith(Sender& sender, const TapEvent& current) {
  replayHold(sender);
  std::get<TapAction::Replay>(result_.back().value).events.push_back(current);
}

} // namespace trellivar
