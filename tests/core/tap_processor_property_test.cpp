#include "core/tap_processor.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using Kind = TapEvent::Kind;
using CompiledIdentity = MappingTable::CompiledIdentity;
using SingleAction = MappingTable::SingleAction;

constexpr double window = 0.5;
constexpr DeviceIdentity pad{0x1001, 1};
constexpr DeviceIdentity otherPad{0x1001, 2};

Instant at(double seconds) { return Instant(Seconds(seconds)); }

const std::vector<KeyName>& alphabet() {
  static const std::vector<KeyName> names{KeyName("a"), KeyName("b"), KeyName("c"),
                                          KeyName("d"), KeyName("e"), KeyName("right_shift"),
                                          KeyName("k")};
  return names;
}

/// Any number from 0 to `end` - 1, all equally likely in small cases too.
template <class Number> Number below(Number end) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<Number>(0, end));
}

template <class T> void shuffle(std::vector<T>& items) {
  for (std::size_t i = items.size(); i > 1; --i)
    std::swap(items[i - 1], items[below(i)]);
}

// Random tables. Each output taps a name of its own, by which what was posted is known.

std::set<KeyName, KeyName::ByText> anyMembers() {
  const auto names = *rc::gen::container<std::vector<KeyName>>(1 + below(std::size_t{4}),
                                                               rc::gen::elementOf(alphabet()));
  return {names.begin(), names.end()};
}

CompiledIdentity anyEntry() {
  CompiledIdentity entry;
  const int chords = below(6);
  for (int i = 0; i < chords; ++i) {
    entry.chords.push_back({anyMembers(), CompiledOutput(tapOf("chord" + std::to_string(i)))});
  }
  const auto singles = *rc::gen::container<std::vector<KeyName>>(rc::gen::elementOf(alphabet()));
  for (std::size_t i = 0; i < std::min(singles.size(), std::size_t{3}); ++i) {
    entry.singles.insert_or_assign(singles[i], i == 2
                                                   ? SingleAction{SingleAction::Swallow{}}
                                                   : SingleAction{SingleAction::Fire{CompiledOutput(
                                                         tapOf("single" + std::to_string(i)))}});
  }
  if (*rc::gen::arbitrary<bool>())
    entry.normalization.emplace(KeyName("right_shift"), KeyName("left_shift"));
  return entry;
}

MappingTable anyTable() {
  MappingTable table;
  table.identities[pad] = anyEntry();
  if (*rc::gen::arbitrary<bool>()) table.identities[otherPad] = anyEntry();
  return table;
}

/// Keeps account of the events of one sender from outside: which downs have gone in and not come
/// out again.
class Account {
public:
  explicit Account(const CompiledIdentity* entry) : entry_(entry) {}

  std::optional<double> deadline() const {
    if (withheld_.empty()) return std::nullopt;
    return firstWithheld_ + window;
  }
  bool isDue(double now) const { return deadline() && now >= *deadline(); }

  /// Checks what is to be done about an event, and books it.
  void book(const TapEvent& event, double now, const Actions& result) {
    if (!entry_) {
      RC_ASSERT(result == actions(pass()));
      return;
    }
    checkDecision(event, result);
    std::size_t next = 0;
    if (isDue(now)) {
      RC_ASSERT(std::holds_alternative<TapAction::Replay>(result[0].value));
      bookReplay(std::get<TapAction::Replay>(result[0].value).events);
      next = 1;
    }
    bool cameOut = false;
    bool posted = false;
    for (; next < result.size(); ++next) {
      if (const auto* replay = std::get_if<TapAction::Replay>(&result[next].value))
        cameOut = bookReplay(replay->events, &event);
      if (const auto* post = std::get_if<TapAction::Post>(&result[next].value)) {
        RC_ASSERT(next + 1 == result.size());
        posted = true;
        bookPost(event, *post->events);
      }
    }
    if (!isDown(event.kind)) {
      acted_.erase(event.name);
      return;
    }
    const bool isSuppressed = std::ranges::count(result, suppress()) > 0;
    if (!isSuppressed || posted || cameOut || acted_.contains(event.name)) return;
    if (!isMember(event.name)) { // a swallowed key
      RC_ASSERT(entry_->singles.contains(event.name));
      RC_ASSERT(withheld_.empty());
      acted_.insert(event.name);
      return;
    }
    if (withheld_.empty()) firstWithheld_ = now;
    withheld_.push_back(event);
    for (const auto& trigger : entry_->chords)
      RC_ASSERT(!trigger.members.contains(event.name) || !isComplete(trigger));
  }

  void bookFlush(const TapEvents& events) {
    RC_ASSERT(!withheld_.empty());
    bookReplay(events);
  }

  bool isEmpty() const { return withheld_.empty(); }
  std::size_t lost() const { return lost_; }

private:
  bool isMember(KeyName name) const {
    return std::ranges::any_of(entry_->chords,
                               [&](const auto& trigger) { return trigger.members.contains(name); });
  }
  bool isComplete(const MappingTable::ChordTrigger& trigger) const {
    return std::ranges::all_of(trigger.members, [&](KeyName member) {
      return std::ranges::find(withheld_, member, &TapEvent::name) != withheld_.end();
    });
  }

