#include "core/tap_processor.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using CompiledIdentity = MappingTable::CompiledIdentity;
using SingleAction = MappingTable::SingleAction;
using Kind = TapEvent::Kind;

constexpr double window = 0.5;

Instant at(double seconds) { return Instant(Seconds(seconds)); }

/// One pad with sender 7, another with sender 8, and whatever a test binds. Every verb returns what
/// is to be done.
class TapProcessorTest : public testing::Test {
protected:
  static constexpr DeviceIdentity pad{0x1001, 1};
  static constexpr DeviceIdentity otherPad{0x1001, 2};
  static constexpr std::int64_t sender = 7;
  static constexpr std::int64_t otherSender = 8;
  static constexpr std::int64_t stranger = 9;

  TapProcessorTest() { processor.setSenders({{sender, pad}, {otherSender, otherPad}}); }

  /// When all of these are held together, `output` is tapped.
  void bindChord(std::initializer_list<std::string_view> names, std::string_view output,
                 DeviceIdentity identity = pad) {
    bindChord(names, tapOf(output), identity);
  }
  void bindChord(std::initializer_list<std::string_view> names, const Output& output,
                 DeviceIdentity identity = pad) {
    MappingTable::ChordTrigger trigger{{}, CompiledOutput(output)};
    for (const std::string_view name : names)
      trigger.members.insert(KeyName(name));
    table.identities[identity].chords.push_back(trigger);
    processor.setTable(table);
  }
  void bindSingle(std::string_view name, std::string_view output, DeviceIdentity identity = pad) {
    table.identities[identity].singles.insert_or_assign(
        KeyName(name), SingleAction{SingleAction::Fire{CompiledOutput(tapOf(output))}});
    processor.setTable(table);
  }
  void swallow(std::string_view name) {
    table.identities[pad].singles.insert_or_assign(KeyName(name),
                                                   SingleAction{SingleAction::Swallow{}});
    processor.setTable(table);
  }
  void normalize(std::string_view name, std::string_view target) {
    table.identities[pad].normalization.insert_or_assign(KeyName(name), KeyName(target));
    processor.setTable(table);
  }

  Actions send(Kind kind, std::string_view name, Instant now, std::int64_t from = sender) {
    return taken(processor.process({from, kind, KeyName(name)}, now));
  }
  Actions press(std::string_view name, Instant now, std::int64_t from = sender) {
    return send(Kind::keyDown, name, now, from);
  }
  Actions release(std::string_view name, Instant now, std::int64_t from = sender) {
    return send(Kind::keyUp, name, now, from);
  }
  Actions flush(Instant now) { return taken(processor.flush(now)); }
  std::optional<double> deadline() const {
    const auto next = processor.nextDeadline();
    if (!next) return std::nullopt;
    return next->time_since_epoch().count();
  }

  static TapEvent pressed(std::string_view name) { return down(name, sender); }
  static TapEvent released(std::string_view name) { return up(name, sender); }

  MappingTable table;
  TapProcessor processor{Seconds(window)};
};

// Chords

TEST_F(TapProcessorTest, postsTheOutputOfAChordOnTheDownThatCompletesIt) {
  bindChord({"left_control", "f"}, "out");
  EXPECT_EQ(press("left_control", at(0)), actions(suppress()));
  EXPECT_EQ(press("f", at(0.1)), actions(suppress(), postTapOf("out")));
  EXPECT_EQ(release("f", at(0.2)), actions(suppress()));
  EXPECT_EQ(release("left_control", at(0.3)), actions(suppress()));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(flush(at(9)), actions());
}

TEST_F(TapProcessorTest, postsTheEventsOfTheOutputInOrderAndWithoutASender) {
  bindChord({"a", "b"},
            Output{Output::Chord{{Modifier::command, Modifier::rightShift}, key("mute")}});
  press("a", at(0));
  EXPECT_EQ(press("b", at(0.1)),
            actions(suppress(), post({down("left_command"), down("right_shift"), down("mute"),
                                      up("mute"), up("right_shift"), up("left_command")})));
}

TEST_F(TapProcessorTest, postsAnOutputThatHasNoEvents) {
  bindChord({"a", "b"}, Output{Output::Sequence{}});
  press("a", at(0));
  EXPECT_EQ(press("b", at(0.1)), actions(suppress(), post({})));
}

TEST_F(TapProcessorTest, completesAChordWhateverTheOrderOfItsMembers) {
  std::vector<std::string> names{"f", "left_control", "left_option"};
  bindChord({"f", "left_control", "left_option"}, "out");
  do {
    SCOPED_TRACE(names[0] + ' ' + names[1] + ' ' + names[2]);
    EXPECT_EQ(press(names[0], at(0)), actions(suppress()));
    EXPECT_EQ(press(names[1], at(0)), actions(suppress()));
    EXPECT_EQ(press(names[2], at(0)), actions(suppress(), postTapOf("out")));
    for (const std::string& name : names)
      EXPECT_EQ(release(name, at(0)), actions(suppress()));
  } while (std::ranges::next_permutation(names).found);
}

