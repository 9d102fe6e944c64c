#include "core/json/coding.h"
#include "tests/core/json/decoded.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <climits>
#include <string>
#include <string_view>
#include <vector>

/// What the types of the model look like as JSON, and that they come back equal. What is refused is
/// the matter of coding_failure_test.cpp.
namespace trellivar {
namespace {

using Kind = Key::Kind;

Key key(std::string_view name, Kind kind = Kind::keyCode) { return {KeyName(name), kind}; }

const UUID someId = UUID::fromText("e621e1f8-c36c-495a-93fc-0c247a3e6e5f").value();

/// The value is written as exactly this text, and reads back equal from it.
template <class T> void expectForm(const T& value, std::string_view text) {
  EXPECT_EQ(encode(value).dump(), text);
  EXPECT_EQ(decoded<T>(text), value) << text;
}

// Modifier

TEST(ModifierCoding, writesTheRawValue) {
  expectForm<Modifier>(Modifier::command, R"("left_command")");
  expectForm<Modifier>(Modifier::shift, R"("left_shift")");
  expectForm<Modifier>(Modifier::control, R"("left_control")");
  expectForm<Modifier>(Modifier::option, R"("left_option")");
  expectForm<Modifier>(Modifier::rightCommand, R"("right_command")");
  expectForm<Modifier>(Modifier::rightShift, R"("right_shift")");
  expectForm<Modifier>(Modifier::rightControl, R"("right_control")");
  expectForm<Modifier>(Modifier::rightOption, R"("right_option")");
}

// Key

TEST(KeyCoding, leavesOutTheKindOfAPlainKey) {
  expectForm(key("a"), R"({"keyCode":"a"})");
  expectForm(key("left_command"), R"({"keyCode":"left_command"})");
}

TEST(KeyCoding, writesEveryOtherKind) {
  expectForm(key("mute", Kind::consumerKeyCode), R"({"keyCode":"mute","kind":"consumerKeyCode"})");
  expectForm(key("button3", Kind::pointingButton),
             R"({"keyCode":"button3","kind":"pointingButton"})");
  expectForm(key("fn", Kind::unmappable), R"({"keyCode":"fn","kind":"unmappable"})");
}

TEST(KeyCoding, readsAPlainKeyWithItsKindSpelledOut) {
  EXPECT_EQ(decoded<Key>(R"({"keyCode":"a","kind":"keyCode"})"), key("a"));
}

TEST(KeyCoding, takesAnAbsentKindForAPlainKey) {
  EXPECT_EQ(decoded<Key>(R"({"keyCode":"mute"})"), key("mute"));
  EXPECT_EQ(decoded<Key>(R"({"keyCode":"mute","kind":null})"), key("mute"));
}

TEST(KeyCoding, acceptsAnyTextForAName) {
  expectForm(key(""), R"({"keyCode":""})");
  expectForm(key("no such key"), R"({"keyCode":"no such key"})");
  expectForm(key("é\n\"⌘"), R"({"keyCode":"é\n\"⌘"})");
}

TEST(KeyCoding, doesNotMatchTheKindToTheName) {
  expectForm(key("a", Kind::pointingButton), R"({"keyCode":"a","kind":"pointingButton"})");
}

// Output

TEST(OutputCoding, writesAChord) {
  expectForm(Output{Output::Chord{{Modifier::command, Modifier::shift}, key("c")}},
             R"({"chord":{"key":{"keyCode":"c"},"modifiers":["left_command","left_shift"]}})");
}

TEST(OutputCoding, writesAChordWithoutModifiersWithAllItsMembers) {
  expectForm(Output{Output::Chord{{}, key("mute", Kind::consumerKeyCode)}},
             R"({"chord":{"key":{"keyCode":"mute","kind":"consumerKeyCode"},"modifiers":[]}})");
}

TEST(OutputCoding, writesASequence) {
  expectForm(Output{Output::Sequence{{key("h"), key("i")}}},
             R"({"sequence":{"keys":[{"keyCode":"h"},{"keyCode":"i"}]}})");
  expectForm(Output{Output::Sequence{{key("h")}}}, R"({"sequence":{"keys":[{"keyCode":"h"}]}})");
  expectForm(Output{Output::Sequence{}}, R"({"sequence":{"keys":[]}})");
}

TEST(OutputCoding, writesModifiersAlone) {
  expectForm(Output{Output::Modifiers{{Modifier::rightOption}}},
             R"({"modifiers":{"_0":["right_option"]}})");
  expectForm(Output{Output::Modifiers{{Modifier::shift, Modifier::command}}},
             R"({"modifiers":{"_0":["left_shift","left_command"]}})");
}

TEST(OutputCoding, readsAnOutputWithoutModifiers) {
  expectForm(Output{Output::Modifiers{}}, R"({"modifiers":{"_0":[]}})");
}

TEST(OutputCoding, keepsRepeatedModifiersAndKeys) {
  expectForm(Output{Output::Modifiers{{Modifier::shift, Modifier::shift}}},
             R"({"modifiers":{"_0":["left_shift","left_shift"]}})");
  expectForm(Output{Output::Sequence{{key("a"), key("a")}}},
             R"({"sequence":{"keys":[{"keyCode":"a"},{"keyCode":"a"}]}})");
}

// KeySignature

TEST(KeySignatureCoding, alwaysWritesBothMembers) {
  expectForm(KeySignature{{key("f5")}, false}, R"({"codes":[{"keyCode":"f5"}],"isChord":false})");
  expectForm(KeySignature{{key("left_control"), key("f")}, true},
             R"({"codes":[{"keyCode":"left_control"},{"keyCode":"f"}],"isChord":true})");
  expectForm(KeySignature{}, R"({"codes":[],"isChord":false})");
}

TEST(KeySignatureCoding, takesAnAbsentChordFlagForASingleKey) {
  const KeySignature single{{key("a"), key("b")}, false};
  EXPECT_EQ(decoded<KeySignature>(R"({"codes":[{"keyCode":"a"},{"keyCode":"b"}]})"), single);
  EXPECT_EQ(decoded<KeySignature>(R"({"codes":[{"keyCode":"a"},{"keyCode":"b"}],"isChord":null})"),
            single);
}

// PhysicalKey and KeyLayout

TEST(PhysicalKeyCoding, leavesOutAlternativesWhenThereAreNone) {
  expectForm(PhysicalKey{2, 0, 1, {{key("left_control"), key("left_option"), key("f")}, true}, {}},
             R"({"col":1,"id":2,"row":0,"signature":{"codes":[{"keyCode":"left_control"},)"
             R"({"keyCode":"left_option"},{"keyCode":"f"}],"isChord":true}})");
}

TEST(PhysicalKeyCoding, writesAlternativesInOrder) {
  expectForm(PhysicalKey{1, 0, 0, {}, {{{key("b")}, false}, {{key("a")}, false}}},
             R"({"altSignatures":[{"codes":[{"keyCode":"b"}],"isChord":false},)"
             R"({"codes":[{"keyCode":"a"}],"isChord":false}],)"
             R"("col":0,"id":1,"row":0,"signature":{"codes":[],"isChord":false}})");
}

TEST(PhysicalKeyCoding, takesAbsentAlternativesForNone) {
  const PhysicalKey expected{1, 2, 3, {}, {}};
  for (const char* alternatives : {"", R"(,"altSignatures":null)", R"(,"altSignatures":[])"}) {
    const std::string text =
        R"({"id":1,"row":2,"col":3,"signature":{"codes":[]})" + std::string(alternatives) + "}";
    EXPECT_EQ(decoded<PhysicalKey>(text), expected) << text;
  }
}

TEST(PhysicalKeyCoding, writesIntegersOfTheWholeRange) {
  expectForm(PhysicalKey{INT_MIN, INT_MAX, -1, {}, {}},
             R"({"col":-1,"id":-2147483648,"row":2147483647,)"
             R"("signature":{"codes":[],"isChord":false}})");
}

TEST(PhysicalKeyCoding, readsAnExampleWithItsMembersInAnyOrder) {
  EXPECT_EQ(
      decoded<PhysicalKey>(
          R"({"id":2,"row":0,"col":1,"signature":{"isChord":true,"codes":[{"keyCode":"f"}]}})"),
      (PhysicalKey{2, 0, 1, {{key("f")}, true}, {}}));
}

TEST(KeyLayoutCoding, alwaysWritesItsKeys) {
  expectForm(KeyLayout{}, R"({"keys":[]})");
  expectForm(KeyLayout{{{1, 0, 0, {}, {}}}},
             R"({"keys":[{"col":0,"id":1,"row":0,"signature":{"codes":[],"isChord":false}}]})");
}

// TrellivarDevice

TEST(TrellivarDeviceCoding, writesItsFourMembers) {
  expectForm(TrellivarDevice{"Orlo3", 0x4C4A, 0x4155, {}},
             R"({"layout":{"keys":[]},"name":"Orlo3","productId":16725,"vendorId":19530})");
}

// KeyMapping and Profile

const Output tapA{Output::Sequence{{key("a")}}};

TEST(KeyMappingCoding, leavesOutALabelThatIsNotSet) {
  expectForm(KeyMapping{1, tapA, std::nullopt},
             R"({"fromKeyId":1,"output":{"sequence":{"keys":[{"keyCode":"a"}]}}})");
}

TEST(KeyMappingCoding, writesALabelThatIsSetEvenIfItIsEmpty) {
  expectForm(KeyMapping{1, tapA, "Copy"},
             R"({"fromKeyId":1,"label":"Copy","output":{"sequence":{"keys":[{"keyCode":"a"}]}}})");
  expectForm(KeyMapping{1, tapA, ""},
             R"({"fromKeyId":1,"label":"","output":{"sequence":{"keys":[{"keyCode":"a"}]}}})");
}

TEST(KeyMappingCoding, takesANullLabelForNone) {
  EXPECT_EQ(decoded<KeyMapping>(
                R"({"fromKeyId":1,"label":null,"output":{"sequence":{"keys":[{"keyCode":"a"}]}}})"),
            (KeyMapping{1, tapA, std::nullopt}));
}

TEST(ProfileCoding, writesAnEmptyListOfMappings) {
  expectForm(Profile{someId, "P", {}},
             R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","mappings":[],"name":"P"})");
}

TEST(ProfileCoding, writesItsMappingsInOrder) {
  expectForm(Profile{someId, "⌘ R", {{2, {Output::Modifiers{}}, "b"}, {1, tapA, std::nullopt}}},
             R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","mappings":[)"
             R"({"fromKeyId":2,"label":"b","output":{"modifiers":{"_0":[]}}},)"
             R"({"fromKeyId":1,"output":{"sequence":{"keys":[{"keyCode":"a"}]}}}],)"
             R"("name":"⌘ R"})");
}

TEST(ProfileCoding, readsAnIdInLowerCase) {
  EXPECT_EQ(
      decoded<Profile>(R"({"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f","mappings":[],"name":"P"})")
          .id,
      someId);
}

// StoredDeviceSignatures

TEST(StoredSignaturesCoding, leavesOutAModeThatIsNotSet) {
  expectForm(StoredDeviceSignatures{1452, 544, {}, std::nullopt},
             R"({"keySignatures":[],"productId":544,"vendorId":1452})");
}

TEST(StoredSignaturesCoding, writesAModeThatIsSetEvenIfItIsEmpty) {
  expectForm(StoredDeviceSignatures{1452, 544, {}, "M"},
             R"({"keySignatures":[],"modeId":"M","productId":544,"vendorId":1452})");
  expectForm(StoredDeviceSignatures{1452, 544, {}, ""},
             R"({"keySignatures":[],"modeId":"","productId":544,"vendorId":1452})");
}

TEST(StoredSignaturesCoding, takesANullModeForNone) {
  EXPECT_EQ(decoded<StoredDeviceSignatures>(
                R"({"keySignatures":[],"modeId":null,"productId":544,"vendorId":1452})"),
            (StoredDeviceSignatures{1452, 544, {}, std::nullopt}));
}

TEST(StoredSignaturesCoding, writesTheLearnedKeysInOrder) {
  expectForm(
      StoredDeviceSignatures{1, 2, {{3, {{key("f")}, false}}, {1, {}}}, "R"},
      R"({"keySignatures":[{"keyId":3,"signature":{"codes":[{"keyCode":"f"}],"isChord":false}},)"
      R"({"keyId":1,"signature":{"codes":[],"isChord":false}}],)"
      R"("modeId":"R","productId":2,"vendorId":1})");
}

// Files

TEST(PrettyPrinted, indentsByTwoSortsKeysAndEndsWithANewline) {
  const std::vector<Profile> profiles{
      {someId,
       "P",
       {{1, {Output::Chord{{Modifier::command}, key("mute", Kind::consumerKeyCode)}}, "é ⌘"}}},
      {UUID(), "a/b\n", {}}};
  EXPECT_EQ(prettyPrinted(encodeList(profiles)), R"([
  {
    "id": "E621E1F8-C36C-495A-93FC-0C247A3E6E5F",
    "mappings": [
      {
        "fromKeyId": 1,
        "label": "é ⌘",
        "output": {
          "chord": {
            "key": {
              "keyCode": "mute",
              "kind": "consumerKeyCode"
            },
            "modifiers": [
              "left_command"
            ]
          }
        }
      }
    ],
    "name": "P"
  },
  {
    "id": "00000000-0000-0000-0000-000000000000",
    "mappings": [],
    "name": "a/b\n"
  }
]
)");
}

