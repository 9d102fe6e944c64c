#include "core/mapping_table.h"
#include "tests/core/tap_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using words::key;
using words::tapOf;
using Names = std::set<std::string>;

constexpr DeviceIdentity someKeyboard{0x1111, 0x2222};
constexpr DeviceIdentity cable{0x4C4A, 0x4155};
constexpr DeviceIdentity radio{0x04E8, 0x7021};
constexpr DeviceIdentity otherRadio{0x05AC, 0x022C};
constexpr DeviceIdentity modeM{0x05AC, 0x0220};

KeySignature alone(std::initializer_list<std::string_view> names) {
  KeySignature signature;
  for (const std::string_view name : names)
    signature.codes.push_back(key(name));
  return signature;
}

KeySignature together(std::initializer_list<std::string_view> names) {
  KeySignature signature = alone(names);
  signature.isChord = true;
  return signature;
}

PhysicalKey padKey(int id, KeySignature signature, std::vector<KeySignature> alternatives = {}) {
  return {id, 0, id - 1, std::move(signature), std::move(alternatives)};
}

struct Binding {
  int keyId;
  Output output;
};

/// A set in the making.
MappingSet setFor(DeviceIdentity identity, std::vector<PhysicalKey> keys,
                  std::initializer_list<Binding> bindings) {
  MappingSet set;
  set.device = {"some device", identity.vendorId, identity.productId, {std::move(keys)}};
  set.profile.name = "P";
  for (const Binding& binding : bindings)
    set.profile.mappings.push_back({binding.keyId, binding.output, std::nullopt});
  return set;
}

MappingSet portableSet(DeviceIdentity identity, std::initializer_list<Output> outputs) {
  MappingSet set = setFor(identity, {}, {});
  set.portable = true;
  int keyId = 1;
  for (const Output& output : outputs)
    set.profile.mappings.push_back({keyId++, output, std::nullopt});
  return set;
}

MappingTable compiled(std::vector<MappingSet> sets) { return MappingTable::compile(sets); }

/// The one entry of a table that has to have exactly one.
MappingTable::CompiledIdentity only(const MappingTable& table, DeviceIdentity identity) {
  EXPECT_EQ(table.identities.size(), 1U);
  const auto entry = table.identities.find(identity);
  if (entry == table.identities.end()) {
    ADD_FAILURE() << "the identity is absent";
    return {};
  }
  return entry->second;
}

/// The entry for a keyboard with one key, which is bound to tap "out".
MappingTable::CompiledIdentity entryFor(KeySignature signature) {
  return only(
      compiled({setFor(someKeyboard, {padKey(1, std::move(signature))}, {{1, tapOf("out")}})}),
      someKeyboard);
}

Names membersOf(const MappingTable::ChordTrigger& trigger) {
  Names names;
  for (const KeyName member : trigger.members)
    names.insert(member.text());
  return names;
}

/// The chords as the names of their members and what they tap.
using Chords = std::vector<std::pair<Names, Output>>;
Chords chordsOf(const MappingTable::CompiledIdentity& entry) {
  Chords chords;
  for (const auto& trigger : entry.chords)
    chords.emplace_back(membersOf(trigger), trigger.output.output());
  return chords;
}

/// What each name does alone: its output, or none for a swallowed name.
using Singles = std::map<std::string, std::optional<Output>>;
Singles singlesOf(const MappingTable::CompiledIdentity& entry) {
  Singles singles;
  for (const auto& [name, action] : entry.singles) {
    const auto* fire = std::get_if<MappingTable::SingleAction::Fire>(&action.value);
    singles[name.text()] = fire ? std::optional(fire->output.output()) : std::nullopt;
  }
  return singles;
}

using Normalization = std::map<std::string, std::string>;
Normalization normalizationOf(const MappingTable::CompiledIdentity& entry) {
  Normalization names;
  for (const auto& [from, to] : entry.normalization)
    names[from.text()] = to.text();
  return names;
}

Output chord(std::vector<Modifier> modifiers, std::string_view name) {
  return {Output::Chord{std::move(modifiers), key(name)}};
}
Output modifiersOnly(std::vector<Modifier> modifiers) {
  return {Output::Modifiers{std::move(modifiers)}};
}