TEST_F(TapProcessorTest, postsNothingWhenTheMembersOfAChordAreReleased) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  press("b", at(0));
  EXPECT_EQ(release("a", at(0.1)), actions(suppress()));
  EXPECT_EQ(release("b", at(10)), actions(suppress()));
}

TEST_F(TapProcessorTest, suppressesTheAutoRepeatOfACompletedChord) {
  bindChord({"a", "b"}, "out");
  bindChord({"b", "c"}, "other");
  press("a", at(0));
  press("b", at(0));
  EXPECT_EQ(press("b", at(0.5)), actions(suppress()));
  EXPECT_EQ(press("a", at(0.6)), actions(suppress()));
  EXPECT_EQ(deadline(), std::nullopt) << "a repeat begins no new chord";
  EXPECT_EQ(release("b", at(1)), actions(suppress()));
  EXPECT_EQ(release("a", at(1)), actions(suppress()));
}

TEST_F(TapProcessorTest, firesAChordAgainAfterItsRelease) {
  bindChord({"a", "b"}, "out");
  for (const double start : {0.0, 1.0, 2.0}) {
    EXPECT_EQ(press("b", at(start)), actions(suppress()));
    EXPECT_EQ(press("a", at(start)), actions(suppress(), postTapOf("out")));
    EXPECT_EQ(release("a", at(start)), actions(suppress()));
    EXPECT_EQ(release("b", at(start)), actions(suppress()));
  }
}

TEST_F(TapProcessorTest, doesNotCountAMemberThatHasFiredTowardsTheNextChord) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  press("b", at(0));
  release("b", at(0.1));
  EXPECT_EQ(press("b", at(0.2)), actions(suppress())) << "held, for a has had its turn";
  EXPECT_EQ(press("a", at(0.3)), actions(suppress())) << "auto-repeat";
  EXPECT_EQ(deadline(), 0.2 + window);
  EXPECT_EQ(flush(at(0.7)), actions(replay({pressed("b")})));
}

TEST_F(TapProcessorTest, silencesEachNameUntilItsOwnNextReleaseOnly) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  press("b", at(0));
  EXPECT_EQ(release("a", at(0.1)), actions(suppress()));
  EXPECT_EQ(release("a", at(0.2)), actions(pass()));
  EXPECT_EQ(release("b", at(0.3)), actions(suppress()));
  EXPECT_EQ(release("b", at(0.4)), actions(pass()));
}

TEST_F(TapProcessorTest, triesChordsInTheirOrder) {
  bindChord({"a", "c"}, "first");
  bindChord({"b", "c"}, "second");
  press("a", at(0));
  press("b", at(0));
  EXPECT_EQ(press("c", at(0)), actions(suppress(), postTapOf("first")));
}

TEST_F(TapProcessorTest, triesChordsInTheirOrderAndNotByTheNamesOfTheirMembers) {
  bindChord({"b", "c"}, "first");
  bindChord({"a", "c"}, "second");
  press("a", at(0));
  press("b", at(0));
  EXPECT_EQ(press("c", at(0)), actions(suppress(), postTapOf("first")));
}

TEST_F(TapProcessorTest, firesTheShorterChordAsSoonAsItIsComplete) {
  bindChord({"a", "b", "c"}, "long");
  bindChord({"a", "b"}, "short");
  press("a", at(0));
  EXPECT_EQ(press("b", at(0)), actions(suppress(), postTapOf("short")));
  EXPECT_EQ(press("c", at(0)), actions(suppress())) << "held alone";
}

TEST_F(TapProcessorTest, firesTheEarlierOfTwoChordsThatOneDownCompletes) {
  bindChord({"a", "b", "c"}, "long");
  bindChord({"a", "c"}, "short");
  press("a", at(0));
  press("b", at(0));
  EXPECT_EQ(press("c", at(0)), actions(suppress(), postTapOf("long")));
}

TEST_F(TapProcessorTest, neverFiresTheSecondChordOfTheSameMembers) {
  bindChord({"a", "b"}, "first");
  bindChord({"b", "a"}, "second");
  for (int i = 0; i < 3; ++i) {
    press("b", at(i));
    EXPECT_EQ(press("a", at(i)), actions(suppress(), postTapOf("first")));
    release("a", at(i));
    release("b", at(i));
  }
}

