#include "app/bridge/typed_key.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace trellivar {

namespace {

struct HeldKey {
  Modifier modifier;
  int key;
  Qt::KeyboardModifier flag;
};

// On a Mac, Qt calls the command key Control and the control key Meta.
#ifdef Q_OS_MACOS
constexpr int commandKey = Qt::Key_Control, controlKey = Qt::Key_Meta;
constexpr auto commandFlag = Qt::ControlModifier, controlFlag = Qt::MetaModifier;
#else
constexpr int commandKey = Qt::Key_Meta, controlKey = Qt::Key_Control;
constexpr auto commandFlag = Qt::MetaModifier, controlFlag = Qt::ControlModifier;
#endif

constexpr std::array<HeldKey, 4> heldKeys{{
    {Modifier::command, commandKey, commandFlag},
    {Modifier::shift, Qt::Key_Shift, Qt::ShiftModifier},
    {Modifier::control, controlKey, controlFlag},
    {Modifier::option, Qt::Key_Alt, Qt::AltModifier},
}};

struct NamedKey {
  int plain;
  int shifted;
  std::string_view id;
};

/// Letters and function keys aside.
constexpr auto namedKeys = std::to_array<NamedKey>({
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
    {Qt::Key_Backspace, Qt::Key_Backspace, "delete_or_backspace"},
});

} // namespace

std::optional<Modifier> TypedKey::modifier(int key) {
  const auto found = std::ranges::find(heldKeys, key, &HeldKey::key);
  return found == heldKeys.end() ? std::nullopt : std::optional(found->modifier);
}

std::vector<Modifier> TypedKey::modifiers(Qt::KeyboardModifiers held) {
  std::vector<Modifier> modifiers;
  for (const HeldKey& each : heldKeys) {
    if (held.testFlag(each.flag)) modifiers.push_back(each.modifier);
  }
  return modifiers;
}

std::optional<QString> TypedKey::base(int key) {
  if (key >= Qt::Key_A && key <= Qt::Key_Z) return QString(QChar(u'a' + key - Qt::Key_A));
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return "f" + QString::number(key - Qt::Key_F1 + 1);
  for (const NamedKey& each : namedKeys) {
    if (key == each.plain || key == each.shifted)
      return QString::fromUtf8(each.id.data(), static_cast<qsizetype>(each.id.size()));
  }
  return std::nullopt;
}

} // namespace trellivar