TEST(MappingTable, isEmptyWithoutSets) {
  EXPECT_TRUE(MappingTable::empty.identities.empty());
  EXPECT_EQ(compiled({}), MappingTable::empty);
}

TEST(MappingTable, hasNoIdentityForAProfileWithoutMappings) {
  EXPECT_EQ(compiled({setFor(someKeyboard, {padKey(1, alone({"a"}))}, {})}), MappingTable::empty);
  EXPECT_EQ(compiled({setFor(cable, {}, {})}), MappingTable::empty);
}

TEST(MappingTable, hasNoIdentityForMappingsOfAbsentKeys) {
  EXPECT_EQ(compiled({setFor(someKeyboard, {padKey(1, alone({"a"}))},
                             {{2, tapOf("x")}, {0, tapOf("y")}, {-1, tapOf("z")}})}),
            MappingTable::empty);
  EXPECT_EQ(compiled({setFor(cable, {padKey(9, alone({"a"}))}, {{9, tapOf("x")}})}),
            MappingTable::empty);
}

TEST(MappingTable, bindsTheOtherKeysOfAProfileThatNamesAbsentOnes) {
  const auto entry =
      only(compiled({setFor(someKeyboard, {padKey(1, alone({"a"})), padKey(2, alone({"b"}))},
                            {{7, tapOf("x")}, {2, tapOf("y")}})}),
           someKeyboard);
  EXPECT_EQ(singlesOf(entry), (Singles{{"b", tapOf("y")}}));
  EXPECT_TRUE(entry.chords.empty());
  EXPECT_TRUE(entry.normalization.empty());
}

TEST(MappingTable, firesThePlainKeyOfASingleSignature) {
  const auto entry = entryFor(alone({"a"}));
  EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("out")}}));
  EXPECT_TRUE(entry.chords.empty());
}

TEST(MappingTable, makesAChordTriggerOfAChordSignature) {
  const auto entry = entryFor(together({"left_control", "left_option", "f"}));
  EXPECT_EQ(chordsOf(entry), (Chords{{{"left_control", "left_option", "f"}, tapOf("out")}}));
  EXPECT_TRUE(entry.singles.empty());
}

TEST(MappingTable, countsARepeatedNameOfAChordOnce) {
  const auto entry = entryFor(together({"left_control", "left_control", "f"}));
  EXPECT_EQ(chordsOf(entry), (Chords{{{"left_control", "f"}, tapOf("out")}}));
  EXPECT_TRUE(entry.singles.empty());
}

TEST(MappingTable, takesAChordOfOneNameAsASingle) {
  for (const KeySignature& signature : {together({"a", "a"}), together({"a"})}) {
    const auto entry = entryFor(signature);
    EXPECT_TRUE(entry.chords.empty());
    EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("out")}}));
  }
}

TEST(MappingTable, firesTheFirstAndSwallowsTheFurtherNamesOfSeveralKeysThatAreNoChord) {
  EXPECT_EQ(singlesOf(entryFor(alone({"a", "b"}))),
            (Singles{{"a", tapOf("out")}, {"b", std::nullopt}}));
  EXPECT_EQ(singlesOf(entryFor(alone({"c", "a", "b"}))),
            (Singles{{"c", tapOf("out")}, {"a", std::nullopt}, {"b", std::nullopt}}));
  EXPECT_TRUE(entryFor(alone({"a", "b"})).chords.empty());
}

TEST(MappingTable, neverSwallowsTheNameThatFires) {
  EXPECT_EQ(singlesOf(entryFor(alone({"a", "a"}))), (Singles{{"a", tapOf("out")}}));
  EXPECT_EQ(singlesOf(entryFor(alone({"a", "b", "a"}))),
            (Singles{{"a", tapOf("out")}, {"b", std::nullopt}}));
}

TEST(MappingTable, leavesAnEntryThatIsThereRatherThanSwallowIt) {
  const std::vector<PhysicalKey> keys{padKey(1, alone({"b"})), padKey(2, alone({"a", "b", "c"})),
                                      padKey(3, alone({"d", "c"}))};
  const auto entry = only(
      compiled({setFor(someKeyboard, keys, {{1, tapOf("x")}, {2, tapOf("y")}, {3, tapOf("z")}})}),
      someKeyboard);
  EXPECT_EQ(
      singlesOf(entry),
      (Singles{{"a", tapOf("y")}, {"b", tapOf("x")}, {"c", std::nullopt}, {"d", tapOf("z")}}));
}