TEST_F(TapProcessorTest, dropsEveryHeldEventWhenAChordCompletes) {
  bindChord({"a", "c"}, "out");
  bindChord({"b", "d"}, "other");
  press("a", at(0));
  press("b", at(0.1));
  press("b", at(0.2));
  EXPECT_EQ(press("c", at(0.3)), actions(suppress(), postTapOf("out")));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(flush(at(5)), actions());
  EXPECT_EQ(press("d", at(5)), actions(suppress())) << "b is held no more";
  EXPECT_EQ(flush(at(6)), actions(replay({pressed("d")})));
  EXPECT_EQ(release("b", at(6)), actions(pass())) << "b was no member of the chord that fired";
}

TEST_F(TapProcessorTest, firesAChordOfOneMemberAtOnce) {
  bindChord({"a"}, "out");
  EXPECT_EQ(press("a", at(0)), actions(suppress(), postTapOf("out")));
  EXPECT_EQ(release("a", at(0)), actions(suppress()));
}

TEST_F(TapProcessorTest, completesAChordOfMoreMembersThanFitInline) {
  bindChord({"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l"}, "out");
  for (int round = 0; round < 3; ++round) {
    const auto names = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k"};
    for (const char* name : names)
      EXPECT_EQ(press(name, at(round)), actions(suppress()));
    EXPECT_EQ(press("l", at(round)), actions(suppress(), postTapOf("out")));
    for (const char* name : names)
      EXPECT_EQ(release(name, at(round)), actions(suppress()));
    EXPECT_EQ(release("l", at(round)), actions(suppress()));
    EXPECT_EQ(release("l", at(round)), actions(pass()));
  }
}

TEST_F(TapProcessorTest, takesMediaKeysAndMouseButtonsLikeKeys) {
  bindChord({"mute", "button3"}, "out");
  EXPECT_EQ(send(Kind::consumerDown, "mute", at(0)), actions(suppress()));
  EXPECT_EQ(send(Kind::pointingDown, "button3", at(0)), actions(suppress(), postTapOf("out")));
  EXPECT_EQ(send(Kind::consumerUp, "mute", at(0)), actions(suppress()));
  EXPECT_EQ(send(Kind::pointingUp, "button3", at(0)), actions(suppress()));

  bindSingle("volume_increment", "louder");
  EXPECT_EQ(send(Kind::consumerDown, "volume_increment", at(1)),
            actions(suppress(), postTapOf("louder")));
  EXPECT_EQ(send(Kind::consumerUp, "volume_increment", at(1)), actions(suppress()));
}

TEST_F(TapProcessorTest, replaysEventsWithTheirOwnKind) {
  bindChord({"mute", "button3", "a"}, "out");
  send(Kind::consumerDown, "mute", at(0));
  send(Kind::pointingDown, "button3", at(0));
  EXPECT_EQ(send(Kind::consumerUp, "mute", at(0.1)),
            actions(suppress(), replay({{sender, Kind::consumerDown, KeyName("mute")},
                                        {sender, Kind::pointingDown, KeyName("button3")},
                                        {sender, Kind::consumerUp, KeyName("mute")}})));
}

// The chord window

TEST_F(TapProcessorTest, replaysAMemberThatIsHeldAloneForTheChordWindow) {
  bindChord({"left_control", "f"}, "out");
  EXPECT_EQ(press("left_control", at(0)), actions(suppress()));
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(flush(at(0.5)), actions(replay({pressed("left_control")})));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(release("left_control", at(0.8)), actions(pass()));
}

TEST_F(TapProcessorTest, replaysNothingBeforeTheDeadline) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  EXPECT_EQ(flush(at(0)), actions());
  EXPECT_EQ(flush(at(0.4999)), actions());
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(press("b", at(0.4999)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, replaysEachHeldEventOnce) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  EXPECT_EQ(flush(at(0.7)), actions(replay({pressed("a")})));
  EXPECT_EQ(flush(at(0.7)), actions());
  EXPECT_EQ(flush(at(2)), actions());
  EXPECT_EQ(press("x", at(3)), actions(pass()));
}

TEST_F(TapProcessorTest, runsTheWindowFromTheFirstHeldKey) {
  bindChord({"a", "b", "c"}, "out");
  press("a", at(1));
  press("b", at(1.3));
  press("a", at(1.4));
  EXPECT_EQ(deadline(), 1.5);
  EXPECT_EQ(flush(at(1.5)), actions(replay({pressed("a"), pressed("b"), pressed("a")})));
}

