#include "core/json/coding.h"
#include "tests/core/json/decoded.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Every way in which a document can have the wrong shape, and what is ignored.
namespace trellivar {
namespace {

using Texts = std::vector<std::string>;

constexpr auto invalidNumberOfKeys = "Invalid number of keys found, expected one.";

// One document of each kind, with every member that it can have.

constexpr auto profilesText = R"([
  {"id": "E621E1F8-C36C-495A-93FC-0C247A3E6E5F", "name": "P", "mappings": []},
  {"id": "00000000-0000-0000-0000-000000000001", "name": "M", "mappings": [
    {"fromKeyId": 1, "label": "one",
     "output": {"chord": {"modifiers": ["left_command", "left_shift"],
                          "key": {"keyCode": "mute", "kind": "consumerKeyCode"}}}},
    {"fromKeyId": 2, "label": "two",
     "output": {"sequence": {"keys": [{"keyCode": "h", "kind": "keyCode"}]}}},
    {"fromKeyId": 3, "label": "three", "output": {"modifiers": {"_0": ["right_option"]}}}
  ]}
])";

constexpr auto signaturesText = R"([
  {"vendorId": 1, "productId": 2, "modeId": "P", "keySignatures": []},
  {"vendorId": 3, "productId": 4, "modeId": "M", "keySignatures": [
    {"keyId": 1, "signature": {"codes": [{"keyCode": "f5", "kind": "keyCode"}], "isChord": true}}
  ]}
])";

constexpr auto deviceText = R"(
  {"name": "Pad", "vendorId": 1, "productId": 2, "layout": {"keys": [
    {"id": 1, "row": 2, "col": 3,
     "signature": {"codes": [{"keyCode": "f5", "kind": "keyCode"}], "isChord": true},
     "altSignatures": [{"codes": [{"keyCode": "f6", "kind": "keyCode"}], "isChord": true}]}
  ]}}
)";

void decodeProfiles(std::string_view text) { decodedList<Profile>(text); }
void decodeSignatures(std::string_view text) { decodedList<StoredDeviceSignatures>(text); }
void decodeDevice(std::string_view text) { decoded<TrellivarDevice>(text); }

enum class Type { text, integer, boolean, list, object };
enum class Presence { required, optional };

/// A place in one of the documents and what belongs there.
struct Place {
  std::string pointer; ///< RFC 6901
  std::string path;    ///< as errors call it
  Type type;
  Presence presence = Presence::required;
};

struct Document {
  std::string_view text;
  std::function<void(std::string_view)> decode;
  std::vector<Place> places; ///< elements of lists are "required", but cannot be missing
};