TEST(MappingTable, letsALaterSingleOverwriteWhateverWasThere) {
  const std::vector<PhysicalKey> keys{padKey(1, alone({"a", "b"})), padKey(2, alone({"b"})),
                                      padKey(3, alone({"a"}))};
  const auto entry = only(
      compiled({setFor(someKeyboard, keys, {{1, tapOf("x")}, {2, tapOf("y")}, {3, tapOf("z")}})}),
      someKeyboard);
  EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("z")}, {"b", tapOf("y")}}));
}

TEST(MappingTable, skipsKeysThatAreNotLearned) {
  EXPECT_EQ(compiled({setFor(someKeyboard, {padKey(1, {}), padKey(2, {{}, true})},
                             {{1, tapOf("x")}, {2, tapOf("y")}})}),
            MappingTable::empty);
}

TEST(MappingTable, skipsSignaturesWithAnUnmappableKeyAnywhere) {
  const Key touch{KeyName("digitizer_66"), Key::Kind::unmappable};
  for (const bool isChord : {false, true}) {
    const KeySignature single{{touch}, isChord};
    const KeySignature first{{touch, key("a")}, isChord};
    const KeySignature last{{key("a"), key("b"), touch}, isChord};
    for (const KeySignature& signature : {single, first, last}) {
      EXPECT_EQ(compiled({setFor(someKeyboard, {padKey(1, signature)}, {{1, tapOf("x")}})}),
                MappingTable::empty);
    }
    const PhysicalKey withAlternative = padKey(1, last, {alone({"z"})});
    const auto entry =
        only(compiled({setFor(someKeyboard, {withAlternative}, {{1, tapOf("x")}})}), someKeyboard);
    EXPECT_EQ(singlesOf(entry), (Singles{{"z", tapOf("x")}}));
    EXPECT_TRUE(entry.chords.empty());
  }
}

TEST(MappingTable, takesMediaKeysAndMouseButtonsLikeOrdinaryKeys) {
  const Key mute{KeyName("mute"), Key::Kind::consumerKeyCode};
  const Key button{KeyName("button3"), Key::Kind::pointingButton};
  EXPECT_EQ(singlesOf(entryFor({{mute, button}, false})),
            (Singles{{"mute", tapOf("out")}, {"button3", std::nullopt}}));
  EXPECT_EQ(chordsOf(entryFor({{mute, button}, true})),
            (Chords{{{"mute", "button3"}, tapOf("out")}}));
}

TEST(MappingTable, tellsKeysApartByNameAlone) {
  const Key media{KeyName("mute"), Key::Kind::consumerKeyCode};
  const auto entry = entryFor({{media, key("mute")}, true});
  EXPECT_TRUE(entry.chords.empty());
  EXPECT_EQ(singlesOf(entry), (Singles{{"mute", tapOf("out")}}));
}

TEST(MappingTable, bindsEveryAlternativeSignatureToTheSameOutput) {
  const PhysicalKey physical =
      padKey(1, alone({"a"}), {together({"z", "left_option"}), alone({}), alone({"b", "c"})});
  const auto entry =
      only(compiled({setFor(someKeyboard, {physical}, {{1, tapOf("x")}})}), someKeyboard);
  EXPECT_EQ(chordsOf(entry), (Chords{{{"z", "left_option"}, tapOf("x")}}));
  EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("x")}, {"b", tapOf("x")}, {"c", std::nullopt}}));
}

TEST(MappingTable, addsThePrimarySignatureBeforeTheAlternatives) {
  const PhysicalKey physical =
      padKey(1, together({"a", "b"}), {together({"c", "d"}), together({"e", "f"})});
  const auto entry =
      only(compiled({setFor(someKeyboard, {physical}, {{1, tapOf("x")}})}), someKeyboard);
  EXPECT_EQ(chordsOf(entry),
            (Chords{{{"a", "b"}, tapOf("x")}, {{"c", "d"}, tapOf("x")}, {{"e", "f"}, tapOf("x")}}));
}

