#include "core/recording_classifier.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

namespace {

using Phase = KeyEvent::Phase;

/// The names of the modifier keys in canonical order, typed out apart from the program's table.
const std::vector<std::pair<std::string_view, Modifier>> agreedModifiers{
    {"left_command", Modifier::command},       {"left_shift", Modifier::shift},
    {"left_control", Modifier::control},       {"left_option", Modifier::option},
    {"right_command", Modifier::rightCommand}, {"right_shift", Modifier::rightShift},
    {"right_control", Modifier::rightControl}, {"right_option", Modifier::rightOption},
};

bool looksLikeModifier(std::string_view name) {
  return std::ranges::any_of(agreedModifiers, [&](const auto& row) { return row.first == name; });
}

Key plain(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }

/// A recording in the making; each event comes one second after the one before.
class Recording {
public:
  Recording& press(std::string_view name, Key::Kind kind = Key::Kind::keyCode) {
    return add(name, kind, Phase::down);
  }
  Recording& release(std::string_view name, Key::Kind kind = Key::Kind::keyCode) {
    return add(name, kind, Phase::up);
  }
  Recording& tap(std::string_view name) { return press(name).release(name); }

  std::optional<Output> meaning() const { return RecordingClassifier::classify(events); }

  std::vector<KeyEvent> events;

private:
  Recording& add(std::string_view name, Key::Kind kind, Phase phase) {
    events.push_back({{KeyName(name), kind},
                      phase,
                      static_cast<double>(events.size()),
                      looksLikeModifier(name)});
    return *this;
  }
};

std::optional<Output> chord(std::vector<Modifier> modifiers, const Key& key) {
  return Output{Output::Chord{std::move(modifiers), key}};
}

std::optional<Output> sequence(std::initializer_list<std::string_view> names) {
  std::vector<Key> keys;
  for (const std::string_view name : names)
    keys.push_back(plain(name));
  return Output{Output::Sequence{keys}};
}

std::optional<Output> modifiersOnly(std::vector<Modifier> modifiers) {
  return Output{Output::Modifiers{std::move(modifiers)}};
}

TEST(RecordingClassifier, makesNothingOfAnEmptyRecording) {
  EXPECT_EQ(Recording().meaning(), std::nullopt);
}

TEST(RecordingClassifier, makesNothingOfReleasesAlone) {
  EXPECT_EQ(Recording().release("a").meaning(), std::nullopt);
  EXPECT_EQ(Recording().release("left_shift").release("a").release("b").meaning(), std::nullopt);
}

TEST(RecordingClassifier, takesAKeyUnderAModifierAsAChord) {
  EXPECT_EQ(Recording().press("left_shift").tap("a").release("left_shift").meaning(),
            chord({Modifier::shift}, plain("a")));
}

TEST(RecordingClassifier, listsTheModifiersOfAChordInCanonicalOrderWhateverThePressOrder) {
  EXPECT_EQ(Recording().press("right_option").press("left_command").tap("k").meaning(),
            chord({Modifier::command, Modifier::rightOption}, plain("k")));
  EXPECT_EQ(Recording().press("left_option").press("left_control").press("f").meaning(),
            chord({Modifier::control, Modifier::option}, plain("f")));
}

TEST(RecordingClassifier, takesAModifierThatWasPressedAfterTheKeyAsPartOfTheChord) {
  EXPECT_EQ(Recording().press("a").press("left_shift").release("left_shift").release("a").meaning(),
            chord({Modifier::shift}, plain("a")));
}

TEST(RecordingClassifier, countsAModifierOfAChordOnce) {
  EXPECT_EQ(
      Recording().press("left_shift").release("left_shift").press("left_shift").tap("a").meaning(),
      chord({Modifier::shift}, plain("a")));
}

TEST(RecordingClassifier, takesModifiersAloneAsModifiers) {
  EXPECT_EQ(Recording().tap("left_shift").meaning(), modifiersOnly({Modifier::shift}));
  EXPECT_EQ(Recording().press("left_shift").press("right_shift").meaning(),
            modifiersOnly({Modifier::shift, Modifier::rightShift}));
  EXPECT_EQ(Recording().press("right_shift").press("left_shift").meaning(),
            modifiersOnly({Modifier::shift, Modifier::rightShift}));
}

TEST(RecordingClassifier, takesModifiersOneAfterTheOtherAsModifiersToo) {
  EXPECT_EQ(Recording().tap("left_option").tap("left_command").tap("left_option").meaning(),
            modifiersOnly({Modifier::command, Modifier::option}));
}

TEST(RecordingClassifier, knowsAllEightModifiers) {
  Recording together;
  std::vector<Modifier> all;
  for (const auto& [name, modifier] : agreedModifiers) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Recording().tap(name).meaning(), modifiersOnly({modifier}));
    EXPECT_EQ(Recording().press(name).tap("a").release(name).meaning(),
              chord({modifier}, plain("a")));
    all.push_back(modifier);
  }
  for (auto row = agreedModifiers.rbegin(); row != agreedModifiers.rend(); ++row)
    together.press(row->first);
  EXPECT_EQ(together.meaning(), modifiersOnly(all));
  EXPECT_EQ(together.tap("x").meaning(), chord(all, plain("x")));
}