TEST(PrettyPrinted, writesAnEmptyListOnOneLine) {
  EXPECT_EQ(prettyPrinted(encodeList(std::vector<Profile>{})), "[]\n");
}

TEST(PrettyPrinted, replacesBytesThatAreNotUtf8RatherThanFailing) {
  const std::vector<Profile> profiles{{UUID(), "a\xFFz\xE2\x8C", {}}};
  const std::string text = prettyPrinted(encodeList(profiles));
  EXPECT_EQ(decodedList<Profile>(text).at(0).name, "a\uFFFDz\uFFFD");
}

// Round trips

/// The value comes back from its text, compact and as in a file, and is then written the same.
template <class T> void expectRoundTrip(const T& value) {
  const std::string text = encode(value).dump();
  const T copy = decoded<T>(text);
  RC_ASSERT(copy == value);
  RC_ASSERT(encode(copy).dump() == text);
  RC_ASSERT(decoded<T>(prettyPrinted(encode(value))) == value);
}

RC_GTEST_PROP(ModifierCoding, bringsEveryValueBack, (Modifier value)) { expectRoundTrip(value); }
RC_GTEST_PROP(KeyCoding, bringsEveryValueBack, (const Key& value)) { expectRoundTrip(value); }
RC_GTEST_PROP(OutputCoding, bringsEveryValueBack, (const Output& value)) { expectRoundTrip(value); }
RC_GTEST_PROP(KeySignatureCoding, bringsEveryValueBack, (const KeySignature& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(PhysicalKeyCoding, bringsEveryValueBack, (const PhysicalKey& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(KeyLayoutCoding, bringsEveryValueBack, (const KeyLayout& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(TrellivarDeviceCoding, bringsEveryValueBack, (const TrellivarDevice& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(KeyMappingCoding, bringsEveryValueBack, (const KeyMapping& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(ProfileCoding, bringsEveryValueBack, (const Profile& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(StoredSignaturesCoding, bringsEveryKeyBack, (const StoredKeySignature& value)) {
  expectRoundTrip(value);
}
RC_GTEST_PROP(StoredSignaturesCoding, bringsEveryValueBack, (const StoredDeviceSignatures& value)) {
  expectRoundTrip(value);
}

RC_GTEST_PROP(ProfileCoding, bringsListsBackInOrder, ()) {
  const auto profiles = *generate::upTo<Profile>(5);
  RC_ASSERT(decodedList<Profile>(prettyPrinted(encodeList(profiles))) == profiles);
}

/// The optional members that are present, to check that absence is never written as null.
bool holdsNull(const Json& json) {
  if (json.is_null()) return true;
  return json.is_structured() && std::ranges::any_of(json, holdsNull);
}

RC_GTEST_PROP(ProfileCoding, writesNoNull, (const Profile& value)) {
  RC_ASSERT(!holdsNull(encode(value)));
}
RC_GTEST_PROP(StoredSignaturesCoding, writesNoNull, (const StoredDeviceSignatures& value)) {
  RC_ASSERT(!holdsNull(encode(value)));
}

} // namespace
} // namespace trellivar