TEST(MappingTable, listsChordsInTheOrderOfTheMappings) {
  const std::vector<PhysicalKey> keys{padKey(1, together({"a", "b"})),
                                      padKey(2, together({"a", "c"})),
                                      padKey(3, together({"b", "c"}))};
  const auto entry = only(
      compiled({setFor(someKeyboard, keys, {{3, tapOf("x")}, {1, tapOf("y")}, {2, tapOf("z")}})}),
      someKeyboard);
  EXPECT_EQ(chordsOf(entry),
            (Chords{{{"b", "c"}, tapOf("x")}, {{"a", "b"}, tapOf("y")}, {{"a", "c"}, tapOf("z")}}));
}

TEST(MappingTable, keepsBothChordsOfTheSameMembers) {
  const std::vector<PhysicalKey> keys{padKey(1, together({"a", "b"})),
                                      padKey(2, together({"b", "a", "b"}))};
  const auto entry = only(
      compiled({setFor(someKeyboard, keys, {{1, tapOf("x")}, {2, tapOf("y")}})}), someKeyboard);
  EXPECT_EQ(chordsOf(entry), (Chords{{{"a", "b"}, tapOf("x")}, {{"a", "b"}, tapOf("y")}}));
}

TEST(MappingTable, appliesEveryMappingOfTheSameKeyInOrder) {
  const std::vector<PhysicalKey> keys{padKey(1, alone({"a"}), {together({"b", "c"})})};
  const auto entry = only(
      compiled({setFor(someKeyboard, keys, {{1, tapOf("x")}, {1, tapOf("y")}})}), someKeyboard);
  EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("y")}}));
  EXPECT_EQ(chordsOf(entry), (Chords{{{"b", "c"}, tapOf("x")}, {{"b", "c"}, tapOf("y")}}));
}

TEST(MappingTable, letsTheLaterSetWinASingleAndCollectsTheChordsOfBoth) {
  const MappingSet earlier =
      setFor(someKeyboard, {padKey(1, alone({"a"})), padKey(2, together({"b", "c"}))},
             {{1, tapOf("x")}, {2, tapOf("x2")}});
  const MappingSet later =
      setFor(someKeyboard, {padKey(1, alone({"a"})), padKey(2, together({"d", "c"}))},
             {{1, tapOf("y")}, {2, tapOf("y2")}});
  const auto entry = only(compiled({earlier, later}), someKeyboard);
  EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("y")}}));
  EXPECT_EQ(chordsOf(entry), (Chords{{{"b", "c"}, tapOf("x2")}, {{"c", "d"}, tapOf("y2")}}));

  const auto reversed = only(compiled({later, earlier}), someKeyboard);
  EXPECT_EQ(singlesOf(reversed), (Singles{{"a", tapOf("x")}}));
  EXPECT_EQ(chordsOf(reversed), (Chords{{{"c", "d"}, tapOf("y2")}, {{"b", "c"}, tapOf("x2")}}));
}

TEST(MappingTable, keepsTheBindingsOfDifferentDevicesApart) {
  constexpr DeviceIdentity sameVendor{someKeyboard.vendorId, 7};
  constexpr DeviceIdentity sameProduct{7, someKeyboard.productId};
  const MappingTable table =
      compiled({setFor(someKeyboard, {padKey(1, alone({"a"}))}, {{1, tapOf("x")}}),
                setFor(sameVendor, {padKey(1, alone({"b"}))}, {{1, tapOf("y")}}),
                setFor(sameProduct, {padKey(1, alone({"c"}))}, {{1, tapOf("z")}})});
  ASSERT_EQ(table.identities.size(), 3U);
  EXPECT_EQ(singlesOf(table.identities.at(someKeyboard)), (Singles{{"a", tapOf("x")}}));
  EXPECT_EQ(singlesOf(table.identities.at(sameVendor)), (Singles{{"b", tapOf("y")}}));
  EXPECT_EQ(singlesOf(table.identities.at(sameProduct)), (Singles{{"c", tapOf("z")}}));
}

