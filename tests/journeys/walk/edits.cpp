#include "tests/journeys/walk/actions.h"
#include "viewmodels/profile_editing.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace trellivar::walk {

namespace {

Key anyOutputKey(Dice& dice) {
  static constexpr std::array<std::string_view, 12> names{
      "a",          "b",  "c",         "z",   "1",          "spacebar", "return_or_enter",
      "left_arrow", "f1", "semicolon", "tab", "no_such_key"};
  static constexpr std::array<std::string_view, 3> media{"mute", "volume_increment",
                                                         "play_or_pause"};
  if (dice.chance(15)) return {KeyName(dice.oneOf(media)), Key::Kind::consumerKeyCode};
  if (dice.chance(5)) return {KeyName("button3"), Key::Kind::pointingButton};
  return plainKey(dice.oneOf(names));
}

std::vector<Modifier> someModifiers(Dice& dice) {
  std::vector<Modifier> some;
  for (const Modifier modifier : Modifier::allCases) {
    const bool isOfKeyboard =
        std::ranges::find(keyboardModifiers, modifier.rawValue()) != keyboardModifiers.end();
    if (!isOfKeyboard && dice.chance(20)) some.push_back(modifier);
  }
  return some;
}

Output anyOutput(Dice& dice) {
  switch (dice.below(3)) {
  case 0: {
    std::vector<Modifier> modifiers = someModifiers(dice);
    return {Output::Chord{std::move(modifiers), anyOutputKey(dice)}};
  }
  case 1: {
    std::vector<Key> keys;
    for (int count = dice.below(4); count > 0; --count)
      keys.push_back(anyOutputKey(dice));
    return {Output::Sequence{std::move(keys)}};
  }
  default:
    return {Output::Modifiers{someModifiers(dice)}};
  }
}

void select(Walker& walker) {
  if (walker.dice.chance(10))
    walker.user.mapping().select(std::nullopt);
  else
    walker.user.select(walker.anyKey());
}

void assign(Walker& walker) {
  if (walker.dice.chance(70)) walker.user.select(walker.anyKey());
  walker.user.mapping().assign(anyOutput(walker.dice));
}

void rename(Walker& walker) {
  static constexpr std::array<std::string_view, 4> labels{"Copy", "  ", " 粘贴\n", "\"\\"};
  const int key = walker.anyKey();
  walker.user.mapping().rename(key, walker.dice.oneOf(labels));
}

/// Elsewhere than in the mapping model.
void edit(Walker& walker) {
  Profile profile = *walker.user.profiles().profile(walker.anyMode());
  const bool isToGo = walker.dice.chance(30);
  const int key = walker.anyKey();
  if (isToGo)
    unbindKey(profile, key);
  else
    bindKey(profile, key, anyOutput(walker.dice));
  walker.user.root().edit(profile);
}

void set(Walker& walker) {
  SettingsStore& settings = *walker.user.app().settings;
  settings.setLanguage(walker.dice.oneOf(AppLanguage::allCases));
  settings.setAppearance(walker.dice.oneOf(allAppearances));
  settings.setStartAtLogin(walker.dice.chance(50));
}

constexpr std::array editTable{
    Action{6, "select", select}, Action{12, "assign", assign}, Action{4, "rename", rename},
    Action{4, "show", show},     Action{3, "edit", edit},      Action{1, "set", set},
};

} // namespace

std::span<const Action> edits() { return editTable; }

void show(Walker& walker) { walker.user.show(walker.anyMode()); }

} // namespace trellivar::walk
