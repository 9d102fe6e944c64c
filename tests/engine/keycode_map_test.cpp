#include "core/key_table.h"
#include "engine/keycode_map.h"
#include "tests/engine/macro_words.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using KeycodeMap::FirmwareKey;

/// The firmware's keys, typed out apart from the program's table.
const std::map<std::string, FirmwareKey> agreedKeys{
    {"a", {"A", 65}},
    {"b", {"B", 66}},
    {"c", {"C", 67}},
    {"d", {"D", 68}},
    {"e", {"E", 69}},
    {"f", {"F", 70}},
    {"g", {"G", 71}},
    {"h", {"H", 72}},
    {"i", {"I", 73}},
    {"j", {"J", 74}},
    {"k", {"K", 75}},
    {"l", {"L", 76}},
    {"m", {"M", 77}},
    {"n", {"N", 78}},
    {"o", {"O", 79}},
    {"p", {"P", 80}},
    {"q", {"Q", 81}},
    {"r", {"R", 82}},
    {"s", {"S", 83}},
    {"t", {"T", 84}},
    {"u", {"U", 85}},
    {"v", {"V", 86}},
    {"w", {"W", 87}},
    {"x", {"X", 88}},
    {"y", {"Y", 89}},
    {"z", {"Z", 90}},
    {"0", {"0", 48}},
    {"1", {"1", 49}},
    {"2", {"2", 50}},
    {"3", {"3", 51}},
    {"4", {"4", 52}},
    {"5", {"5", 53}},
    {"6", {"6", 54}},
    {"7", {"7", 55}},
    {"8", {"8", 56}},
    {"9", {"9", 57}},
    {"spacebar", {"Space", 32}},
    {"return_or_enter", {"Enter", 13}},
    {"tab", {"Tab", 9}},
    {"escape", {"Escape", 27}},
    {"delete_or_backspace", {"Backspace", 8}},
    {"left_arrow", {"ArrowLeft", 37}},
    {"up_arrow", {"ArrowUp", 38}},
    {"right_arrow", {"ArrowRight", 39}},
    {"down_arrow", {"ArrowDown", 40}},
};

struct AgreedModifier {
  Modifier modifier;
  FirmwareKey alone;
  FirmwareKey combined;
};

const std::vector<AgreedModifier> agreedModifiers{
    {Modifier::command, {"MetaLeft", 91}, {"Meta", 91}},
    {Modifier::shift, {"ShiftLeft", 160}, {"Shift", 16}},
    {Modifier::control, {"ControlLeft", 162}, {"Control", 17}},
    {Modifier::option, {"AltLeft", 164}, {"Alt", 18}},
    {Modifier::rightCommand, {"MetaRight", 92}, {"Meta", 91}},
    {Modifier::rightShift, {"ShiftRight", 161}, {"Shift", 16}},
    {Modifier::rightControl, {"ControlRight", 163}, {"Control", 17}},
    {Modifier::rightOption, {"AltRight", 165}, {"Alt", 18}},
};

MacroEvent down(const FirmwareKey& key) { return words::down(key.name, key.code); }
MacroEvent up(const FirmwareKey& key) { return words::up(key.name, key.code); }
using words::down;
using words::up;

std::optional<Macro> macroOfChord(std::vector<Modifier> modifiers, const Key& key) {
  return KeycodeMap::macro(Output{Output::Chord{std::move(modifiers), key}});
}
std::optional<Macro> macroOfSequence(std::vector<Key> keys) {
  return KeycodeMap::macro(Output{Output::Sequence{std::move(keys)}});
}
std::optional<Macro> macroOfModifiers(std::vector<Modifier> modifiers) {
  return KeycodeMap::macro(Output{Output::Modifiers{std::move(modifiers)}});
}

// Keys

TEST(FirmwareKeys, areTheAgreedFortyFive) {
  ASSERT_EQ(agreedKeys.size(), 45U);
  for (const auto& [name, firmware] : agreedKeys)
    EXPECT_EQ(KeycodeMap::firmwareKey(key(name)), firmware) << name;
}

TEST(FirmwareKeys, areNoOthersOfTheKeysThatTheSystemKnows) {
  std::set<std::string> found;
  for (const auto& row : keytable::keys) {
    if (KeycodeMap::firmwareKey(key(row.name))) found.emplace(row.name);
  }
  std::set<std::string> agreed;
  for (const auto& [name, firmware] : agreedKeys)
    agreed.insert(name);
  EXPECT_EQ(found, agreed);
}

