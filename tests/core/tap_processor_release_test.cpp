#include "core/tap_processor.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using Kind = TapEvent::Kind;
using CompiledIdentity = MappingTable::CompiledIdentity;
using SingleAction = MappingTable::SingleAction;

constexpr double window = 0.5;
constexpr DeviceIdentity pad{0x1001, 1};
constexpr std::int64_t sender = 1;
constexpr std::int64_t stranger = 3;

Instant at(double seconds) { return Instant(Seconds(seconds)); }

/// Chord a+b, single c, swallowed d, right_shift as left_shift.
class Releases : public testing::Test {
protected:
  Releases() {
    CompiledIdentity entry;
    entry.chords.push_back({{KeyName("a"), KeyName("b")}, CompiledOutput(tapOf("x"))});
    entry.singles.emplace(KeyName("c"),
                          SingleAction{SingleAction::Fire{CompiledOutput(tapOf("y"))}});
    entry.singles.emplace(KeyName("d"), SingleAction{SingleAction::Swallow{}});
    entry.normalization.emplace(KeyName("right_shift"), KeyName("left_shift"));
    MappingTable table;
    table.identities[pad] = entry;
    processor.setSenders({{sender, pad}});
    processor.setTable(table);
  }

  void press(std::string_view name, double now = 0) {
    processor.process(down(name, sender), at(now));
  }
  void release(std::string_view name, double now = 0) {
    processor.process(up(name, sender), at(now));
  }
  std::optional<KeyName> releasedAs(std::string_view name) const {
    return processor.releasedAs(sender, KeyName(name));
  }
  bool countsAsDown(std::string_view name) const {
    return processor.countsAsDown(sender, KeyName(name));
  }

  TapProcessor processor{Seconds(window)};
};

TEST_F(Releases, anUnboundKeyIsReleasedAsItself) {
  press("k");
  EXPECT_EQ(releasedAs("k"), KeyName("k"));
  EXPECT_FALSE(countsAsDown("k")) << "the processor has no need to remember it";
}

TEST_F(Releases, aNormalizedKeyIsReleasedUnderItsOtherName) {
  press("right_shift");
  EXPECT_EQ(releasedAs("right_shift"), KeyName("left_shift"));
}

TEST_F(Releases, theReleaseOfAKeyThatActedIsSwallowed) {
  for (const std::string name : {"c", "d"}) {
    press(name);
    EXPECT_EQ(releasedAs(name), std::nullopt) << name;
    EXPECT_TRUE(countsAsDown(name));
    release(name);
    EXPECT_FALSE(countsAsDown(name));
  }
}

TEST_F(Releases, theReleaseOfAHeldKeyFollowsItsReplay) {
  press("a");
  EXPECT_EQ(releasedAs("a"), KeyName("a"));
  EXPECT_TRUE(countsAsDown("a"));
  processor.flush(at(window));
  EXPECT_FALSE(countsAsDown("a"));
  EXPECT_EQ(releasedAs("a"), KeyName("a")) << "it has been replayed";
}

TEST_F(Releases, theReleasesOfACompletedChordAreSwallowed) {
  press("a");
  press("b");
  for (const std::string name : {"a", "b"}) {
    EXPECT_EQ(releasedAs(name), std::nullopt);
    EXPECT_TRUE(countsAsDown(name));
  }
  release("a");
  EXPECT_EQ(releasedAs("a"), KeyName("a"));
  EXPECT_FALSE(countsAsDown("a"));
  EXPECT_TRUE(countsAsDown("b")) << "which is still down";
}

TEST_F(Releases, askingChangesNothing) {
  press("a");
  releasedAs("a");
  countsAsDown("a");
  EXPECT_EQ(processor.nextDeadline(), at(window));
  EXPECT_EQ(taken(processor.process(down("b", sender), at(0.1))),
            actions(suppress(), postTapOf("x")));
}

TEST_F(Releases, strangersAndPausedDevicesAreReleasedAsTheyAre) {
  press("c");
  for (const std::string name : {"c", "d", "right_shift"}) {
    EXPECT_EQ(processor.releasedAs(stranger, KeyName(name)), KeyName(name));
    EXPECT_FALSE(processor.countsAsDown(stranger, KeyName(name)));
  }
  processor.setPaused({pad});
  EXPECT_EQ(releasedAs("c"), KeyName("c"));
  EXPECT_FALSE(countsAsDown("c"));
  processor.setPaused({});
  EXPECT_EQ(releasedAs("c"), std::nullopt) << "it is still to be released";
  EXPECT_TRUE(countsAsDown("c"));
}