const std::vector<Document> documents{
    {profilesText,
     decodeProfiles,
     {
         {"", "1", Type::list},
         {"/0", "[0]", Type::object},
         {"/0/id", "[0].id", Type::text},
         {"/0/name", "[0].name", Type::text},
         {"/0/mappings", "[0].mappings", Type::list},
         {"/1", "[1]", Type::object},
         {"/1/mappings/0", "[1].mappings[0]", Type::object},
         {"/1/mappings/0/fromKeyId", "[1].mappings[0].fromKeyId", Type::integer},
         {"/1/mappings/0/label", "[1].mappings[0].label", Type::text, Presence::optional},
         {"/1/mappings/0/output", "[1].mappings[0].output", Type::object},
         {"/1/mappings/0/output/chord", "[1].mappings[0].output.chord", Type::object},
         {"/1/mappings/0/output/chord/modifiers", "[1].mappings[0].output.chord.modifiers",
          Type::list},
         {"/1/mappings/0/output/chord/modifiers/1", "[1].mappings[0].output.chord.modifiers[1]",
          Type::text},
         {"/1/mappings/0/output/chord/key", "[1].mappings[0].output.chord.key", Type::object},
         {"/1/mappings/0/output/chord/key/keyCode", "[1].mappings[0].output.chord.key.keyCode",
          Type::text},
         {"/1/mappings/0/output/chord/key/kind", "[1].mappings[0].output.chord.key.kind",
          Type::text, Presence::optional},
         {"/1/mappings/1/output/sequence", "[1].mappings[1].output.sequence", Type::object},
         {"/1/mappings/1/output/sequence/keys", "[1].mappings[1].output.sequence.keys", Type::list},
         {"/1/mappings/1/output/sequence/keys/0", "[1].mappings[1].output.sequence.keys[0]",
          Type::object},
         {"/1/mappings/1/output/sequence/keys/0/keyCode",
          "[1].mappings[1].output.sequence.keys[0].keyCode", Type::text},
         {"/1/mappings/1/output/sequence/keys/0/kind",
          "[1].mappings[1].output.sequence.keys[0].kind", Type::text, Presence::optional},
         {"/1/mappings/2", "[1].mappings[2]", Type::object},
         {"/1/mappings/2/output/modifiers", "[1].mappings[2].output.modifiers", Type::object},
         {"/1/mappings/2/output/modifiers/_0", "[1].mappings[2].output.modifiers._0", Type::list},
         {"/1/mappings/2/output/modifiers/_0/0", "[1].mappings[2].output.modifiers._0[0]",
          Type::text},
     }},
    {signaturesText,
     decodeSignatures,
     {
         {"", "1", Type::list},
         {"/0", "[0]", Type::object},
         {"/0/vendorId", "[0].vendorId", Type::integer},
         {"/0/productId", "[0].productId", Type::integer},
         {"/0/modeId", "[0].modeId", Type::text, Presence::optional},
         {"/0/keySignatures", "[0].keySignatures", Type::list},
         {"/1/keySignatures/0", "[1].keySignatures[0]", Type::object},
         {"/1/keySignatures/0/keyId", "[1].keySignatures[0].keyId", Type::integer},
         {"/1/keySignatures/0/signature", "[1].keySignatures[0].signature", Type::object},
         {"/1/keySignatures/0/signature/codes", "[1].keySignatures[0].signature.codes", Type::list},
         {"/1/keySignatures/0/signature/codes/0", "[1].keySignatures[0].signature.codes[0]",
          Type::object},
         {"/1/keySignatures/0/signature/codes/0/keyCode",
          "[1].keySignatures[0].signature.codes[0].keyCode", Type::text},
         {"/1/keySignatures/0/signature/codes/0/kind",
          "[1].keySignatures[0].signature.codes[0].kind", Type::text, Presence::optional},
         {"/1/keySignatures/0/signature/isChord", "[1].keySignatures[0].signature.isChord",
          Type::boolean, Presence::optional},
     }},
    {deviceText,
     decodeDevice,
     {
         {"", "1", Type::object},
         {"/name", "name", Type::text},
         {"/vendorId", "vendorId", Type::integer},
         {"/productId", "productId", Type::integer},
         {"/layout", "layout", Type::object},
         {"/layout/keys", "layout.keys", Type::list},
         {"/layout/keys/0", "layout.keys[0]", Type::object},
         {"/layout/keys/0/id", "layout.keys[0].id", Type::integer},
         {"/layout/keys/0/row", "layout.keys[0].row", Type::integer},
         {"/layout/keys/0/col", "layout.keys[0].col", Type::integer},
         {"/layout/keys/0/signature", "layout.keys[0].signature", Type::object},
         {"/layout/keys/0/signature/codes", "layout.keys[0].signature.codes", Type::list},
         {"/layout/keys/0/signature/isChord", "layout.keys[0].signature.isChord", Type::boolean,
          Presence::optional},
         {"/layout/keys/0/altSignatures", "layout.keys[0].altSignatures", Type::list,
          Presence::optional},
         {"/layout/keys/0/altSignatures/0", "layout.keys[0].altSignatures[0]", Type::object},
         {"/layout/keys/0/altSignatures/0/codes", "layout.keys[0].altSignatures[0].codes",
          Type::list},
         {"/layout/keys/0/altSignatures/0/isChord", "layout.keys[0].altSignatures[0].isChord",
          Type::boolean, Presence::optional},
     }},
};

template <class Visit> void forEachPlace(const Visit& visit) {
  for (const Document& document : documents) {
    for (const Place& place : document.places) {
      SCOPED_TRACE(place.pointer);
      visit(document, place);
    }
  }
}

/// The document with the value at a place replaced by a literal, which need not be valid.
std::string withValue(const Document& document, const Place& place, const std::string& literal) {
  Json json = Json::parse(document.text);
  json[Json::json_pointer(place.pointer)] = "@@@";
  std::string text = json.dump();
  return text.replace(text.find("\"@@@\""), 5, literal);
}

std::string without(const Document& document, const Place& place) {
  Json json = Json::parse(document.text);
  const Json::json_pointer pointer(place.pointer);
  json[pointer.parent_pointer()].erase(pointer.back());
  return json.dump();
}