  /// There is exactly one decision about the current event, and an event that is replayed is
  /// dropped as itself.
  void checkDecision(const TapEvent& event, const Actions& result) {
    RC_ASSERT(!result.empty());
    RC_ASSERT(result.size() <= 3U);
    int decisions = 0;
    int posts = 0;
    for (const TapAction& action : result) {
      decisions += !std::holds_alternative<TapAction::Replay>(action.value) &&
                   !std::holds_alternative<TapAction::Post>(action.value);
      posts += std::holds_alternative<TapAction::Post>(action.value);
    }
    RC_ASSERT(decisions == 1);
    RC_ASSERT(posts <= (isDown(event.kind) ? 1 : 0));
  }

  /// All that is withheld comes out at once, in order; perhaps followed by the current event.
  /// Returns whether it was.
  bool bookReplay(const TapEvents& replayed, const TapEvent* current = nullptr) {
    std::vector<TapEvent> events(replayed.begin(), replayed.end());
    const bool withCurrent = events.size() == withheld_.size() + 1;
    RC_ASSERT(!withheld_.empty());
    if (withCurrent) {
      RC_ASSERT(current != nullptr);
      RC_ASSERT(events.back() == *current);
      events.pop_back();
    }
    RC_ASSERT(events == withheld_);
    withheld_.clear();
    return withCurrent;
  }

  void bookPost(const TapEvent& event, const std::vector<TapEvent>& events) {
    for (const auto& trigger : entry_->chords) {
      if (*trigger.output.events() != events) continue;
      withheld_.push_back(event);
      RC_ASSERT(trigger.members.contains(event.name));
      RC_ASSERT(isComplete(trigger));
      acted_.insert(trigger.members.begin(), trigger.members.end());
      lost_ += withheld_.size();
      withheld_.clear();
      return;
    }
    RC_ASSERT(withheld_.empty());
    RC_ASSERT(entry_->singles.contains(event.name));
    const auto* fire = std::get_if<SingleAction::Fire>(&entry_->singles.at(event.name).value);
    RC_ASSERT(fire != nullptr);
    RC_ASSERT(*fire->output.events() == events);
    RC_ASSERT(!isMember(event.name));
    acted_.insert(event.name);
  }

  const CompiledIdentity* entry_; ///< none: every event passes
  std::vector<TapEvent> withheld_;
  double firstWithheld_ = 0;
  std::set<KeyName, KeyName::ByText> acted_;
  std::size_t lost_ = 0; ///< downs that went into chords
};

/// A processor with an account for each of its senders; every step is checked.
class AccountedProcessor {
public:
  AccountedProcessor() {
    processor_.setSenders({{1, pad}, {2, pad}, {3, otherPad}});
    changeTable(anyTable());
  }

  void changeTable(MappingTable table) {
    table_ = std::move(table);
    processor_.setTable(table_);
    accounts_.clear();
    for (const std::int64_t sender : {1, 2, 3, 4}) {
      const auto entry = table_.identities.find(sender == 3 ? otherPad : pad);
      const bool isKnown = sender != 4 && entry != table_.identities.end();
      accounts_.emplace(sender, Account(isKnown ? &entry->second : nullptr));
    }
    checkDeadline();
  }

  void advance(double seconds) { now_ += seconds; }
  void advanceToDeadline() {
    const auto deadline = processor_.nextDeadline();
    if (deadline) now_ = std::max(now_, deadline->time_since_epoch().count());
  }

  void send(const TapEvent& event) {
    const Actions result = taken(processor_.process(event, at(now_)));
    accounts_.at(event.senderId).book(event, now_, result);
    checkDeadline();
  }

  void flush() {
    std::vector<std::int64_t> due;
    for (const auto& [sender, account] : accounts_) {
      if (account.isDue(now_)) due.push_back(sender);
    }
    const Actions result = taken(processor_.flush(at(now_)));
    RC_ASSERT(result.size() == due.size());
    for (std::size_t i = 0; i < due.size(); ++i) {
      const auto* replay = std::get_if<TapAction::Replay>(&result[i].value);
      RC_ASSERT(replay != nullptr);
      accounts_.at(due[i]).bookFlush(replay->events);
    }
    checkDeadline();
  }

  /// After the last deadline nothing is left.
  void finish() {
    now_ += 2 * window;
    flush();
    RC_ASSERT(processor_.nextDeadline() == std::nullopt);
    for (const auto& [sender, account] : accounts_)
      RC_ASSERT(account.isEmpty());
  }

