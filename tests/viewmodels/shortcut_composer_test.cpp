#include "tests/support/generators.h"
#include "viewmodels/shortcut_composer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using Modifiers = std::vector<Modifier>;

std::string preview(const Modifiers& modifiers, std::optional<std::string_view> label = {}) {
  return ShortcutComposer::preview(modifiers, label);
}
std::optional<Output> output(const Modifiers& modifiers, const std::optional<Key>& key = {}) {
  return ShortcutComposer::output(modifiers, key);
}

TEST(ShortcutComposer, showsNothingForNothing) { EXPECT_EQ(preview({}), ""); }

TEST(ShortcutComposer, showsTheSymbolOfEachModifier) {
  const std::vector<std::pair<Modifier, std::string>> symbols{
      {Modifier::command, "⌘"},       {Modifier::shift, "⇧"},         {Modifier::control, "⌃"},
      {Modifier::option, "⌥"},        {Modifier::rightCommand, "⌘R"}, {Modifier::rightShift, "⇧R"},
      {Modifier::rightControl, "⌃R"}, {Modifier::rightOption, "⌥R"}};
  EXPECT_EQ(symbols.size(), Modifier::allCases.size());
  for (const auto& [modifier, symbol] : symbols)
    EXPECT_EQ(preview({modifier}), symbol);
}

TEST(ShortcutComposer, showsTheKeyAfterTheModifiersInTheirOrder) {
  EXPECT_EQ(preview({Modifier::command, Modifier::shift}, "K"), "⌘ ⇧ K");
  EXPECT_EQ(preview({Modifier::shift, Modifier::command}, "K"), "⇧ ⌘ K");
  EXPECT_EQ(preview({Modifier::rightOption, Modifier::control}), "⌥R ⌃");
  EXPECT_EQ(preview({}, "Space"), "Space");
}

TEST(ShortcutComposer, makesNothingOfNothing) { EXPECT_EQ(output({}), std::nullopt); }

TEST(ShortcutComposer, makesAChordOfAKeyWithAndWithoutModifiers) {
  const Key k{KeyName("k")};
  EXPECT_EQ(output({}, k), (Output{Output::Chord{{}, k}}));
  EXPECT_EQ(output({Modifier::shift, Modifier::command}, k),
            (Output{Output::Chord{{Modifier::shift, Modifier::command}, k}}));
}

TEST(ShortcutComposer, makesModifiersOfModifiersAlone) {
  EXPECT_EQ(output({Modifier::rightCommand}),
            (Output{Output::Modifiers{{Modifier::rightCommand}}}));
  EXPECT_EQ(output({Modifier::option, Modifier::control}),
            (Output{Output::Modifiers{{Modifier::option, Modifier::control}}}));
}

RC_GTEST_PROP(ShortcutComposer, makesExactlyWhatWasChosen, ()) {
  const auto modifiers = *generate::upTo<Modifier>(4);
  const auto key = *generate::optional(rc::gen::arbitrary<Key>());
  const auto made = output(modifiers, key);
  RC_ASSERT(made.has_value() == (key || !modifiers.empty()));
  if (key) RC_ASSERT(made == (Output{Output::Chord{modifiers, *key}}));
  if (made && !key) RC_ASSERT(made == Output{Output::Modifiers{modifiers}});
}

} // namespace
} // namespace trellivar