TEST_F(TapProcessorTest, startsANewWindowWithTheNextHold) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  flush(at(0.5));
  press("a", at(0.75));
  EXPECT_EQ(deadline(), 1.25);
  EXPECT_EQ(press("b", at(1)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, takesAMemberExactlyAtTheDeadlineForTooLate) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  EXPECT_EQ(press("b", at(0.5)), actions(replay({pressed("a")}), suppress()));
  EXPECT_EQ(deadline(), 1) << "and it begins a window of its own";
  EXPECT_EQ(press("a", at(0.9)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, holdsARepeatedDownOfAHeldMemberToo) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  EXPECT_EQ(press("a", at(0.25)), actions(suppress()));
  EXPECT_EQ(press("a", at(0.375)), actions(suppress()));
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(flush(at(0.5)), actions(replay({pressed("a"), pressed("a"), pressed("a")})));
}

TEST_F(TapProcessorTest, countsARepeatedDownOnceTowardsAChord) {
  bindChord({"a", "b", "c"}, "out");
  press("a", at(0));
  press("a", at(0));
  EXPECT_EQ(press("a", at(0)), actions(suppress()));
  press("b", at(0));
  EXPECT_EQ(press("c", at(0)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, replaysMoreHeldEventsThanFitInline) {
  bindChord({"a", "b"}, "out");
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 20; ++i)
      press("a", at(round));
    const Actions result = press("x", at(round));
    ASSERT_EQ(result.size(), 2U);
    std::vector<TapEvent> expected(20, pressed("a"));
    expected.push_back(pressed("x"));
    const auto& events = std::get<TapAction::Replay>(result[1].value).events;
    EXPECT_EQ(std::vector(events.begin(), events.end()), expected);
  }
}

TEST_F(TapProcessorTest, holdsForNoTimeWithoutAWindow) {
  TapProcessor impatient{Seconds(0)};
  bindChord({"a", "b"}, "out");
  impatient.setTable(table);
  impatient.setSenders({{sender, pad}});
  EXPECT_EQ(taken(impatient.process(pressed("a"), at(1))), actions(suppress()));
  EXPECT_EQ(impatient.nextDeadline(), at(1));
  EXPECT_EQ(taken(impatient.process(pressed("b"), at(1))),
            actions(replay({pressed("a")}), suppress()));
}

// An overdue hold that nobody has flushed

TEST_F(TapProcessorTest, replaysAnOverdueHoldBeforeWhatTheNextDownDoes) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  swallow("w");
  normalize("right_shift", "left_shift");
  const TapAction overdue = replay({pressed("a")});

  press("a", at(0));
  EXPECT_EQ(press("x", at(1)), actions(overdue, pass()));
  press("a", at(2));
  EXPECT_EQ(press("s", at(3)), actions(overdue, suppress(), postTapOf("single")));
  press("a", at(4));
  EXPECT_EQ(press("w", at(5)), actions(overdue, suppress()));
  press("a", at(6));
  EXPECT_EQ(press("right_shift", at(7)), actions(overdue, rewrite("left_shift")));
  press("a", at(8));
  EXPECT_EQ(press("s", at(9)), actions(overdue, suppress())) << "auto-repeat";
  press("a", at(10));
  EXPECT_EQ(press("a", at(11)), actions(overdue, suppress())) << "held anew";
  EXPECT_EQ(deadline(), 11.5);
}

TEST_F(TapProcessorTest, replaysAnOverdueHoldBeforeWhatTheNextUpDoes) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  normalize("right_shift", "left_shift");
  const TapAction overdue = replay({pressed("a")});

  press("a", at(0));
  EXPECT_EQ(release("a", at(1)), actions(overdue, pass()));
  press("s", at(2));
  press("a", at(2));
  EXPECT_EQ(release("s", at(3)), actions(overdue, suppress()));
  press("a", at(4));
  EXPECT_EQ(release("s", at(5)), actions(overdue, suppress())) << "a single that did not act";
  press("a", at(6));
  EXPECT_EQ(release("right_shift", at(7)), actions(overdue, rewrite("left_shift")));
  EXPECT_EQ(deadline(), std::nullopt);
}

TEST_F(TapProcessorTest, replaysAnOverdueHoldBeforeAnotherChordFires) {
  bindChord({"a", "b"}, "out");
  bindChord({"c"}, "one");
  press("a", at(0));
  EXPECT_EQ(press("c", at(0.5)), actions(replay({pressed("a")}), suppress(), postTapOf("one")));
}

TEST_F(TapProcessorTest, leavesOverdueHoldsOfOtherSendersToFlush) {
  bindChord({"a", "b"}, "out");
  bindSingle("a", "x", otherPad);
  press("a", at(0));
  EXPECT_EQ(press("k", at(1), otherSender), actions(pass()));
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(flush(at(1)), actions(replay({pressed("a")})));
}

// A hold that another event ends