bool isMember(const Place& place) { return !place.pointer.empty() && !place.path.ends_with(']'); }

bool isNameOfTheForm(const Place& place) {
  return place.path.ends_with("output.chord") || place.path.ends_with("output.sequence") ||
         place.path.ends_with("output.modifiers");
}

std::string expectationOf(Type type) {
  switch (type) {
  case Type::text:
    return "expected a text";
  case Type::integer:
    return "expected an integer from -2147483648 to 2147483647";
  case Type::boolean:
    return "expected true or false";
  case Type::list:
    return "expected a list";
  case Type::object:
    return "expected an object";
  }
  return {};
}

struct Literal {
  std::string text;
  std::string description;
  std::vector<Type> fits;
};

const std::vector<Literal> wrongLiterals{
    {"null", "null", {}},
    {"true", "true", {Type::boolean}},
    {"false", "false", {Type::boolean}},
    {"\"text\"", "a text", {Type::text}},
    {"\"1\"", "a text", {Type::text}},
    {"\"true\"", "a text", {Type::text}},
    {"[]", "a list", {Type::list}},
    {"[1]", "a list", {Type::list}},
    {"{}", "an object", {Type::object}},
    {"{\"0\":1}", "an object", {Type::object}},
    {"0", "the number 0", {Type::integer}},
    {"1", "the number 1", {Type::integer}},
    {"1.0", "the number 1.0", {}},
    {"1e2", "the number 100.0", {}},
    {"-0.5", "the number -0.5", {}},
    {"2147483648", "the number 2147483648", {}},
    {"-2147483649", "the number -2147483649", {}},
    {"4294967297", "the number 4294967297", {}},
    {"9223372036854775808", "the number 9223372036854775808", {}},
    {"-9223372036854775808", "the number -9223372036854775808", {}},
    {"18446744073709551617", "the number 1.8446744073709552e+19", {}},
};

TEST(Decoding, acceptsTheDocumentsOfTheseTests) {
  for (const Document& document : documents) {
    EXPECT_NO_THROW(document.decode(document.text)) << document.text;
    for (const Place& place : document.places)
      EXPECT_TRUE(Json::parse(document.text).contains(Json::json_pointer(place.pointer)))
          << place.pointer;
  }
}

TEST(Decoding, refusesValuesOfTheWrongType) {
  int refused = 0;
  forEachPlace([&](const Document& document, const Place& place) {
    for (const Literal& literal : wrongLiterals) {
      if (std::ranges::find(literal.fits, place.type) != literal.fits.end()) continue;
      if (literal.text == "null" && place.presence == Presence::optional) continue;
      SCOPED_TRACE(literal.text);
      const std::string text = withValue(document, place, literal.text);
      expectFailure([&] { document.decode(text); }, place.path,
                    expectationOf(place.type) + ", found " + literal.description);
      ++refused;
    }
  });
  EXPECT_GT(refused, 900);
}

TEST(Decoding, refusesADocumentThatLacksARequiredMember) {
  int refused = 0;
  forEachPlace([&](const Document& document, const Place& place) {
    if (!isMember(place) || place.presence == Presence::optional) return;
    const std::string text = without(document, place);
    if (isNameOfTheForm(place)) {
      const std::string output = place.path.substr(0, place.path.find_last_of('.'));
      expectFailure([&] { document.decode(text); }, output, invalidNumberOfKeys);
    } else {
      expectFailure([&] { document.decode(text); }, place.path, "missing");
    }
    ++refused;
  });
  EXPECT_EQ(refused, 32);
}

TEST(Decoding, takesNullForAbsentInEveryOptionalMember) {
  int optional = 0;
  forEachPlace([&](const Document& document, const Place& place) {
    if (place.presence == Presence::required) return;
    EXPECT_NO_THROW(document.decode(without(document, place)));
    EXPECT_NO_THROW(document.decode(withValue(document, place, "null")));
    ++optional;
  });
  EXPECT_EQ(optional, 9);
}

TEST(Decoding, givesAbsentMembersTheirDefaults) {
  const auto profile = decoded<Profile>(R"({"id": "00000000-0000-0000-0000-000000000001",
    "name": "M", "mappings": [{"fromKeyId": 1, "output": {"sequence": {"keys": [
    {"keyCode": "mute"}]}}}]})");
  EXPECT_EQ(profile.mappings.at(0),
            (KeyMapping{1, {Output::Sequence{{{KeyName("mute"), Key::Kind::keyCode}}}}, {}}));
  const auto record = decoded<StoredDeviceSignatures>(
      R"({"vendorId": 1, "productId": 2, "keySignatures": [{"keyId": 3,
          "signature": {"codes": []}}]})");
  EXPECT_EQ(record, (StoredDeviceSignatures{1, 2, {{3, {{}, false}}}, std::nullopt}));
}