TEST_F(Releases, aNewTableForgetsWhatIsDown) {
  press("c");
  press("a");
  processor.setTable(processor.table());
  EXPECT_FALSE(countsAsDown("c"));
  EXPECT_FALSE(countsAsDown("a"));
}

// Random tables and streams.

const std::vector<KeyName>& alphabet() {
  static const std::vector<KeyName> names{KeyName("a"), KeyName("b"), KeyName("c"), KeyName("d"),
                                          KeyName("right_shift")};
  return names;
}

KeyName anyName() { return *rc::gen::elementOf(alphabet()); }
template <class Number> Number below(Number end) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<Number>(0, end));
}

/// Any name may have any part in the table, several at once.
CompiledIdentity anyEntry() {
  CompiledIdentity entry;
  for (int left = below(4); left > 0; --left) {
    std::set<KeyName, KeyName::ByText> members;
    for (int member = 1 + below(3); member > 0; --member)
      members.insert(anyName());
    entry.chords.push_back({members, CompiledOutput(tapOf("x"))});
  }
  for (int left = below(3); left > 0; --left)
    entry.singles.insert_or_assign(
        anyName(), below(2) == 0 ? SingleAction{SingleAction::Swallow{}}
                                 : SingleAction{SingleAction::Fire{CompiledOutput(tapOf("y"))}});
  for (int left = below(3); left > 0; --left)
    entry.normalization.insert_or_assign(anyName(), KeyName("left_shift"));
  return entry;
}

/// As what applications see the release that these actions answer; none if they do not.
std::optional<KeyName> delivered(const TapEvent& release, const Actions& result) {
  for (const TapAction& action : result) {
    if (std::holds_alternative<TapAction::Pass>(action.value)) return release.name;
    if (const auto* rewrite = std::get_if<TapAction::Rewrite>(&action.value)) return rewrite->name;
    if (const auto* replay = std::get_if<TapAction::Replay>(&action.value)) {
      const auto& events = replay->events;
      if (std::ranges::find(events, release) != events.end()) return release.name;
    }
  }
  return std::nullopt;
}

/// Two senders of a pad and one of nobody's, through any life.
void live(TapProcessor& processor, const std::function<void(const TapEvent&, double)>& onRelease) {
  const auto changeTable = [&] {
    MappingTable table;
    table.identities[pad] = anyEntry();
    processor.setTable(table);
  };
  processor.setSenders({{1, pad}, {2, pad}});
  changeTable();
  double now = 0;
  const int steps = *rc::gen::inRange(0, 120);
  for (int i = 0; i < steps; ++i) {
    if (below(40) == 0) changeTable();
    if (below(30) == 0)
      processor.setPaused(below(2) == 0 ? TapProcessor::PausedDevices{pad}
                                        : TapProcessor::PausedDevices{});
    now += *rc::gen::element(0.0, 0.01, 0.2, 0.6);
    processor.flush(at(now)); // as the timer would
    const bool isDown = below(3) != 0;
    const TapEvent event{*rc::gen::element<std::int64_t>(1, 1, 1, 2, stranger),
                         isDown ? Kind::keyDown : Kind::keyUp, anyName()};
    if (isDown)
      processor.process(event, at(now));
    else
      onRelease(event, now);
  }
}

RC_GTEST_PROP(TapProcessorRelease, releasedAsPredictsWhatIsDelivered, ()) {
  TapProcessor processor{Seconds(window)};
  int swallowed = 0;
  live(processor, [&](const TapEvent& release, double now) {
    const auto predicted = processor.releasedAs(release.senderId, release.name);
    RC_ASSERT(delivered(release, taken(processor.process(release, at(now)))) == predicted);
    swallowed += !predicted;
  });
  RC_CLASSIFY(swallowed > 0, "with swallowed releases");
}

RC_GTEST_PROP(TapProcessorRelease, nothingCountsAsDownAfterItsRelease, ()) {
  TapProcessor processor{Seconds(window)};
  live(processor, [&](const TapEvent& release, double now) {
    processor.process(release, at(now));
    RC_ASSERT(!processor.countsAsDown(release.senderId, release.name));
  });
}

RC_GTEST_PROP(TapProcessorRelease, aKeyThatCountsAsDownIsSuppressedWhenItIsPressedAgain, ()) {
  TapProcessor processor{Seconds(window)};
  live(processor, [&](const TapEvent& release, double now) {
    const TapEvent again{release.senderId, Kind::keyDown, release.name};
    const bool isDown = processor.countsAsDown(again.senderId, again.name);
    const Actions result = taken(processor.process(again, at(now)));
    if (isDown) RC_ASSERT(result == actions(suppress()));
    processor.process(release, at(now));
  });
}

} // namespace
} // namespace trellivar
