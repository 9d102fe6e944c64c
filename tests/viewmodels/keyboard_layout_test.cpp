#include "core/cg_keycode_map.h"
#include "tests/support/printing.h"
#include "viewmodels/keyboard_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {

void PrintTo(const KeyDef& def, std::ostream* out) {
  *out << def.id << " \"" << def.label << "\" " << def.width;
}

namespace {

using Base = KeyDef::Role::Base;
using Held = KeyDef::Role::Modifier;
using Spacer = KeyDef::Role::Spacer;
using Texts = std::vector<std::string>;

std::vector<KeyDef> allKeys() {
  std::vector<KeyDef> all;
  for (const auto& row : KeyboardLayout::rows())
    all.insert(all.end(), row.begin(), row.end());
  return all;
}

template <class Role> const Role* as(const KeyDef& def) {
  return std::get_if<Role>(&def.role.value);
}

/// The only key with this id.
KeyDef key(const std::string& id) {
  const auto all = allKeys();
  const auto found = std::ranges::find(all, id, &KeyDef::id);
  return found == all.end() ? KeyDef{} : *found;
}

KeyDef baseKey(const std::string& name, const std::string& label, double width = 1.0) {
  return {name, label, width, {Base{Key{KeyName(name)}}}};
}
KeyDef modifierKey(Modifier modifier, const std::string& label, double width) {
  return {"mod-" + std::string(modifier.rawValue()), label, width, {Held{modifier}}};
}

/// The caps of a row, gaps as "".
Texts capsOf(std::size_t row) {
  Texts caps;
  for (const KeyDef& def : KeyboardLayout::rows().at(row))
    caps.push_back(def.label);
  return caps;
}

TEST(KeyboardLayout, isAUsKeyboardFromTopToBottom) {
  ASSERT_EQ(KeyboardLayout::rows().size(), 6U);
  EXPECT_EQ(capsOf(0), (Texts{"esc", "", "F1", "F2", "F3", "F4", "", "F5", "F6", "F7", "F8", "",
                              "F9", "F10", "F11", "F12"}));
  EXPECT_EQ(capsOf(1),
            (Texts{"`", "1", "2", "3", "4", "5", "6", "7", "8", "9", "0", "-", "=", "⌫"}));
  EXPECT_EQ(capsOf(2),
            (Texts{"⇥", "Q", "W", "E", "R", "T", "Y", "U", "I", "O", "P", "[", "]", "\\"}));
  EXPECT_EQ(capsOf(3), (Texts{"", "A", "S", "D", "F", "G", "H", "J", "K", "L", ";", "'", "⏎"}));
  EXPECT_EQ(capsOf(4), (Texts{"⇧", "Z", "X", "C", "V", "B", "N", "M", ",", ".", "/", "⇧"}));
  EXPECT_EQ(capsOf(5), (Texts{"⌃", "⌥", "⌘", "Space", "⌘", "⌥", "⌃", "←", "↑", "↓", "→"}));
}

TEST(KeyboardLayout, isTheSameEveryTime) {
  EXPECT_EQ(&KeyboardLayout::rows(), &KeyboardLayout::rows());
}

TEST(KeyboardLayout, beginsWithEscapeAndAGap) {
  const auto& row = KeyboardLayout::rows()[0];
  EXPECT_EQ(row[0], baseKey("escape", "esc"));
  EXPECT_NE(as<Spacer>(row[1]), nullptr);
  EXPECT_EQ(row[1].width, 0.5);
}

TEST(KeyboardLayout, hasTheNumbersBetweenGraveAccentAndDelete) {
  const auto& row = KeyboardLayout::rows()[1];
  EXPECT_EQ(row.front(), baseKey("grave_accent_and_tilde", "`"));
  EXPECT_EQ(row.back(), baseKey("delete_or_backspace", "⌫", 1.5));
}

TEST(KeyboardLayout, offersNoKeyInThePlaceOfCapsLock) {
  const KeyDef& place = KeyboardLayout::rows()[3].front();
  EXPECT_NE(as<Spacer>(place), nullptr);
  EXPECT_EQ(place.width, 1.75);
  EXPECT_EQ(key("caps_lock"), KeyDef{});
}

TEST(KeyboardLayout, hasSpaceAndArrowsAtTheBottom) {
  const auto& row = KeyboardLayout::rows().back();
  EXPECT_NE(std::ranges::find(row, baseKey("spacebar", "Space", 2.5)), row.end());
  EXPECT_EQ(std::vector(row.end() - 4, row.end()),
            (std::vector{baseKey("left_arrow", "←"), baseKey("up_arrow", "↑"),
                         baseKey("down_arrow", "↓"), baseKey("right_arrow", "→")}));
}

TEST(KeyboardLayout, hasAllEightModifiersOnce) {
  for (const auto& expected :
       {modifierKey(Modifier::command, "⌘", 1.5), modifierKey(Modifier::shift, "⇧", 2.25),
        modifierKey(Modifier::control, "⌃", 1.25), modifierKey(Modifier::option, "⌥", 1.25),
        modifierKey(Modifier::rightCommand, "⌘", 1.5), modifierKey(Modifier::rightShift, "⇧", 2.25),
        modifierKey(Modifier::rightControl, "⌃", 1.25),
        modifierKey(Modifier::rightOption, "⌥", 1.25)})
    EXPECT_EQ(key(expected.id), expected);
  EXPECT_EQ(std::ranges::count_if(allKeys(), [](const KeyDef& def) { return as<Held>(def); }), 8);
}

TEST(KeyboardLayout, namesModifiersByTheirKeys) {
  EXPECT_EQ(key("mod-left_control").width, 1.25);
  EXPECT_EQ(key("mod-left_command").width, 1.5);
}

TEST(KeyboardLayout, hasNoIdTwice) {
  std::set<std::string> ids;
  for (const KeyDef& def : allKeys())
    EXPECT_TRUE(ids.insert(def.id).second) << def.id;
  EXPECT_EQ(ids.count(""), 0U);
}

TEST(KeyboardLayout, tellsTheRoleByTheId) {
  for (const KeyDef& def : allKeys()) {
    EXPECT_EQ(def.id.starts_with("mod-"), as<Held>(def) != nullptr) << def.id;
    EXPECT_EQ(def.id.starts_with("spacer-"), as<Spacer>(def) != nullptr) << def.id;
    EXPECT_EQ(def.label.empty(), as<Spacer>(def) != nullptr) << def.id;
  }
}

TEST(KeyboardLayout, hasRowsOfTheSameWidth) {
  for (const auto& row : KeyboardLayout::rows()) {
    double width = 0;
    for (const KeyDef& def : row)
      width += def.width;
    EXPECT_EQ(width, 14.5) << row.front().id;
  }
}

TEST(KeyboardLayout, knowsTheKeyCodeOfEveryKey) {
  std::set<Key, bool (*)(const Key&, const Key&)> keys(
      [](const Key& a, const Key& b) { return a.keyCode.text() < b.keyCode.text(); });
  for (const KeyDef& def : allKeys()) {
    const Base* base = as<Base>(def);
    if (!base) continue;
    EXPECT_TRUE(CGKeycodeMap::keyCode(base->key.keyCode.text())) << def.id;
    EXPECT_FALSE(Modifier::fromRawValue(base->key.keyCode.text())) << def.id;
    EXPECT_EQ(base->key.kind, Key::Kind::keyCode);
    EXPECT_TRUE(keys.insert(base->key).second) << "there is a second " << def.id;
  }
  EXPECT_EQ(keys.size(), 13U + 14U + 14U + 12U + 10U + 5U);
}

TEST(KeyDef, differsByEveryPart) {
  const KeyDef a = baseKey("a", "A");
  EXPECT_EQ(a, baseKey("a", "A"));
  EXPECT_NE(a, baseKey("a", "B"));
  EXPECT_NE(a, baseKey("a", "A", 1.25));
  EXPECT_NE(a, (KeyDef{"b", "A", 1.0, a.role}));
  EXPECT_NE(a, (KeyDef{"a", "A", 1.0, {Base{Key{KeyName("b")}}}}));
  EXPECT_NE(a, (KeyDef{"a", "A", 1.0, {Spacer{}}}));
  EXPECT_NE((KeyDef{"a", "A", 1.0, {Held{Modifier::command}}}),
            (KeyDef{"a", "A", 1.0, {Held{Modifier::shift}}}));
  EXPECT_EQ(KeyDef{}.width, 1.0);
}

// Labels

TEST(DisplayLabel, isTheCapOfAKeyOfTheLayout) {
  for (const KeyDef& def : allKeys()) {
    if (const Base* base = as<Base>(def)) {
      EXPECT_EQ(KeyboardLayout::displayLabel(base->key.keyCode.text()), def.label);
    }
  }
  EXPECT_EQ(KeyboardLayout::displayLabel("spacebar"), "Space");
  EXPECT_EQ(KeyboardLayout::displayLabel("left_arrow"), "←");
  EXPECT_EQ(KeyboardLayout::displayLabel("f12"), "F12");
}

TEST(DisplayLabel, isOneCharacterInUpperCase) {
  for (char c = 'a'; c <= 'z'; ++c)
    EXPECT_EQ(KeyboardLayout::displayLabel(std::string(1, c)),
              std::string(1, static_cast<char>(c - 'a' + 'A')));
  for (const char* same : {"A", "Z", "7", "+", "{", "@"})
    EXPECT_EQ(KeyboardLayout::displayLabel(same), same);
}

TEST(DisplayLabel, isTheNameOfEveryOtherKey) {
  for (const char* name : {"caps_lock", "left_command", "mod-left_command", "spacer-caps_lock",
                           "volume_increment", "f13", "Escape", "ab", "", " a"})
    EXPECT_EQ(KeyboardLayout::displayLabel(name), name);
}

} // namespace
} // namespace trellivar