TEST(FirmwareKeys, lackFunctionKeysPunctuationAndEverythingElse) {
  for (const char* name : {"f1",
                           "f12",
                           "equal_sign",
                           "hyphen",
                           "open_bracket",
                           "close_bracket",
                           "quote",
                           "semicolon",
                           "backslash",
                           "comma",
                           "slash",
                           "period",
                           "grave_accent_and_tilde",
                           "delete_forward",
                           "home",
                           "page_up",
                           "caps_lock",
                           "left_command",
                           "left_shift",
                           "right_option",
                           "mute",
                           "volume_increment",
                           "play_or_pause",
                           "fast_forward",
                           "fastforward",
                           "button1",
                           "digitizer_66",
                           "Space",
                           "Enter",
                           "",
                           "aa",
                           "a ",
                           " a",
                           "00",
                           "10"})
    EXPECT_EQ(KeycodeMap::firmwareKey(key(name)), std::nullopt) << name;
}

TEST(FirmwareKeys, areSpelledInLowerCase) {
  EXPECT_EQ(KeycodeMap::firmwareKey(key("a")), (FirmwareKey{"A", 65}));
  for (char letter = 'A'; letter <= 'Z'; ++letter)
    EXPECT_EQ(KeycodeMap::firmwareKey(key(std::string(1, letter))), std::nullopt);
  EXPECT_EQ(KeycodeMap::firmwareKey(key("Tab")), std::nullopt);
}

TEST(FirmwareKeys, areOrdinaryKeysOnly) {
  for (const auto& [name, firmware] : agreedKeys) {
    for (const Key::Kind kind :
         {Key::Kind::consumerKeyCode, Key::Kind::pointingButton, Key::Kind::unmappable})
      EXPECT_EQ(KeycodeMap::firmwareKey({KeyName(name), kind}), std::nullopt) << name;
  }
}

// Modifiers

TEST(FirmwareMacro, tapsALoneModifierInItsSidedForm) {
  for (const auto& [modifier, alone, combined] : agreedModifiers)
    EXPECT_EQ(macroOfModifiers({modifier}), (Macro{down(alone), wait(), up(alone)}))
        << modifier.rawValue();
}

TEST(FirmwareMacro, holdsAModifierInItsCommonFormWithinAChord) {
  for (const auto& [modifier, alone, combined] : agreedModifiers) {
    EXPECT_EQ(
        macroOfChord({modifier}, key("a")),
        (Macro{down(combined), wait(), down("A", 65), wait(), up("A", 65), wait(), up(combined)}))
        << modifier.rawValue();
  }
}

TEST(FirmwareMacro, holdsModifiersInTheirCommonFormWhenThereAreSeveral) {
  for (const auto& [first, firstAlone, firstCombined] : agreedModifiers) {
    for (const auto& [second, secondAlone, secondCombined] : agreedModifiers) {
      EXPECT_EQ(macroOfModifiers({first, second}),
                (Macro{down(firstCombined), wait(), down(secondCombined), wait(),
                       up(secondCombined), wait(), up(firstCombined)}));
    }
  }
}

TEST(FirmwareMacro, usesTheCommonFormForTwoRightModifiers) {
  EXPECT_EQ(macroOfModifiers({Modifier::rightShift}),
            (Macro{down("ShiftRight", 161), wait(), up("ShiftRight", 161)}));
  EXPECT_EQ(macroOfModifiers({Modifier::rightShift, Modifier::rightOption}),
            (Macro{down("Shift", 16), wait(), down("Alt", 18), wait(), up("Alt", 18), wait(),
                   up("Shift", 16)}));
}

TEST(FirmwareMacro, sendsRightCommandInACombinationLikeLeftCommand) {
  EXPECT_EQ(macroOfChord({Modifier::rightCommand}, key("c")),
            macroOfChord({Modifier::command}, key("c")));
  EXPECT_EQ(macroOfChord({Modifier::rightCommand}, key("c")),
            (Macro{down("Meta", 91), wait(), down("C", 67), wait(), up("C", 67), wait(),
                   up("Meta", 91)}));
}

// Chords and sequences