/// The pointers of all objects within a document.
void collectObjects(const Json& json, const Json::json_pointer& here,
                    std::vector<Json::json_pointer>& found) {
  if (json.is_object()) {
    found.push_back(here);
    for (const auto& [key, value] : json.items())
      collectObjects(value, here / key, found);
  } else if (json.is_array()) {
    for (std::size_t i = 0; i < json.size(); ++i)
      collectObjects(json[i], here / i, found);
  }
}

/// What people may have added by hand or a later version may write.
const Json strangeMembers = Json::parse(R"({
  "": 1, "unknown": null, "Kind": "x", "keycode": 5, "ID": [], "isUSB": true, "_1": {"_0": 1e300},
  "mapping": [{"mappings": [[[18446744073709551615, -0.0]]]}], "Label": {}, "ünbekannt\n": ""
})");

template <class T> void expectStrangersToBeIgnored(std::string_view text, const T& decode) {
  const Json original = Json::parse(text);
  std::vector<Json::json_pointer> objects;
  collectObjects(original, Json::json_pointer(), objects);
  ASSERT_GE(objects.size(), 5U);
  Json everywhere = original;
  for (const auto& object : objects) {
    Json one = original;
    one[object].update(strangeMembers);
    everywhere[object].update(strangeMembers);
    EXPECT_EQ(decode(one.dump()), decode(text)) << object.to_string();
  }
  EXPECT_EQ(decode(everywhere.dump()), decode(text));
}

TEST(Decoding, ignoresUnknownKeysEverywhere) {
  expectStrangersToBeIgnored(profilesText, decodedList<Profile>);
  expectStrangersToBeIgnored(signaturesText, decodedList<StoredDeviceSignatures>);
  expectStrangersToBeIgnored(deviceText, decoded<TrellivarDevice>);
}

TEST(Decoding, refusesRepeatedKeysEvenWhereTheyWouldBeIgnored) {
  const auto* const reason = "the key is there twice";
  expectFailure([] { decodeProfiles(R"([{"id":"x","id":"y"}])"); }, "[0].id", reason);
  expectFailure([] { decodeProfiles(R"([{},{"x":{"y":[0,{"z":1,"z":1}]}}])"); }, "[1].x.y[1].z",
                reason);
  expectFailure(
      [] {
        decodeProfiles(R"([{"mappings":[{"output":{"chord":{"key":{"keyCode":"a",
    "kind":"keyCode","keyCode":"a"}}}}]}])");
      },
      "[0].mappings[0].output.chord.key.keyCode", reason);
  expectFailure([] { decodeProfiles(R"([{"a b":1,"a b":2}])"); }, R"([0]["a b"])", reason);
}

TEST(Decoding, refusesEndlessNumbersAndBrokenTextsEvenWhereTheyWouldBeIgnored) {
  expectFailure([] { decodeProfiles("[\n{\"x\":\n1e400}]"); }, "3",
                "number overflow parsing '1e400'");
  for (const char* value : {"\"\xFF\"", R"("\ud800")", "{\"\xED\xA0\x80\":1}"}) {
    const auto error =
        decodingErrorOf([&] { decodeProfiles("[\n{\"x\":" + std::string(value) + "}]"); });
    EXPECT_EQ(error.where(), "2");
    EXPECT_FALSE(error.isAtPath());
  }
}

// Outputs

std::string objectOf(const Texts& members) {
  std::string text;
  for (const std::string& member : members)
    text += (text.empty() ? "" : ",") + member;
  return "{" + text + "}";
}

TEST(OutputDecoding, refusesAnyNumberOfFormsButOne) {
  const std::string chord = R"("chord":{"modifiers":[],"key":{"keyCode":"a"}})";
  const std::string sequence = R"("sequence":{"keys":[]})";
  const std::string modifiers = R"("modifiers":{"_0":[]})";
  const std::string unknown = R"("Chord":{},"unknown":null)";
  for (const Texts& members : std::vector<Texts>{{},
                                                 {unknown},
                                                 {chord, sequence},
                                                 {sequence, modifiers},
                                                 {modifiers, chord},
                                                 {chord, sequence, modifiers},
                                                 {chord, R"("sequence":null)"}}) {
    expectFailure<Output>(objectOf(members), "1", invalidNumberOfKeys);
  }
  for (const std::string& member : {chord, sequence, modifiers}) {
    EXPECT_NO_THROW(decoded<Output>(objectOf({member})));
    EXPECT_NO_THROW(decoded<Output>(objectOf({member, unknown})));
  }
}

