#include "core/tap_processor.h"
#include "tests/core/naive_tap_processor.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace trellivar {
namespace {

using SingleAction = MappingTable::SingleAction;

constexpr double window = 0.5;
constexpr int eventCount = 250'000;
constexpr const char* seedVariable = "TRELLIVAR_TEST_SEED";

std::uint64_t seedOfThisRun() {
  if (const char* given = std::getenv(seedVariable)) return std::strtoull(given, nullptr, 10);
  std::random_device device;
  return (std::uint64_t{device()} << 32U) | device();
}

/// How often the run met what it is there for.
struct Encounters {
  int events = 0;
  int flushes = 0;
  int tables = 0;
  int senderChanges = 0;
  int pauses = 0;
  int passes = 0;
  int rewrites = 0;
  int chords = 0;
  int singles = 0;
  int replaysByFlush = 0;
  int replaysOfSeveralSendersByOneFlush = 0;
  int replaysWithTheCurrentEvent = 0;
  int overdueReplays = 0;
  int eventsExactlyAtTheDeadline = 0;
  int swapsWhileHolding = 0;
  int senderChangesWhileHolding = 0;
  int pausesWhileHolding = 0;
  int longestHold = 0;
};

/// The real processor and the naive one, given the same random life.
class Comparison {
public:
  explicit Comparison(std::uint64_t seed) : random_(seed) {}

  void run() {
    changeSenders();
    changeTable();
    while (met_.events < eventCount && !testing::Test::HasFailure())
      step();
  }

  const Encounters& met() const { return met_; }

private:
  using Kind = TapEvent::Kind;