  std::size_t lost() const {
    std::size_t sum = 0;
    for (const auto& [sender, account] : accounts_)
      sum += account.lost();
    return sum;
  }

private:
  void checkDeadline() const {
    std::optional<double> earliest;
    for (const auto& [sender, account] : accounts_) {
      const auto deadline = account.deadline();
      if (deadline && (!earliest || *deadline < *earliest)) earliest = deadline;
    }
    const auto next = processor_.nextDeadline();
    RC_ASSERT(next.has_value() == earliest.has_value());
    if (next) RC_ASSERT(next->time_since_epoch().count() == *earliest);
  }

  TapProcessor processor_{Seconds(window)};
  MappingTable table_;
  std::map<std::int64_t, Account> accounts_;
  double now_ = 0;
};

void anyStep(AccountedProcessor& processor) {
  switch (below(20)) {
  case 0:
    processor.advanceToDeadline();
    return;
  case 1:
    processor.flush();
    return;
  case 2:
    processor.advanceToDeadline();
    processor.flush();
    return;
  case 3:
  case 4:
    processor.advance(*rc::gen::element(0.001, 0.1, 0.25, 0.4, window, 3.0));
    return;
  default:
    processor.send({*rc::gen::element<std::int64_t>(1, 1, 1, 1, 2, 3, 4),
                    *rc::gen::element(Kind::keyDown, Kind::keyDown, Kind::consumerDown,
                                      Kind::pointingDown, Kind::keyUp, Kind::consumerUp),
                    *rc::gen::elementOf(alphabet())});
  }
}

// Besides what its name says, `book` checks the single decision about each event, that releases
// post nothing, and the deadline after each step.
RC_GTEST_PROP(TapProcessorProperty,
              replaysEveryHeldEventOnceAndInOrderUnlessItsChordCompletesOrTheTableChanges, ()) {
  AccountedProcessor processor;
  const int steps = *rc::gen::inRange(0, 200);
  for (int i = 0; i < steps; ++i) {
    if (below(60) == 0) processor.changeTable(anyTable());
    anyStep(processor);
  }
  processor.finish();
  RC_CLASSIFY(processor.lost() > 0, "with completed chords");
}

/// A chord of two to five distinct members.
std::vector<KeyName> anyChord() {
  std::vector<KeyName> names = alphabet();
  shuffle(names);
  names.resize(2 + below(std::size_t{4}));
  return names;
}

RC_GTEST_PROP(TapProcessorProperty, completesAChordWhateverTheOrderAndTheRepeatsOfItsMembers, ()) {
  const std::vector<KeyName> order = anyChord();
  MappingTable table;
  table.identities[pad].chords.push_back(
      {{order.begin(), order.end()}, CompiledOutput(tapOf("out"))});
  TapProcessor processor{Seconds(window)};
  processor.setSenders({{1, pad}, {2, pad}});
  processor.setTable(table);

  double now = 0;
  const auto press = [&](KeyName name) {
    now += *rc::gen::element(0.0, 0.001, window / 16);
    return taken(processor.process({1, Kind::keyDown, name}, at(std::min(now, 0.4999))));
  };
  for (std::size_t i = 0; i + 1 < order.size(); ++i) {
    RC_ASSERT(press(order[i]) == actions(suppress()));
    while (below(3) == 0) {
      RC_ASSERT(press(order[below(i + 1)]) == actions(suppress()));
    }
    // Another pad of the same kind neither helps nor hinders.
    processor.process({2, Kind::keyDown, order.back()}, at(now));
    processor.process({2, Kind::keyUp, order[i]}, at(now));
  }
  RC_ASSERT(press(order.back()) == actions(suppress(), postTapOf("out")));

  std::vector<KeyName> releases = order;
  shuffle(releases);
  for (const KeyName name : releases) {
    RC_ASSERT(taken(processor.process({1, Kind::keyDown, name}, at(1))) == actions(suppress()));
    RC_ASSERT(taken(processor.process({1, Kind::keyUp, name}, at(2))) == actions(suppress()));
  }
}

RC_GTEST_PROP(TapProcessorProperty, postsAChordOnceForEachTimeItIsPressed, ()) {
  const std::vector<KeyName> order = anyChord();
  MappingTable table;
  table.identities[pad].chords.push_back(
      {{order.begin(), order.end()}, CompiledOutput(tapOf("out"))});
  TapProcessor processor{Seconds(window)};
  processor.setSenders({{1, pad}});
  processor.setTable(table);
  const int times = 1 + below(4);
  int posts = 0;
  const auto send = [&](Kind kind, KeyName name, double now) {
    for (const TapAction& action : processor.process({1, kind, name}, at(now)))
      posts += std::holds_alternative<TapAction::Post>(action.value);
  };
  for (int i = 0; i < times; ++i) {
    for (const KeyName name : order)
      send(Kind::keyDown, name, i);
    for (const KeyName name : order)
      send(Kind::keyDown, name, i + 0.5);
    for (const KeyName name : order)
      send(Kind::keyUp, name, i + 0.75);
  }
  RC_ASSERT(posts == times);
  RC_ASSERT(processor.nextDeadline() == std::nullopt);
}

} // namespace
} // namespace trellivar