KeyEvent pressOf(std::string_view name, bool isModifier, double timestamp) {
  return {plain(name), Phase::down, timestamp, isModifier};
}

TEST(RecordingClassifier, makesNothingOfModifierKeysWithoutAName) {
  const KeyEvent events[] = {pressOf("caps_lock", true, 0), pressOf("fn", true, 1)};
  EXPECT_EQ(RecordingClassifier::classify(events), std::nullopt);
}

TEST(RecordingClassifier, dropsUnknownModifiersBesideKnownOnes) {
  const KeyEvent alone[] = {pressOf("fn", true, 0), pressOf("left_shift", true, 1)};
  EXPECT_EQ(RecordingClassifier::classify(alone), modifiersOnly({Modifier::shift}));
  const KeyEvent chorded[] = {pressOf("fn", true, 0), pressOf("a", false, 1)};
  EXPECT_EQ(RecordingClassifier::classify(chorded), chord({}, plain("a")));
}

TEST(RecordingClassifier, believesTheMarkOfAModifierNotItsName) {
  const KeyEvent alone[] = {pressOf("left_shift", false, 0)};
  EXPECT_EQ(RecordingClassifier::classify(alone), sequence({"left_shift"}));
  const KeyEvent chorded[] = {pressOf("left_shift", false, 0), pressOf("left_option", true, 1)};
  EXPECT_EQ(RecordingClassifier::classify(chorded), chord({Modifier::option}, plain("left_shift")));
}

TEST(RecordingClassifier, takesKeysOneAfterTheOtherAsASequence) {
  EXPECT_EQ(Recording().tap("a").meaning(), sequence({"a"}));
  EXPECT_EQ(Recording().tap("a").tap("b").meaning(), sequence({"a", "b"}));
}

TEST(RecordingClassifier, keepsRepeatsOfASequence) {
  EXPECT_EQ(Recording().tap("a").tap("b").tap("a").tap("a").meaning(),
            sequence({"a", "b", "a", "a"}));
}

TEST(RecordingClassifier, keepsModifiersThatWereTappedWithinASequence) {
  EXPECT_EQ(Recording().tap("left_shift").tap("a").tap("right_option").meaning(),
            sequence({"left_shift", "a", "right_option"}));
}

TEST(RecordingClassifier, keepsTheKindsOfASequencesKeys) {
  const auto meaning = Recording()
                           .press("mute", Key::Kind::consumerKeyCode)
                           .release("mute", Key::Kind::consumerKeyCode)
                           .press("button1", Key::Kind::pointingButton)
                           .meaning();
  EXPECT_EQ(meaning, (Output{Output::Sequence{{{KeyName("mute"), Key::Kind::consumerKeyCode},
                                               {KeyName("button1"), Key::Kind::pointingButton}}}}));
}

TEST(RecordingClassifier, takesARollOverOfTwoKeysAsASequenceNeverAsAChord) {
  EXPECT_EQ(Recording().press("a").press("b").release("a").release("b").meaning(),
            sequence({"a", "b"}));
}

TEST(RecordingClassifier, keepsModifiersAndRepeatsOfARollOver) {
  EXPECT_EQ(Recording().press("left_shift").press("b").press("a").press("b").meaning(),
            sequence({"left_shift", "b", "a", "b"}));
}

TEST(RecordingClassifier, takesAKeyPressedAgainWhileHeldAsAChordWithoutModifiers) {
  EXPECT_EQ(Recording().press("a").press("a").release("a").meaning(), chord({}, plain("a")));
}

TEST(RecordingClassifier, takesTheSameNameOfAnotherKindAsAnotherKey) {
  const auto meaning =
      Recording().press("mute").press("mute", Key::Kind::consumerKeyCode).meaning();
  EXPECT_EQ(
      meaning,
      (Output{Output::Sequence{{plain("mute"), {KeyName("mute"), Key::Kind::consumerKeyCode}}}}));
}