  const std::array<KeyName, 9> names_{KeyName("a"),
                                      KeyName("b"),
                                      KeyName("c"),
                                      KeyName("left_control"),
                                      KeyName("right_shift"),
                                      KeyName("mute"),
                                      KeyName("button3"),
                                      KeyName("k"),
                                      KeyName("z")};
  static constexpr std::array<DeviceIdentity, 4> identities_{
      {{0x1001, 1}, {0x1001, 2}, {0x2002, 1}, {0x3003, 3}}};
  static constexpr std::array<std::int64_t, 6> senders_{
      {0, 1, -7, 4'294'967'296, std::numeric_limits<std::int64_t>::min(), 99}};

  // Chance

  int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }
  bool oneIn(int count) { return below(count) == 0; }
  /// Often one of the first few, so that chords come about.
  KeyName anyName() { return names_[static_cast<std::size_t>(below(oneIn(2) ? 4 : 9))]; }
  DeviceIdentity anyIdentity() {
    return identities_[static_cast<std::size_t>(below(identities_.size()))];
  }
  /// Often the one before, so that it gets on with something.
  std::int64_t anySender() {
    if (oneIn(4)) lastSender_ = senders_[static_cast<std::size_t>(below(senders_.size()))];
    return lastSender_;
  }
  /// Two downs to an up.
  TapEvent::Kind anyKind() {
    return std::array{
        Kind::keyDown,      Kind::keyDown,      Kind::consumerDown,
        Kind::consumerDown, Kind::pointingDown, Kind::pointingDown,
        Kind::keyUp,        Kind::consumerUp,   Kind::pointingUp}[static_cast<std::size_t>(
        below(9))];
  }

  /// No two outputs of a table are alike, so that a wrong one cannot pass for the right one.
  CompiledOutput newOutput(const char* purpose) {
    if (oneIn(20)) return CompiledOutput(Output{Output::Sequence{}});
    const std::string name = purpose + std::to_string(++outputs_ % 64);
    return CompiledOutput(Output{Output::Chord{{Modifier::command}, words::key(name)}});
  }

  MappingTable::CompiledIdentity anyEntry() {
    MappingTable::CompiledIdentity entry;
    for (int left = below(6); left > 0; --left) {
      MappingTable::ChordTrigger trigger{{}, newOutput("chord")};
      if (!entry.chords.empty() && oneIn(5))
        trigger.members = entry.chords.front().members;
      else
        for (int member = 2 + below(3); member > 0; --member)
          trigger.members.insert(anyName()); // the same name twice makes a smaller chord
      entry.chords.push_back(trigger);
    }
    for (int left = below(4); left > 0; --left) {
      const bool fires = !oneIn(3);
      entry.singles.insert_or_assign(anyName(),
                                     fires ? SingleAction{SingleAction::Fire{newOutput("single")}}
                                           : SingleAction{SingleAction::Swallow{}});
    }
    for (int left = below(3); left > 0; --left)
      entry.normalization.insert_or_assign(anyName(), anyName());
    return entry;
  }

  /// Through the compiler, for tables as they are in earnest.
  MappingTable anyCompiledTable() {
    std::vector<MappingSet> sets;
    for (int left = 1 + below(3); left > 0; --left) {
      const DeviceIdentity identity = anyIdentity();
      MappingSet set{{"device", identity.vendorId, identity.productId, {}}, {}, oneIn(4)};
      for (int id = 1; id <= 5; ++id) {
        PhysicalKey physical{id, 0, id, {{}, oneIn(2)}, {}};
        for (int code = 1 + below(3); code > 0; --code)
          physical.signature.codes.push_back({anyName(), Key::Kind::keyCode});
        set.device.layout.keys.push_back(physical);
        const std::vector<Modifier> modifiers{Modifier::shift, Modifier::rightControl};
        set.profile.mappings.push_back(
            {1 + below(6),
             {Output::Chord{modifiers, words::key("out" + std::to_string(++outputs_ % 64))}},
             std::nullopt});
      }
      sets.push_back(set);
    }
    return MappingTable::compile(sets);
  }

  // What happens

  void step() {
    advance();
    const int what = below(1000);
    if (what < 50)
      flush();
    else if (what < 54)
      changeTable();
    else if (what < 70)
      changeSenders();
    else if (what < 80)
      changePaused();
    else
      send();
    compareDeadlines();
  }

  void advance() {
    const auto deadline = naive_.nextDeadline();
    const double before = now_;
    switch (below(24)) {
    case 0:
      now_ += window / 5;
      break;
    case 1:
      now_ += 0.01;
      break;
    case 2:
      now_ += window;
      break;
    case 3:
      if (deadline && oneIn(2)) now_ = *deadline;
      break;
    case 4:
      if (deadline && oneIn(2)) now_ = std::nextafter(*deadline, 0.0);
      break;
    case 5:
      if (deadline && oneIn(4)) now_ = std::nextafter(*deadline, now_ + 1e9);
      break;
    default:
      break; // time stands still
    }
    now_ = std::max(now_, before);
  }

  void send() {
    const TapEvent event{anySender(), anyKind(), anyName()};
    const int repeats = oneIn(1000) ? 12 : 1;
    for (int i = 0; i < repeats; ++i)
      send(event);
  }

  void send(const TapEvent& event) {
    ++met_.events;
    met_.eventsExactlyAtTheDeadline += naive_.nextDeadline() == now_;
    const auto expected = naive_.process(event, now_);
    compare(event, real_.process(event, at(now_)), expected);
    for (const auto& action : expected) {
      met_.passes += action.what == "pass";
      met_.rewrites += action.what == "rewrite";
      met_.chords += posts(action, "chord");
      met_.singles += posts(action, "single");
      met_.longestHold = std::max(met_.longestHold, static_cast<int>(action.events.size()));
    }
    met_.overdueReplays += expected.front().what == "replay";
    met_.replaysWithTheCurrentEvent +=
        expected.back().what == "replay" && expected.back().events.back() == event;
  }

  static bool posts(const NaiveTapProcessor::Action& action, std::string_view purpose) {
    return action.what == "post" && std::ranges::any_of(action.events, [&](const TapEvent& event) {
             return event.name.text().starts_with(purpose);
           });
  }

  void flush() {
    ++met_.flushes;
    const auto expected = naive_.flush(now_);
    compare("flush", real_.flush(at(now_)), expected);
    met_.replaysByFlush += !expected.empty();
    met_.replaysOfSeveralSendersByOneFlush += expected.size() > 1;
  }

  void changeTable() {
    ++met_.tables;
    met_.swapsWhileHolding += naive_.nextDeadline().has_value();
    MappingTable table;
    if (oneIn(4)) {
      table = anyCompiledTable();
    } else if (!oneIn(10)) {
      for (const DeviceIdentity& identity : identities_) {
        if (!oneIn(8)) table.identities[identity] = anyEntry(); // now and then an empty one
      }
    }
    note("new table");
    naive_.setTable(table);
    real_.setTable(std::move(table));
  }

  void changeSenders() {
    ++met_.senderChanges;
    met_.senderChangesWhileHolding += naive_.nextDeadline().has_value();
    naive_.senders.clear();
    for (const std::int64_t sender : senders_) {
      if (!oneIn(8)) naive_.senders[sender] = anyIdentity();
    }
    note("new senders");
    real_.setSenders({naive_.senders.begin(), naive_.senders.end()});
  }

  void changePaused() {
    ++met_.pauses;
    met_.pausesWhileHolding += naive_.nextDeadline().has_value();
    naive_.paused.clear();
    for (const DeviceIdentity& identity : identities_) {
      if (oneIn(8)) naive_.paused.insert(identity);
    }
    note("new pauses");
    real_.setPaused({naive_.paused.begin(), naive_.paused.end()});
  }

  // The comparison

  static Instant at(double seconds) { return Instant(Seconds(seconds)); }

  static void show(std::ostream& out, const NaiveTapProcessor::Actions& actions) {
    for (const auto& action : actions) {
      out << "    " << action.what << ' ' << action.name;
      showEvents(out, action.events);
      out << '\n';
    }
  }

  void compare(std::variant<TapEvent, const char*> what, const TapActions& actual,
               const NaiveTapProcessor::Actions& expected) {
    note(what);
    const auto plain = plainly(actual);
    if (plain == expected) return;
    std::ostringstream both;
    both << "  expected\n";
    show(both, expected);
    both << "  actual\n";
    show(both, plain);
    ADD_FAILURE() << history() << both.str();
  }

  void compareDeadlines() {
    const auto expected = naive_.nextDeadline();
    const auto actual = real_.nextDeadline();
    if (actual.has_value() == expected.has_value() && (!actual || *actual == at(*expected))) return;
    ADD_FAILURE() << history() << "  expected deadline " << expected.value_or(-1) << ", actual "
                  << (actual ? actual->time_since_epoch().count() : -1);
  }

  /// What happened, kept cheaply: an event or a word for anything else.
  struct Happening {
    double time;
    std::variant<TapEvent, const char*> what;
  };

  void note(std::variant<TapEvent, const char*> what) {
    history_.push_back({now_, what});
    if (history_.size() > 25) history_.pop_front();
  }

  std::string history() const {
    std::ostringstream text;
    text.precision(17);
    text << "after\n";
    for (const Happening& happening : history_) {
      text << "  " << happening.time << ' ';
      std::visit([&](const auto& what) { text << what << '\n'; }, happening.what);
    }
    return text.str();
  }

  std::mt19937_64 random_;
  double now_ = 0;
  int outputs_ = 0;
  std::int64_t lastSender_ = 0;
  NaiveTapProcessor naive_{window};
  TapProcessor real_{Seconds(window)};
  Encounters met_;
  std::deque<Happening> history_;
};

TEST(TapProcessorModel, decidesLikeTheNaiveProcessorThroughARandomLife) {
  const std::uint64_t seed = seedOfThisRun();
  std::cout << "To repeat this run: " << seedVariable << '=' << seed << '\n';
  SCOPED_TRACE(std::string(seedVariable) + '=' + std::to_string(seed));
  Comparison comparison(seed);
  comparison.run();
  if (HasFailure()) return;

  const Encounters& met = comparison.met();
  EXPECT_GE(met.events, 200'000);
  EXPECT_GE(met.tables, 500);
  EXPECT_GE(met.flushes, 5000);
  EXPECT_GE(met.senderChanges, 1000);
  EXPECT_GE(met.pauses, 1000);
  EXPECT_GE(met.passes, 20'000);
  EXPECT_GE(met.rewrites, 1000);
  EXPECT_GE(met.chords, 1000);
  EXPECT_GE(met.singles, 500);
  EXPECT_GE(met.replaysByFlush, 1000);
  EXPECT_GE(met.replaysOfSeveralSendersByOneFlush, 100);
  EXPECT_GE(met.replaysWithTheCurrentEvent, 1000);
  EXPECT_GE(met.overdueReplays, 1000);
  EXPECT_GE(met.eventsExactlyAtTheDeadline, 500);
  EXPECT_GE(met.swapsWhileHolding, 100);
  EXPECT_GE(met.senderChangesWhileHolding, 500);
  EXPECT_GE(met.pausesWhileHolding, 500);
  EXPECT_GE(met.longestHold, 9) << "more than the processor keeps inline";
}

} // namespace
} // namespace trellivar