TEST_F(TapProcessorTest, replaysAMemberThatIsLetGoBeforeItsChordIsComplete) {
  bindChord({"left_control", "f"}, "out");
  press("left_control", at(0));
  EXPECT_EQ(release("left_control", at(0.2)),
            actions(suppress(), replay({pressed("left_control"), released("left_control")})));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(press("f", at(0.3)), actions(suppress())) << "the chord begins anew";
}

TEST_F(TapProcessorTest, replaysTheWholeHoldWhenAnyOfItsMembersIsLetGo) {
  bindChord({"a", "b", "c"}, "out");
  press("a", at(0));
  press("b", at(0.1));
  EXPECT_EQ(release("b", at(0.2)),
            actions(suppress(), replay({pressed("a"), pressed("b"), released("b")})));
  EXPECT_EQ(release("a", at(0.3)), actions(pass()));
}

TEST_F(TapProcessorTest, replaysTheHoldBeforeAKeyThatIsNotBound) {
  bindChord({"left_control", "f"}, "out");
  press("left_control", at(0));
  EXPECT_EQ(press("x", at(0.1)),
            actions(suppress(), replay({pressed("left_control"), pressed("x")})));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(release("x", at(0.2)), actions(pass()));
  EXPECT_EQ(release("left_control", at(0.3)), actions(pass()));
}

TEST_F(TapProcessorTest, replaysTheHoldBeforeASingleFires) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  press("a", at(0));
  EXPECT_EQ(press("s", at(0.1)), actions(suppress(), replay({pressed("a")}), postTapOf("single")));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(press("s", at(0.2)), actions(suppress()));
  EXPECT_EQ(release("a", at(0.3)), actions(pass()));
  EXPECT_EQ(release("s", at(0.3)), actions(suppress()));
}

TEST_F(TapProcessorTest, replaysTheHoldBeforeASwallowedKey) {
  bindChord({"a", "b"}, "out");
  swallow("w");
  press("a", at(0));
  EXPECT_EQ(press("w", at(0.1)), actions(suppress(), replay({pressed("a")})));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(release("w", at(0.2)), actions(suppress()));
}

TEST_F(TapProcessorTest, rewritesANormalizedKeyAndThenReplaysTheHold) {
  bindChord({"a", "b"}, "out");
  normalize("right_command", "left_command");
  press("a", at(0));
  EXPECT_EQ(press("right_command", at(0.1)),
            actions(rewrite("left_command"), replay({pressed("a")})));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(release("right_command", at(0.2)), actions(rewrite("left_command")));
}

TEST_F(TapProcessorTest, keepsTheHoldWhenAnotherKeyIsReleased) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  normalize("right_shift", "left_shift");
  press("s", at(0));
  press("a", at(0));
  EXPECT_EQ(release("x", at(0.1)), actions(pass()));
  EXPECT_EQ(release("s", at(0.1)), actions(suppress()));
  EXPECT_EQ(release("s", at(0.1)), actions(suppress()));
  EXPECT_EQ(release("right_shift", at(0.1)), actions(rewrite("left_shift")));
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(press("b", at(0.2)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, keepsTheHoldDuringTheAutoRepeatOfAKeyThatHasActed) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  press("s", at(0));
  press("a", at(0.1));
  EXPECT_EQ(press("s", at(0.2)), actions(suppress()));
  EXPECT_EQ(deadline(), 0.1 + window);
  EXPECT_EQ(press("b", at(0.3)), actions(suppress(), postTapOf("out")));
}

// Singles, swallowed and normalised keys

TEST_F(TapProcessorTest, firesASingleOnItsDownAndStaysSilentUntilItsRelease) {
  bindSingle("a", "out");
  for (const double start : {0.0, 2.0}) {
    EXPECT_EQ(press("a", at(start)), actions(suppress(), postTapOf("out")));
    EXPECT_EQ(press("a", at(start + 0.4)), actions(suppress()));
    EXPECT_EQ(press("a", at(start + 0.5)), actions(suppress()));
    EXPECT_EQ(release("a", at(start + 1)), actions(suppress()));
  }
  EXPECT_EQ(deadline(), std::nullopt);
}

TEST_F(TapProcessorTest, suppressesTheReleaseOfASingleThatWasPressedUnseen) {
  bindSingle("a", "out");
  swallow("w");
  EXPECT_EQ(release("a", at(0)), actions(suppress()));
  EXPECT_EQ(release("w", at(0)), actions(suppress()));
}

TEST_F(TapProcessorTest, swallowsPressRepeatAndRelease) {
  swallow("w");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(press("w", at(i)), actions(suppress()));
    EXPECT_EQ(press("w", at(i)), actions(suppress()));
    EXPECT_EQ(release("w", at(i)), actions(suppress()));
  }
}