TEST(RecordingClassifier, takesAnOverlapAnywhereAsAnOverlapOfTheWhole) {
  EXPECT_EQ(Recording().tap("a").press("left_shift").press("a").meaning(),
            chord({Modifier::shift}, plain("a")));
  EXPECT_EQ(Recording()
                .press("left_shift")
                .press("a")
                .release("left_shift")
                .release("a")
                .tap("a")
                .meaning(),
            chord({Modifier::shift}, plain("a")));
}

TEST(RecordingClassifier, sortsEventsByTheirTime) {
  std::vector<KeyEvent> events =
      Recording().press("left_shift").tap("a").release("left_shift").events;
  std::ranges::reverse(events);
  EXPECT_EQ(RecordingClassifier::classify(events), chord({Modifier::shift}, plain("a")));

  events = Recording().tap("a").tap("b").tap("c").events;
  std::ranges::reverse(events);
  EXPECT_EQ(RecordingClassifier::classify(events), sequence({"a", "b", "c"}));
}

TEST(RecordingClassifier, keepsTheRecordedOrderOfEventsOfTheSameTime) {
  std::vector<KeyEvent> events;
  std::vector<Key> keys;
  for (int i = 0; i < 40; ++i) { // more than a sort does by insertion
    const Key key = plain(std::to_string(i * 7 % 40));
    keys.push_back(key);
    events.push_back({key, Phase::down, 1.0, false});
  }
  EXPECT_EQ(RecordingClassifier::classify(events), (Output{Output::Sequence{keys}}));
}

TEST(RecordingClassifier, ordersByFractionsOfASecondAndBeforeZero) {
  const KeyEvent events[] = {pressOf("c", false, 0.25), pressOf("b", false, 0.125),
                             pressOf("a", false, -3)};
  EXPECT_EQ(RecordingClassifier::classify(events), sequence({"a", "b", "c"}));
}

TEST(RecordingClassifier, doesNotTakeAReleaseFromBeforeTheRecordingForAHeldKey) {
  EXPECT_EQ(Recording().release("x").tap("a").meaning(), sequence({"a"}));
  EXPECT_EQ(Recording().release("x").tap("a").tap("a").meaning(), sequence({"a", "a"}));
}

TEST(RecordingClassifier, countsFromNothingAgainAfterReleasesWithoutAPress) {
  // Two unmatched releases do not hide the overlap that follows ...
  EXPECT_EQ(Recording().release("x").release("y").press("left_shift").press("a").meaning(),
            chord({Modifier::shift}, plain("a")));
  // ... also not in the middle ...
  EXPECT_EQ(Recording()
                .tap("a")
                .release("x")
                .release("y")
                .release("z")
                .press("left_shift")
                .press("a")
                .meaning(),
            chord({Modifier::shift}, plain("a")));
  // ... nor do they make one.
  EXPECT_EQ(Recording().tap("a").release("x").release("y").press("a").meaning(),
            sequence({"a", "a"}));
}

TEST(RecordingClassifier, endsQuietlyWithAReleaseThatHasNoPress) {
  EXPECT_EQ(Recording().tap("a").release("x").meaning(), sequence({"a"}));
  EXPECT_EQ(Recording().press("a").release("a").release("x").release("x").meaning(),
            sequence({"a"}));
}

/// The classification once more, word by word and without a thought for elegance.
std::optional<Output> naiveClassification(const std::vector<KeyEvent>& recorded) {
  std::multimap<double, KeyEvent> sorted; // equal keys keep their order of insertion
  for (const KeyEvent& event : recorded)
    sorted.emplace(event.timestamp, event);

  std::vector<Key> downKeys;
  std::vector<Key> distinctPlain;
  std::vector<std::string> modifierNames;
  bool sawPlain = false;
  for (const auto& [time, event] : sorted) {
    if (event.phase == Phase::up) continue;
    downKeys.push_back(event.key);
    if (event.isModifier) {
      modifierNames.push_back(event.key.keyCode.text());
    } else {
      sawPlain = true;
      if (std::ranges::count(distinctPlain, event.key) == 0) distinctPlain.push_back(event.key);
    }
  }
  if (downKeys.empty()) return std::nullopt;

  std::vector<Modifier> modifiers;
  for (const auto& [name, modifier] : agreedModifiers) {
    if (std::ranges::count(modifierNames, name) > 0) modifiers.push_back(modifier);
  }
  if (!sawPlain) {
    if (modifiers.empty()) return std::nullopt;
    return Output{Output::Modifiers{modifiers}};
  }

  bool overlap = false;
  bool ignoringReleases = false;
  int count = 0;
  for (const auto& [time, event] : sorted) {
    if (event.phase == Phase::down) {
      if (ignoringReleases) {
        ignoringReleases = false;
        count = 0;
      }
      if (count > 0) overlap = true;
      count = count + 1;
    } else if (!ignoringReleases) {
      count = count - 1;
      if (count < 0) ignoringReleases = true;
    }
  }
  if (overlap && distinctPlain.size() == 1)
    return Output{Output::Chord{modifiers, distinctPlain.front()}};
  return Output{Output::Sequence{downKeys}};
}