TEST(MappingTable, bindsAKnownPadUnderEveryTransport) {
  for (const DeviceIdentity identity : {cable, radio, otherRadio}) {
    const MappingTable table =
        compiled({setFor(identity, {}, {{1, tapOf("x")}, {2, tapOf("y")}, {3, tapOf("z")}})});
    ASSERT_EQ(table.identities.size(), 3U);
    EXPECT_EQ(chordsOf(table.identities.at(cable)), (Chords{{{"c", "left_control"}, tapOf("x")},
                                                            {{"v", "left_control"}, tapOf("y")},
                                                            {{"x", "left_control"}, tapOf("z")}}));
    EXPECT_TRUE(table.identities.at(cable).singles.empty());
    for (const DeviceIdentity wireless : {radio, otherRadio}) {
      const auto& entry = table.identities.at(wireless);
      EXPECT_EQ(chordsOf(entry), (Chords{{{"z", "left_option"}, tapOf("x")}}));
      EXPECT_EQ(singlesOf(entry), (Singles{{"spacebar", tapOf("x")},
                                           {"volume_decrement", tapOf("y")},
                                           {"volume_increment", tapOf("z")}}));
      EXPECT_TRUE(entry.normalization.empty());
    }
  }
}

TEST(MappingTable, bindsAKnownPadInTheOrderOfTheMappings) {
  const MappingTable table = compiled({setFor(radio, {}, {{3, tapOf("x")}, {1, tapOf("y")}})});
  EXPECT_EQ(chordsOf(table.identities.at(cable)),
            (Chords{{{"x", "left_control"}, tapOf("x")}, {{"c", "left_control"}, tapOf("y")}}));
}

TEST(MappingTable, ignoresTheLayoutThatASetBringsForAKnownPad) {
  const MappingTable table = compiled({setFor(
      cable, {padKey(2, alone({"learned"})), padKey(2, alone({"twice"}))}, {{2, tapOf("x")}})});
  EXPECT_EQ(chordsOf(table.identities.at(cable)), (Chords{{{"v", "left_control"}, tapOf("x")}}));
  EXPECT_TRUE(table.identities.at(cable).singles.empty());
}

TEST(MappingTable, compilesTheOtherModesOfAKnownPadFromTheirOwnLearnedSignatures) {
  const auto entry =
      only(compiled({setFor(modeM, {padKey(1, together({"left_control", "left_option", "f"}))},
                            {{1, tapOf("x")}, {2, tapOf("y")}})}),
           modeM);
  EXPECT_EQ(chordsOf(entry), (Chords{{{"left_control", "left_option", "f"}, tapOf("x")}}));
}

TEST(MappingTable, normalizesTheModifiersOfAPortableProfile) {
  const auto entry = only(
      compiled({portableSet(cable, {chord({Modifier::command, Modifier::shift}, "k")})}), cable);
  EXPECT_EQ(normalizationOf(entry),
            (Normalization{{"right_command", "left_command"}, {"right_shift", "left_shift"}}));
  EXPECT_TRUE(entry.chords.empty());
  EXPECT_TRUE(entry.singles.empty());
}

TEST(MappingTable, normalizesAllFourLeftModifiers) {
  const auto entry = only(
      compiled({portableSet(someKeyboard, {modifiersOnly({Modifier::option, Modifier::control,
                                                          Modifier::shift, Modifier::command})})}),
      someKeyboard);
  EXPECT_EQ(normalizationOf(entry), (Normalization{{"right_command", "left_command"},
                                                   {"right_shift", "left_shift"},
                                                   {"right_control", "left_control"},
                                                   {"right_option", "left_option"}}));
}

TEST(MappingTable, collectsTheModifiersOfAllPortableOutputs) {
  const auto entry =
      only(compiled({portableSet(cable, {chord({Modifier::command}, "c"), tapOf("x"),
                                         modifiersOnly({Modifier::rightShift, Modifier::control}),
                                         modifiersOnly({Modifier::option})})}),
           cable);
  EXPECT_EQ(normalizationOf(entry),
            (Normalization{{"right_command", "left_command"}, {"right_control", "left_control"}}));
}

TEST(MappingTable, leavesAPortableProfileAloneThatHoldsNoLeftModifierInACombination) {
  const Output unchanged[] = {
      modifiersOnly({Modifier::rightOption}),
      modifiersOnly({Modifier::command}),
      modifiersOnly({}),
      modifiersOnly({Modifier::rightShift, Modifier::rightOption}),
      chord({}, "k"),
      chord({Modifier::rightCommand}, "k"),
      {Output::Sequence{{key("left_command"), key("left_shift")}}},
  };
  for (const Output& output : unchanged)
    EXPECT_EQ(compiled({portableSet(cable, {output})}), MappingTable::empty);
  EXPECT_EQ(compiled({portableSet(cable, {})}), MappingTable::empty);
}