TEST_F(TapProcessorTest, rewritesANormalizedKeyOnEveryDownAndUp) {
  normalize("right_command", "left_command");
  EXPECT_EQ(press("right_command", at(0)), actions(rewrite("left_command")));
  EXPECT_EQ(press("right_command", at(1)), actions(rewrite("left_command")));
  EXPECT_EQ(release("right_command", at(2)), actions(rewrite("left_command")));
  EXPECT_EQ(release("right_command", at(3)), actions(rewrite("left_command")));
  EXPECT_EQ(press("left_command", at(4)), actions(pass()));
}

TEST_F(TapProcessorTest, prefersASingleToANormalization) {
  bindSingle("right_command", "out");
  normalize("right_command", "left_command");
  EXPECT_EQ(press("right_command", at(0)), actions(suppress(), postTapOf("out")));
  EXPECT_EQ(release("right_command", at(0)), actions(suppress()));
  EXPECT_EQ(release("right_command", at(0)), actions(suppress()));
}

TEST_F(TapProcessorTest, prefersAChordToASingle) {
  bindChord({"a", "b"}, "chord");
  bindSingle("a", "single");
  EXPECT_EQ(press("a", at(0)), actions(suppress()));
  EXPECT_EQ(press("b", at(0.1)), actions(suppress(), postTapOf("chord")));
  release("a", at(0.2));
  release("b", at(0.2));
  EXPECT_EQ(press("a", at(1)), actions(suppress()));
  EXPECT_EQ(flush(at(1.5)), actions(replay({pressed("a")}))) << "the single never fires";
  EXPECT_EQ(release("a", at(1.6)), actions(suppress())) << "its release is still a single's";
}

TEST_F(TapProcessorTest, prefersAChordToANormalization) {
  bindChord({"right_shift", "b"}, "chord");
  normalize("right_shift", "left_shift");
  EXPECT_EQ(press("right_shift", at(0)), actions(suppress()));
  EXPECT_EQ(release("right_shift", at(0.1)),
            actions(suppress(), replay({pressed("right_shift"), released("right_shift")})));
  EXPECT_EQ(release("right_shift", at(0.2)), actions(rewrite("left_shift")));
}

TEST_F(TapProcessorTest, passesWhatIsNotBound) {
  bindSingle("a", "out");
  for (const Kind kind : TapEvent::allKinds)
    EXPECT_EQ(send(kind, "x", at(0)), actions(pass()));
}

// Senders, pauses and tables

TEST_F(TapProcessorTest, passesEventsOfUnknownSenders) {
  bindSingle("a", "out");
  EXPECT_EQ(press("a", at(0), stranger), actions(pass()));
  EXPECT_EQ(release("a", at(0), stranger), actions(pass()));
  EXPECT_EQ(press("a", at(0), 0), actions(pass()));
}

TEST_F(TapProcessorTest, passesEverythingWithoutATable) {
  EXPECT_EQ(processor.table(), MappingTable::empty);
  EXPECT_EQ(press("a", at(0)), actions(pass()));
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(flush(at(1)), actions());
}

TEST_F(TapProcessorTest, passesEventsOfDevicesWithoutBindings) {
  bindSingle("a", "out");
  EXPECT_EQ(press("a", at(0), otherSender), actions(pass()));
}

TEST_F(TapProcessorTest, keepsTheStateOfEachSenderApart) {
  processor.setSenders({{sender, pad}, {otherSender, pad}});
  bindChord({"a", "b"}, "out");
  EXPECT_EQ(press("a", at(0)), actions(suppress()));
  EXPECT_EQ(press("b", at(0.1), otherSender), actions(suppress())) << "on the other pad";
  EXPECT_EQ(press("x", at(0.2), otherSender),
            actions(suppress(), replay({down("b", otherSender), down("x", otherSender)})));
  EXPECT_EQ(press("b", at(0.3)), actions(suppress(), postTapOf("out")));
  EXPECT_EQ(release("b", at(0.4), otherSender), actions(pass()));
  EXPECT_EQ(release("b", at(0.4)), actions(suppress()));
}

TEST_F(TapProcessorTest, appliesTheBindingsOfTheSendersOwnDevice) {
  bindSingle("a", "one");
  bindSingle("a", "two", otherPad);
  EXPECT_EQ(press("a", at(0)), actions(suppress(), postTapOf("one")));
  EXPECT_EQ(press("a", at(0), otherSender), actions(suppress(), postTapOf("two")));
}

TEST_F(TapProcessorTest, tellsTheEarliestDeadlineOfAllSenders) {
  processor.setSenders({{sender, pad}, {otherSender, pad}, {3, pad}});
  bindChord({"a", "b"}, "out");
  press("a", at(2));
  EXPECT_EQ(deadline(), 2.5);
  press("a", at(1), 3);
  EXPECT_EQ(deadline(), 1.5);
  press("a", at(1.25), otherSender);
  EXPECT_EQ(deadline(), 1.5);
  release("a", at(1.25), 3);
  EXPECT_EQ(deadline(), 1.75);
  flush(at(1.75));
  EXPECT_EQ(deadline(), 2.5);
}