TEST(FirmwareMacro, releasesTheModifiersOfAChordInReverse) {
  EXPECT_EQ(macroOfChord({Modifier::command, Modifier::shift}, key("a")),
            (Macro{down("Meta", 91), wait(), down("Shift", 16), wait(), down("A", 65), wait(),
                   up("A", 65), wait(), up("Shift", 16), wait(), up("Meta", 91)}));
}

TEST(FirmwareMacro, pressesModifiersInTheOrderOfTheOutput) {
  EXPECT_EQ(macroOfModifiers({Modifier::option, Modifier::command}),
            (Macro{down("Alt", 18), wait(), down("Meta", 91), wait(), up("Meta", 91), wait(),
                   up("Alt", 18)}));
  EXPECT_EQ(macroOfModifiers({Modifier::command, Modifier::option}),
            (Macro{down("Meta", 91), wait(), down("Alt", 18), wait(), up("Alt", 18), wait(),
                   up("Meta", 91)}));
}

TEST(FirmwareMacro, tapsAChordWithoutModifiersLikeAKey) {
  EXPECT_EQ(macroOfChord({}, key("up_arrow")),
            (Macro{down("ArrowUp", 38), wait(), up("ArrowUp", 38)}));
}

TEST(FirmwareMacro, tapsTheKeysOfASequenceOneAfterTheOther) {
  EXPECT_EQ(macroOfSequence({key("a")}), (Macro{down("A", 65), wait(), up("A", 65)}));
  EXPECT_EQ(
      macroOfSequence({key("a"), key("b")}),
      (Macro{down("A", 65), wait(), up("A", 65), wait(), down("B", 66), wait(), up("B", 66)}));
  EXPECT_EQ(macroOfSequence({key("1"), key("1"), key("1")}),
            (Macro{down("1", 49), wait(), up("1", 49), wait(), down("1", 49), wait(), up("1", 49),
                   wait(), down("1", 49), wait(), up("1", 49)}));
}

TEST(FirmwareMacro, isEmptyButThereForAnOutputWithoutKeys) {
  EXPECT_EQ(macroOfSequence({}), std::optional(Macro{}));
  EXPECT_EQ(macroOfModifiers({}), std::optional(Macro{}));
}

TEST(FirmwareMacro, isMissingForAChordOfAKeyThatTheFirmwareLacks) {
  const Key lacking[] = {{KeyName("mute"), Key::Kind::consumerKeyCode},
                         {KeyName("button1"), Key::Kind::pointingButton},
                         {KeyName("digitizer_66"), Key::Kind::unmappable},
                         {KeyName("a"), Key::Kind::consumerKeyCode},
                         key("f5"),
                         key("comma"),
                         key("A"),
                         key("left_shift")};
  for (const Key& each : lacking) {
    EXPECT_EQ(macroOfChord({}, each), std::nullopt) << each.keyCode.text();
    EXPECT_EQ(macroOfChord({Modifier::command, Modifier::shift}, each), std::nullopt)
        << each.keyCode.text();
  }
}

TEST(FirmwareMacro, isMissingForASequenceWithAnyKeyThatTheFirmwareLacks) {
  EXPECT_EQ(macroOfSequence({key("a"), key("f5"), key("b")}), std::nullopt);
  EXPECT_EQ(macroOfSequence({key("f5"), key("a")}), std::nullopt);
  EXPECT_EQ(macroOfSequence({key("a"), {KeyName("a"), Key::Kind::pointingButton}}), std::nullopt);
}

TEST(FirmwareMacro, canCombineModifiersWithSeveralKeys) {
  const Modifier mods[] = {Modifier::control, Modifier::rightOption};
  const FirmwareKey regulars[] = {{"K", 75}, {"Tab", 9}};
  EXPECT_EQ(KeycodeMap::comboMacro(mods, regulars),
            (Macro{down("Control", 17), wait(), down("Alt", 18), wait(), down("K", 75), wait(),
                   up("K", 75), wait(), down("Tab", 9), wait(), up("Tab", 9), wait(), up("Alt", 18),
                   wait(), up("Control", 17)}));
  EXPECT_EQ(KeycodeMap::comboMacro({}, {}), Macro{});
}

// Whatever the output

rc::Gen<Modifier> anyModifier() { return rc::gen::elementOf(Modifier::allCases); }