TEST(MappingTable, normalizesForThePortableSetsOwnIdentityAlone) {
  const MappingTable table = compiled({portableSet(radio, {chord({Modifier::command}, "c")})});
  EXPECT_EQ(normalizationOf(only(table, radio)),
            (Normalization{{"right_command", "left_command"}}));
}

TEST(MappingTable, bindsNoKeysOfAPortableSet) {
  MappingSet set = setFor(someKeyboard, {padKey(1, alone({"a"})), padKey(1, alone({"b"}))},
                          {{1, chord({Modifier::option}, "k")}});
  set.portable = true;
  const auto entry = only(compiled({set}), someKeyboard);
  EXPECT_TRUE(entry.singles.empty());
  EXPECT_TRUE(entry.chords.empty());
  EXPECT_EQ(normalizationOf(entry), (Normalization{{"right_option", "left_option"}}));
}

TEST(MappingTable, joinsPortableAndOtherSetsOfOneIdentity) {
  const MappingSet live =
      setFor(someKeyboard, {padKey(1, alone({"a"})), padKey(2, together({"b", "c"}))},
             {{1, tapOf("x")}, {2, tapOf("y")}});
  const MappingSet portable = portableSet(someKeyboard, {chord({Modifier::shift}, "k")});
  const MappingSet morePortable = portableSet(someKeyboard, {chord({Modifier::command}, "k")});
  const auto entry = only(compiled({portable, live, morePortable}), someKeyboard);
  EXPECT_EQ(singlesOf(entry), (Singles{{"a", tapOf("x")}}));
  EXPECT_EQ(chordsOf(entry), (Chords{{{"b", "c"}, tapOf("y")}}));
  EXPECT_EQ(normalizationOf(entry),
            (Normalization{{"right_shift", "left_shift"}, {"right_command", "left_command"}}));
}

TEST(MappingTableDeathTest, abortsOnAnUnknownLayoutThatNamesAKeyTwice) {
  const MappingSet bound =
      setFor(someKeyboard, {padKey(4, alone({"a"})), padKey(1, {}), padKey(4, alone({"b"}))},
             {{4, tapOf("x")}});
  EXPECT_DEATH(compiled({bound}), "some device names key 4 twice");
  const MappingSet unbound = setFor(modeM, {padKey(4, {}), padKey(4, {})}, {});
  EXPECT_DEATH(compiled({unbound}), "names key 4 twice");
}

TEST(MappingTable, expandsEachOutputOnceForAllWhoFireIt) {
  const auto entry = entryFor(together({"a", "b"}));
  const CompiledOutput& output = entry.chords.front().output;
  EXPECT_EQ(*output.events(), (std::vector{words::down("out"), words::up("out")}));
  const MappingTable::CompiledIdentity copy = entry;
  EXPECT_EQ(copy.chords.front().output.events(), output.events());

  const CompiledOutput nothing(Output{Output::Sequence{}});
  ASSERT_NE(nothing.events(), nullptr);
  EXPECT_TRUE(nothing.events()->empty());
}

TEST(MappingTable, comparesEverythingItHolds) {
  const auto table = [](std::string_view single, std::string_view chordOutput, Modifier modifier) {
    return compiled(
        {setFor(someKeyboard, {padKey(1, alone({"a"})), padKey(2, together({"b", "c"}))},
                {{1, tapOf(single)}, {2, tapOf(chordOutput)}}),
         portableSet(someKeyboard, {chord({modifier}, "k")})});
  };
  const MappingTable one = table("x", "y", Modifier::command);
  EXPECT_EQ(one, table("x", "y", Modifier::command));
  EXPECT_NE(one, table("z", "y", Modifier::command));
  EXPECT_NE(one, table("x", "z", Modifier::command));
  EXPECT_NE(one, table("x", "y", Modifier::shift));
  EXPECT_NE(one, MappingTable::empty);
}

} // namespace
} // namespace trellivar