TEST(OutputDecoding, tellsWhichMappingHasTheWrongNumberOfForms) {
  const std::string good = R"({"fromKeyId":1,"output":{"modifiers":{"_0":[]}}})";
  const std::string bad =
      R"({"fromKeyId":3,"output":{"chord":{"modifiers":[],"key":{"keyCode":"a"}},)"
      R"("sequence":{"keys":[]}}})";
  const std::string text =
      R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"P","mappings":[)" + good + "," +
      good + "," + bad + "]}]";
  const DecodingError error = decodingErrorOf([&] { decodeProfiles(text); });
  EXPECT_EQ(error.where(), "[0].mappings[2].output");
  EXPECT_TRUE(error.isAtPath());
  EXPECT_STREQ(error.what(), "[0].mappings[2].output: Invalid number of keys found, expected one.");
}

TEST(OutputDecoding, refusesUnknownModifiers) {
  const auto expectUnknown = [](const std::string& literal, const std::string& shown) {
    expectFailure<Output>(R"({"modifiers":{"_0":["left_shift",)" + literal + "]}}",
                          "modifiers._0[1]", "unknown modifier " + shown);
  };
  for (const char* name : {R"("")", R"("command")", R"("Left_command")", R"("left_command ")",
                           R"("a")", R"("⌘")", R"("two\nlines\u001b")"}) {
    expectUnknown(name, name);
  }
  expectUnknown(R"("left_command\u0000")", R"("left_command\u0000")");
}

// Keys

TEST(KeyDecoding, refusesUnknownKinds) {
  for (const char* kind : {R"("")", R"("keycode")", R"("KeyCode")", R"("consumer")",
                           R"("pointingButton ")", R"("0")", R"("\n")"}) {
    expectFailure<Key>(R"({"keyCode":"a","kind":)" + std::string(kind) + "}", "kind",
                       "unknown kind of key " + std::string(kind));
  }
}

TEST(KeyDecoding, tellsWhichCodeOfASignatureIsWrong) {
  expectFailure<KeySignature>(R"({"codes":[{"keyCode":"a"},{"keyCode":"b","kind":"c"}]})",
                              "codes[1].kind", R"(unknown kind of key "c")");
}

// Profiles

TEST(ProfileDecoding, refusesAnIdThatIsNoUuid) {
  for (const char* id :
       {"", "P", "E621E1F8C36C495A93FC0C247A3E6E5F", "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}",
        "E621E1F8-C36C-495A-93FC-0C247A3E6E5", "G621E1F8-C36C-495A-93FC-0C247A3E6E5F"}) {
    const std::string text = R"([{"id":")" + std::string(id) + R"(","name":"P","mappings":[]}])";
    expectFailure([&] { decodeProfiles(text); }, "[0].id", "expected a UUID of 36 characters");
  }
}

TEST(ProfileDecoding, refusesTheWholeListForOneBadProfile) {
  const std::string good =
      R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"P","mappings":[]})";
  expectFailure([&] { decodeProfiles("[" + good + "," + good + ",{}]"); }, "[2].id", "missing");
}

TEST(ProfileDecoding, acceptsListsThatOnlyMeanSomethingStrange) {
  const std::string profile =
      R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"","mappings":[)"
      R"({"fromKeyId":1,"output":{"modifiers":{"_0":[]}}},)"
      R"({"fromKeyId":1,"output":{"sequence":{"keys":[]}}}]})";
  EXPECT_EQ(decodedList<Profile>("[" + profile + "," + profile + "]").size(), 2U);
}

// Depth

TEST(Decoding, refusesNestingAHundredThousandDeepWherever) {
  const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
  const auto* const reason = "nested more than 256 levels deep";
  expectFailure([&] { decodeProfiles("[\n{\"x\":" + deep + "}]"); }, "2", reason);
  expectFailure([&] { decodeSignatures("[{\"keySignatures\":" + deep + "}]"); }, "1", reason);
  expectFailure([&] { decodeDevice("{\"layout\":" + deep); }, "1", reason);
}

} // namespace
} // namespace trellivar