/// Any number from 0 to `end` - 1, all equally likely in small cases too.
std::size_t below(std::size_t end) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::size_t>(0, end));
}

rc::Gen<KeyEvent> anyEvent(rc::Gen<double> timestamp) {
  return rc::gen::mapcat(rc::gen::element("a", "a", "b", "c", "left_shift", "left_shift",
                                          "right_shift", "left_command", "right_option", "fn", ""),
                         [timestamp](const char* name) {
                           const bool isModifier =
                               looksLikeModifier(name) || std::string_view(name) == "fn";
                           return rc::gen::construct<KeyEvent>(
                               rc::gen::construct<Key>(
                                   rc::gen::just(KeyName(name)),
                                   rc::gen::weightedElement<Key::Kind>(
                                       {{8, Key::Kind::keyCode}, {1, Key::Kind::consumerKeyCode}})),
                               rc::gen::element(Phase::down, Phase::up), timestamp,
                               rc::gen::weightedElement<bool>({{9, isModifier}, {1, !isModifier}}));
                         });
}

rc::Gen<std::vector<KeyEvent>> anyRecording(const rc::Gen<double>& timestamp) {
  return rc::gen::scale(
      0.2, rc::gen::container<std::vector<KeyEvent>>(rc::gen::noShrink(anyEvent(timestamp))));
}

RC_GTEST_PROP(RecordingClassifierProperty, agreesWithAWordByWordClassification, ()) {
  for (int i = 0; i < 30; ++i) {
    const auto events = *anyRecording(rc::gen::element(0.0, 0.5, 1.0, 1.0, 2.0, -1.0, 7.25));
    RC_ASSERT(RecordingClassifier::classify(events) == naiveClassification(events));
  }
}

RC_GTEST_PROP(RecordingClassifierProperty, doesNotDependOnTheOrderInWhichEventsAreHandedOver, ()) {
  std::vector<KeyEvent> events = *anyRecording(rc::gen::just(0.0));
  for (std::size_t i = 0; i < events.size(); ++i)
    events[i].timestamp = static_cast<double>(i) / 8;
  const auto inOrder = RecordingClassifier::classify(events);
  std::vector<KeyEvent> shuffled = events;
  for (std::size_t i = shuffled.size(); i > 1; --i)
    std::swap(shuffled[i - 1], shuffled[below(i)]);
  RC_ASSERT(RecordingClassifier::classify(shuffled) == inOrder);
}

RC_GTEST_PROP(RecordingClassifierProperty, keepsTheOrderAmongEqualTimesHoweverTheTimesAreMixed,
              ()) {
  // Three runs of equal times, each in its own order, dealt out in a random way.
  const auto recorded = *anyRecording(rc::gen::just(0.0));
  std::vector<std::vector<KeyEvent>> runs(3);
  for (const KeyEvent& event : recorded)
    runs[below(runs.size())].push_back(event);
  std::vector<KeyEvent> inOrder;
  for (std::size_t run = 0; run < runs.size(); ++run) {
    for (KeyEvent& event : runs[run]) {
      event.timestamp = static_cast<double>(inOrder.size());
      inOrder.push_back(event);
      event.timestamp = static_cast<double>(run);
    }
  }
  std::vector<KeyEvent> dealt;
  std::vector<std::size_t> next(runs.size(), 0);
  while (dealt.size() < inOrder.size()) {
    const auto run = below(runs.size());
    if (next[run] < runs[run].size()) dealt.push_back(runs[run][next[run]++]);
  }
  RC_ASSERT(RecordingClassifier::classify(dealt) == RecordingClassifier::classify(inOrder));
}

} // namespace
} // namespace trellivar
