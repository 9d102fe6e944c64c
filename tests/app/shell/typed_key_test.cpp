#include "app/bridge/typed_key.h"
#include "viewmodels/keyboard_layout.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace trellivar {
namespace {

/// Empty for a key that is none of the drawn ones.
std::string typed(int key) { return TypedKey::base(key).value_or(QString()).toStdString(); }

/// The keys that work the sheet.
constexpr std::array workingKeys{Qt::Key_Escape, Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Return,
                                 Qt::Key_Enter,  Qt::Key_Space, Qt::Key_Left,    Qt::Key_Up,
                                 Qt::Key_Down,   Qt::Key_Right};
const std::set<std::string> drawnWorkingKeys{"escape",     "tab",        "return_or_enter",
                                             "spacebar",   "left_arrow", "up_arrow",
                                             "down_arrow", "right_arrow"};

struct DrawnKey {
  int plain;
  int shifted;
  std::string id;
};

/// Letters and function keys aside.
const std::vector<DrawnKey> drawnKeys{
    {Qt::Key_1, Qt::Key_Exclam, "1"},
    {Qt::Key_2, Qt::Key_At, "2"},
    {Qt::Key_3, Qt::Key_NumberSign, "3"},
    {Qt::Key_4, Qt::Key_Dollar, "4"},
    {Qt::Key_5, Qt::Key_Percent, "5"},
    {Qt::Key_6, Qt::Key_AsciiCircum, "6"},
    {Qt::Key_7, Qt::Key_Ampersand, "7"},
    {Qt::Key_8, Qt::Key_Asterisk, "8"},
    {Qt::Key_9, Qt::Key_ParenLeft, "9"},
    {Qt::Key_0, Qt::Key_ParenRight, "0"},
    {Qt::Key_QuoteLeft, Qt::Key_AsciiTilde, "grave_accent_and_tilde"},
    {Qt::Key_Minus, Qt::Key_Underscore, "hyphen"},
    {Qt::Key_Equal, Qt::Key_Plus, "equal_sign"},
    {Qt::Key_BracketLeft, Qt::Key_BraceLeft, "open_bracket"},
    {Qt::Key_BracketRight, Qt::Key_BraceRight, "close_bracket"},
    {Qt::Key_Backslash, Qt::Key_Bar, "backslash"},
    {Qt::Key_Semicolon, Qt::Key_Colon, "semicolon"},
    {Qt::Key_Apostrophe, Qt::Key_QuoteDbl, "quote"},
    {Qt::Key_Comma, Qt::Key_Less, "comma"},
    {Qt::Key_Period, Qt::Key_Greater, "period"},
    {Qt::Key_Slash, Qt::Key_Question, "slash"},
    {Qt::Key_Backspace, Qt::Key_Backspace, "delete_or_backspace"}};

TEST(TypedKey, aLetterIsTheKeyOfItsName) {
  for (char letter = 'a'; letter <= 'z'; ++letter)
    EXPECT_EQ(typed(Qt::Key_A + letter - 'a'), std::string(1, letter));
}
TEST(TypedKey, aFunctionKeyIsTheOneOfItsNumber) {
  for (int number = 1; number <= 12; ++number)
    EXPECT_EQ(typed(Qt::Key_F1 + number - 1), "f" + std::to_string(number));
}
TEST(TypedKey, aSignIsTheKeyThatItIsOnWithOrWithoutShift) {
  for (const DrawnKey& key : drawnKeys) {
    EXPECT_EQ(typed(key.plain), key.id);
    EXPECT_EQ(typed(key.shifted), key.id) << "with Shift";
  }
}
TEST(TypedKey, keysThatWorkTheSheetAreNotTyped) {
  for (const int key : workingKeys)
    EXPECT_EQ(typed(key), "") << key;
}
TEST(TypedKey, whatIsNotDrawnIsNotTyped) {
  for (const int key :
       {0, int{Qt::Key_unknown}, int{Qt::Key_F13}, int{Qt::Key_Delete}, int{Qt::Key_Home},
        int{Qt::Key_CapsLock}, int{Qt::Key_VolumeUp}, int{Qt::Key_Adiaeresis}})
    EXPECT_EQ(typed(key), "") << key;
}
TEST(TypedKey, everyDrawnKeyCanBeTypedOrWorksTheSheet) {
  std::set<std::string> known = drawnWorkingKeys;
  for (int key = Qt::Key_Space; key <= Qt::Key_AsciiTilde; ++key)
    known.insert(typed(key));
  for (int key = Qt::Key_Escape; key <= Qt::Key_F12; ++key)
    known.insert(typed(key));
  for (const auto& row : KeyboardLayout::rows()) {
    for (const KeyDef& def : row) {
      const bool isTyped = std::holds_alternative<KeyDef::Role::Base>(def.role.value);
      EXPECT_TRUE(!isTyped || known.contains(def.id)) << def.id;
    }
  }
}

// On a Mac, Qt calls the command key Control and the control key Meta.
#ifdef Q_OS_MACOS
constexpr Modifier controlKey = Modifier::command, metaKey = Modifier::control;
#else
constexpr Modifier controlKey = Modifier::control, metaKey = Modifier::command;
#endif

TEST(TypedKey, aModifierIsTheOneOnTheLeft) {
  EXPECT_EQ(TypedKey::modifier(Qt::Key_Control), controlKey);
  EXPECT_EQ(TypedKey::modifier(Qt::Key_Meta), metaKey);
  EXPECT_EQ(TypedKey::modifier(Qt::Key_Shift), Modifier::shift);
  EXPECT_EQ(TypedKey::modifier(Qt::Key_Alt), Modifier::option);
}
TEST(TypedKey, noOtherKeyIsAModifier) {
  for (const int key : {int{Qt::Key_A}, int{Qt::Key_CapsLock}, int{Qt::Key_NumLock},
                        int{Qt::Key_AltGr}, int{Qt::Key_Escape}, 0})
    EXPECT_EQ(TypedKey::modifier(key), std::nullopt) << key;
}
TEST(TypedKey, aModifierIsNoOtherKey) {
  for (const int key : {Qt::Key_Control, Qt::Key_Meta, Qt::Key_Shift, Qt::Key_Alt})
    EXPECT_EQ(typed(key), "") << key;
}

using Held = std::vector<Modifier>;

TEST(TypedKey, eachModifierIsHeldByItself) {
  EXPECT_EQ(TypedKey::modifiers(Qt::NoModifier), Held{});
  EXPECT_EQ(TypedKey::modifiers(Qt::ControlModifier), Held{controlKey});
  EXPECT_EQ(TypedKey::modifiers(Qt::MetaModifier), Held{metaKey});
  EXPECT_EQ(TypedKey::modifiers(Qt::ShiftModifier), Held{Modifier::shift});
  EXPECT_EQ(TypedKey::modifiers(Qt::AltModifier), Held{Modifier::option});
}
TEST(TypedKey, modifiersThatAreHeldTogetherHaveTheUsualOrder) {
  EXPECT_EQ(TypedKey::modifiers(Qt::AltModifier | Qt::ControlModifier | Qt::ShiftModifier |
                                Qt::MetaModifier),
            (Held{Modifier::command, Modifier::shift, Modifier::control, Modifier::option}));
}
TEST(TypedKey, theKeypadIsNoModifier) {
  EXPECT_EQ(TypedKey::modifiers(Qt::KeypadModifier | Qt::GroupSwitchModifier), Held{});
}

} // namespace
} // namespace trellivar