TEST_F(TapProcessorTest, flushesTheSendersThatAreDueInAscendingOrder) {
  processor.setSenders({{30, pad}, {-5, pad}, {0, pad}, {7, pad}, {12, pad}, {1, pad}});
  bindChord({"a", "b"}, "out");
  for (const std::int64_t each : {7, 30, -5, 1, 0})
    press("a", at(0), each);
  press("a", at(0.25), 12);
  EXPECT_EQ(flush(at(0.5)),
            actions(replay({down("a", -5)}), replay({down("a", 0)}), replay({down("a", 1)}),
                    replay({down("a", 7)}), replay({down("a", 30)})));
  EXPECT_EQ(deadline(), 0.75);
  EXPECT_EQ(flush(at(0.75)), actions(replay({down("a", 12)})));
}

TEST_F(TapProcessorTest, passesEventsOfPausedDevices) {
  bindSingle("a", "out");
  bindSingle("a", "other", otherPad);
  processor.setPaused({pad});
  EXPECT_EQ(press("a", at(0)), actions(pass()));
  EXPECT_EQ(press("a", at(0), otherSender), actions(suppress(), postTapOf("other")));
  processor.setPaused({});
  EXPECT_EQ(press("a", at(1)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, stillReplaysAtTheDeadlineWhatAPausedDeviceHeld) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  processor.setPaused({pad});
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(press("b", at(0.1)), actions(pass()));
  EXPECT_EQ(release("a", at(0.2)), actions(pass())) << "and the hold is not touched";
  EXPECT_EQ(press("x", at(0.9)), actions(pass())) << "not even when it is overdue";
  EXPECT_EQ(flush(at(0.9)), actions(replay({pressed("a")})));
  EXPECT_EQ(deadline(), std::nullopt);
}

TEST_F(TapProcessorTest, takesUpTheStateOfADeviceAfterItsPause) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  press("s", at(0));
  press("a", at(0));
  processor.setPaused({pad, otherPad});
  processor.setPaused({otherPad});
  EXPECT_EQ(press("s", at(0.1)), actions(suppress())) << "still pressed from before";
  EXPECT_EQ(press("b", at(0.2)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, dropsWhatIsHeldWhenTheTableIsReplaced) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  processor.setTable(table);
  EXPECT_EQ(deadline(), std::nullopt);
  EXPECT_EQ(flush(at(1)), actions());
  EXPECT_EQ(press("b", at(1)), actions(suppress())) << "a is not held any more";
  EXPECT_EQ(flush(at(2)), actions(replay({pressed("b")})));
}

TEST_F(TapProcessorTest, forgetsWhichKeysHaveActedWhenTheTableIsReplaced) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  press("s", at(0));
  press("a", at(0));
  press("b", at(0));
  processor.setTable(table);
  EXPECT_EQ(press("s", at(0)), actions(suppress(), postTapOf("single")));
  EXPECT_EQ(release("a", at(0)), actions(pass()));
}