rc::Gen<Key> anyKey() {
  std::vector<Key> keys;
  for (const auto& [name, firmware] : agreedKeys)
    keys.push_back(key(name));
  return rc::gen::elementOf(keys);
}

rc::Gen<Output> anyOutput() {
  const auto modifiers = rc::gen::container<std::vector<Modifier>>(anyModifier());
  const auto keys = rc::gen::container<std::vector<Key>>(anyKey());
  return rc::gen::oneOf(
      rc::gen::map(rc::gen::pair(modifiers, anyKey()),
                   [](const auto& parts) {
                     return Output{Output::Chord{parts.first, parts.second}};
                   }),
      rc::gen::map(keys, [](const auto& list) { return Output{Output::Sequence{list}}; }),
      rc::gen::map(modifiers, [](const auto& list) { return Output{Output::Modifiers{list}}; }));
}

RC_GTEST_PROP(FirmwareMacroProperty, alternatesKeysAndPausesAndReleasesWhatItPressesInReverse, ()) {
  const auto macro = KeycodeMap::macro(*anyOutput());
  RC_ASSERT(macro.has_value());
  if (macro->empty()) return;
  RC_ASSERT(std::holds_alternative<MacroEvent::Down>(macro->front().value));
  RC_ASSERT(std::holds_alternative<MacroEvent::Up>(macro->back().value));
  std::vector<MacroEvent::Down> held;
  for (std::size_t i = 0; i < macro->size(); ++i) {
    const auto& step = (*macro)[i].value;
    RC_ASSERT(std::holds_alternative<MacroEvent::Wait>(step) == (i % 2 == 1));
    if (const auto* wait = std::get_if<MacroEvent::Wait>(&step)) RC_ASSERT(wait->ms == 30);
    if (const auto* down = std::get_if<MacroEvent::Down>(&step)) held.push_back(*down);
    if (const auto* up = std::get_if<MacroEvent::Up>(&step)) {
      RC_ASSERT(!held.empty());
      RC_ASSERT(held.back().k == up->k);
      RC_ASSERT(held.back().c == up->c);
      held.pop_back();
    }
  }
  RC_ASSERT(held.empty());
}

/// The steps without thought for elegance: everything first, then the surplus waits go.
Macro naiveCombination(const std::vector<FirmwareKey>& mods,
                       const std::vector<FirmwareKey>& regulars) {
  Macro steps;
  for (const FirmwareKey& mod : mods) {
    steps.push_back(down(mod));
    steps.push_back(wait());
  }
  for (std::size_t i = 0; i < regulars.size(); ++i) {
    steps.push_back(down(regulars[i]));
    steps.push_back(wait());
    steps.push_back(up(regulars[i]));
    if (i != regulars.size() - 1) steps.push_back(wait());
  }
  if (!mods.empty()) {
    for (std::size_t i = mods.size(); i > 0; --i) {
      steps.push_back(wait());
      steps.push_back(up(mods[i - 1]));
    }
  }
  Macro kept;
  for (const MacroEvent& step : steps) {
    if (step == wait() && !kept.empty() && kept.back() == wait()) continue;
    kept.push_back(step);
  }
  return kept;
}

RC_GTEST_PROP(FirmwareMacroProperty, combinesLikeTheStepByStepConstruction, ()) {
  const auto modifiers = *rc::gen::container<std::vector<Modifier>>(anyModifier());
  const auto keys = *rc::gen::container<std::vector<Key>>(anyKey());
  std::vector<FirmwareKey> mods;
  for (const Modifier modifier : modifiers)
    mods.push_back(agreedModifiers[modifier].combined);
  std::vector<FirmwareKey> regulars;
  for (const Key& each : keys)
    regulars.push_back(agreedKeys.at(each.keyCode.text()));
  RC_ASSERT(KeycodeMap::comboMacro(modifiers, regulars) == naiveCombination(mods, regulars));
  RC_ASSERT(macroOfSequence(keys) == naiveCombination({}, regulars));
  if (modifiers.size() != 1) RC_ASSERT(macroOfModifiers(modifiers) == naiveCombination(mods, {}));
  if (!keys.empty())
    RC_ASSERT(macroOfChord(modifiers, keys[0]) == naiveCombination(mods, {regulars[0]}));
}

} // namespace
} // namespace trellivar