TEST_F(TapProcessorTest, followsTheNewTable) {
  bindSingle("a", "out");
  EXPECT_EQ(processor.table(), table);
  processor.setTable(MappingTable::empty);
  EXPECT_EQ(press("a", at(0)), actions(pass()));
  EXPECT_EQ(processor.table(), MappingTable::empty);

  MappingTable other;
  other.identities[otherPad].singles.emplace(KeyName("a"), SingleAction{SingleAction::Swallow{}});
  processor.setTable(other);
  EXPECT_EQ(press("a", at(0)), actions(pass()));
  EXPECT_EQ(press("a", at(0), otherSender), actions(suppress()));
  processor.setTable(table);
  EXPECT_EQ(press("a", at(0)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, canBeGivenItsOwnTableAndSendersAgain) {
  bindChord({"a", "b"}, "out");
  processor.setTable(processor.table());
  processor.setSenders(processor.senders());
  processor.setPaused(processor.paused());
  press("a", at(0));
  EXPECT_EQ(press("b", at(0)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, outlivesTheTableThatItWasGiven) {
  {
    MappingTable shortLived;
    MappingTable::ChordTrigger trigger{{KeyName("a"), KeyName("b")}, CompiledOutput(tapOf("out"))};
    shortLived.identities[pad].chords.push_back(trigger);
    processor.setTable(std::move(shortLived));
  }
  press("a", at(0));
  EXPECT_EQ(press("b", at(0)), actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, keepsAPostedOutputAliveWhenTheTableIsReplaced) {
  bindSingle("a", "out");
  const Actions result = press("a", at(0));
  table = {};
  processor.setTable({});
  EXPECT_EQ(result, actions(suppress(), postTapOf("out")));
}

TEST_F(TapProcessorTest, stillReplaysAtTheDeadlineWhatASenderHeldThatIsGone) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  processor.setSenders({{otherSender, pad}});
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(release("a", at(0.1)), actions(pass()));
  EXPECT_EQ(press("b", at(0.1), otherSender), actions(suppress())) << "a stranger to that hold";
  EXPECT_EQ(flush(at(0.5)), actions(replay({pressed("a")})));
  EXPECT_EQ(deadline(), 0.6);
}

TEST_F(TapProcessorTest, takesUpTheStateOfASenderThatReturns) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  press("s", at(0));
  press("a", at(0));
  processor.setSenders({});
  EXPECT_EQ(press("b", at(0.1)), actions(pass()));
  processor.setSenders({{sender, pad}});
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(press("s", at(0.2)), actions(suppress())) << "has acted and was never released";
  EXPECT_EQ(press("b", at(0.3)), actions(suppress(), postTapOf("out")));
  processor.setSenders({});
  processor.setSenders({{sender, pad}});
  EXPECT_EQ(release("a", at(0.4)), actions(suppress()));
  EXPECT_EQ(release("b", at(0.4)), actions(suppress()));
  EXPECT_EQ(release("b", at(0.4)), actions(pass()));
}

TEST_F(TapProcessorTest, keepsTheHoldOfASenderThatChangesItsDevice) {
  bindChord({"a", "b"}, "one");
  bindChord({"a", "c"}, "two", otherPad);
  press("a", at(0));
  processor.setSenders({{sender, otherPad}});
  EXPECT_EQ(deadline(), 0.5);
  EXPECT_EQ(press("c", at(0.1)), actions(suppress(), postTapOf("two")));
  EXPECT_EQ(release("a", at(0.2)), actions(suppress()));
}

TEST_F(TapProcessorTest, judgesLaterEventsByTheBindingsOfTheNewDevice) {
  bindChord({"a", "b"}, "one");
  bindSingle("k", "two", otherPad);
  press("a", at(0));
  processor.setSenders({{sender, otherPad}});
  EXPECT_EQ(press("b", at(0.1)), actions(suppress(), replay({pressed("a"), pressed("b")})));
  processor.setSenders({{sender, pad}});
  press("a", at(1));
  processor.setSenders({{sender, otherPad}});
  EXPECT_EQ(press("k", at(1.1)), actions(suppress(), replay({pressed("a")}), postTapOf("two")));
}

TEST_F(TapProcessorTest, stillReplaysTheHoldOfASenderWhoseNewDeviceHasNoBindings) {
  bindChord({"a", "b"}, "out");
  press("a", at(0));
  processor.setSenders({{sender, otherPad}});
  EXPECT_EQ(press("b", at(0.1)), actions(pass()));
  EXPECT_EQ(release("a", at(0.2)), actions(pass()));
  EXPECT_EQ(flush(at(0.5)), actions(replay({pressed("a")})));
}

TEST_F(TapProcessorTest, tellsWhatItWasGiven) {
  EXPECT_EQ(TapProcessor(Seconds(0.25)).chordWindow(), Seconds(0.25));
  EXPECT_EQ(processor.chordWindow(), Seconds(window));
  EXPECT_EQ(processor.senders(), (TapProcessor::Senders{{sender, pad}, {otherSender, otherPad}}));
  EXPECT_TRUE(processor.paused().empty());
  processor.setPaused({pad});
  EXPECT_EQ(processor.paused(), TapProcessor::PausedDevices{pad});
}

TEST_F(TapProcessorTest, sharesTheListsThatOnlyPassOrOnlySuppress) {
  bindChord({"a", "b"}, "out");
  bindSingle("s", "single");
  TapProcessor other{Seconds(window)};
  const TapEvent strange = down("a", stranger);
  const TapActions* const passed = &other.process(strange, at(0));
  EXPECT_EQ(&processor.process(strange, at(0)), passed);
  EXPECT_EQ(&processor.process(pressed("x"), at(0)), passed);
  EXPECT_EQ(&processor.process(released("x"), at(0)), passed);

  press("s", at(0));
  const TapActions* const suppressed = &processor.process(pressed("s"), at(0));
  EXPECT_NE(suppressed, passed);
  EXPECT_EQ(&processor.process(released("s"), at(0)), suppressed);
  EXPECT_EQ(&processor.process(pressed("a"), at(0)), suppressed);
}

} // namespace
} // namespace trellivar
