#include "core/json/coding.h"
#include "core/json/parse_json.h"
#include "tests/core/json/decoded.h"
#include "tests/support/generators.h"
#include "tests/support/plain_utf8.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::string repeated(std::string_view piece, int times) {
  std::string text;
  for (int i = 0; i < times; ++i)
    text += piece;
  return text;
}

void expectRefusal(std::string_view text, std::string_view where, std::string_view reason) {
  SCOPED_TRACE(testing::PrintToString(text.substr(0, 200)));
  expectFailure([&] { static_cast<void>(parseJson(text)); }, where, reason);
}

/// The line at which the text stops being JSON; the reason is the library's.
std::string brokenLine(std::string_view text) {
  const DecodingError error = decodingErrorOf([&] { static_cast<void>(parseJson(text)); });
  EXPECT_FALSE(error.isAtPath()) << error.what();
  EXPECT_FALSE(error.reason().empty());
  return error.where();
}

// What is accepted

TEST(ParseJson, readsEveryKindOfValue) {
  EXPECT_EQ(parseJson("null"), Json(nullptr));
  EXPECT_EQ(parseJson("true"), Json(true));
  EXPECT_EQ(parseJson("-12"), Json(-12));
  EXPECT_EQ(parseJson("1.5e3"), Json(1500.0));
  EXPECT_EQ(parseJson(R"("\u0041\n\ud83d\ude00⌘")"), Json("A\n😀⌘"));
  EXPECT_EQ(parseJson("[]"), Json::array());
  EXPECT_EQ(parseJson("{}"), Json::object());
  const Json nested = parseJson(R"( {"a" : [1, {"b": []}, [2,3]], "c":{"d":{}}, "e":null} )");
  EXPECT_EQ(nested.dump(), R"({"a":[1,{"b":[]},[2,3]],"c":{"d":{}},"e":null})");
}

TEST(ParseJson, tellsWholeNumbersFromOthers) {
  EXPECT_TRUE(parseJson("1").is_number_integer());
  EXPECT_TRUE(parseJson("1.0").is_number_float());
  EXPECT_TRUE(parseJson("1e2").is_number_float());
  EXPECT_TRUE(parseJson("18446744073709551615").is_number_unsigned());
  EXPECT_TRUE(parseJson("18446744073709551616").is_number_float());
}

TEST(ParseJson, acceptsWhiteSpaceAndALineEndAroundTheDocument) {
  EXPECT_EQ(parseJson("\r\n\t [1]\r\n\r\n"), Json({1}));
}

TEST(ParseJson, acceptsAByteOrderMark) {
  EXPECT_EQ(parseJson("\xEF\xBB\xBF[1]"), Json({1}));
  EXPECT_EQ(brokenLine("\xEF\xBB\xBF[\n1,\n"), "2");
}

TEST(ParseJson, acceptsEqualKeysOfDifferentObjects) {
  const auto text = R"([{"a":{"a":1}},{"a":[{"a":1},{"a":2}]}])"sv;
  EXPECT_EQ(parseJson(text).dump(), text);
}

TEST(ParseJson, acceptsKeysThatDifferByCaseOrComposition) {
  EXPECT_EQ(parseJson(R"({"a":1,"A":2," a":3,"é":4,"e\u0301":5})").size(), 5U);
}

// Repeated keys

TEST(ParseJson, refusesAKeyThatIsThereTwice) {
  const auto* const reason = "the key is there twice";
  expectRefusal(R"({"a":1,"a":1})", "a", reason);
  expectRefusal(R"({"a":1,"b":2,"a":null})", "a", reason);
  expectRefusal(R"([{"id":1,"id":2}])", "[0].id", reason);
  expectRefusal(R"([{},[],{"a":1,"a":2}])", "[2].a", reason);
  expectRefusal(R"([[0,[0,0,{"a":1,"a":2}]]])", "[0][1][2].a", reason);
  expectRefusal(R"({"a":{"b":[0,{"c":1,"c":2}]}})", "a.b[1].c", reason);
}

TEST(ParseJson, refusesAKeyThatComesAgainAfterItsObjectOrList) {
  const auto* const reason = "the key is there twice";
  expectRefusal(R"({"a":{"b":1},"a":2})", "a", reason);
  expectRefusal(R"({"a":[{"a":[]}],"a":2})", "a", reason);
  expectRefusal(R"({"a":[1,[2]],"b":[{"c":{},"d":[{}],"c":1}]})", "b[0].c", reason);
  expectRefusal(R"({"x":{"y":{}},"z":{"y":{"k":0,"l":[],"k":0}}})", "z.y.k", reason);
}

TEST(ParseJson, refusesAKeyThatIsThereTwiceInDifferentSpelling) {
  expectRefusal(R"({"ab":1,"\u0061b":2})", "ab", "the key is there twice");
}

TEST(ParseJson, quotesARepeatedKeyThatIsNoPlainWord) {
  const auto* const reason = "the key is there twice";
  expectRefusal(R"([{"":1,"":2}])", R"([0][""])", reason);
  expectRefusal(R"({"a b":[{"c.d":1,"c.d":2}]})", R"(["a b"][0]["c.d"])", reason);
  expectRefusal(R"({"a\nb":1,"a\nb":2})", R"(["a\nb"])", reason);
  expectRefusal(R"({"⌘":1,"⌘":2})", R"(["\u2318"])", reason);
  expectRefusal(R"({"a\"]":1,"a\"]":2})", R"(["a\"]"])", reason);
}

TEST(ParseJson, reportsWhicheverErrorComesFirst) {
  expectRefusal(R"({"a":1,"a":2,)"
                "\n}",
                "a", "the key is there twice");
  EXPECT_EQ(brokenLine("{\"a\":1,\n]\"a\":2}"), "2");
}

// Depth

constexpr auto tooDeep = "nested more than 256 levels deep"sv;

TEST(ParseJson, acceptsNestingToTheLimit) {
  const std::string lists = repeated("[", maxJsonDepth) + repeated("]", maxJsonDepth);
  const std::string objects = repeated("{\"a\":", maxJsonDepth) + "1" + repeated("}", maxJsonDepth);
  EXPECT_EQ(parseJson(lists).dump(), lists);
  EXPECT_EQ(parseJson(objects).dump(), objects);
}

TEST(ParseJson, refusesOneLevelMore) {
  expectRefusal(repeated("[", maxJsonDepth + 1) + repeated("]", maxJsonDepth + 1), "1", tooDeep);
  expectRefusal(repeated("{\"a\":", maxJsonDepth + 1) + "1" + repeated("}", maxJsonDepth + 1), "1",
                tooDeep);
}

TEST(ParseJson, countsTheDepthNotTheNumberOfBrackets) {
  EXPECT_EQ(parseJson("[" + repeated("[[]],", 10'000) + "{}]").size(), 10'001U);
}

TEST(ParseJson, refusesNestingAHundredThousandDeep) {
  constexpr int depth = 100'000;
  expectRefusal(repeated("[", depth) + repeated("]", depth), "1", tooDeep);
  expectRefusal(repeated("{\"a\":", depth) + "1" + repeated("}", depth), "1", tooDeep);
  expectRefusal(repeated("[{\"a\":", depth) + "1" + repeated("}]", depth), "1", tooDeep);
  expectRefusal(repeated("[", depth), "1", tooDeep);
  expectRefusal(repeated("{\"a\":", depth), "1", tooDeep);
  expectRefusal("{\"ignored\":" + repeated("[", depth) + repeated("]", depth) + "}", "1", tooDeep);
}

TEST(ParseJson, tellsTheLineWhereNestingGoesTooDeep) {
  const std::string text = "[\n" + repeated("[", 200) + "\n" + repeated("[", 200) + "\n]";
  expectRefusal(text, "3", tooDeep);
}

TEST(ParseJson, countsNoBracketsWithinTexts) {
  const std::string brackets = repeated("[{", 1000);
  EXPECT_EQ(parseJson("\"" + brackets + "\""), Json(brackets));
  EXPECT_EQ(parseJson(R"(["\"[\\",")" + brackets + R"("])"), Json({"\"[\\", brackets}));
  EXPECT_EQ(parseJson("{\"" + brackets + "\":1}"), Json({{brackets, 1}}));
  expectRefusal(R"(["\\",)" + repeated("[", 300), "1", tooDeep);
}

TEST(ParseJson, survivesSurplusClosingBrackets) {
  EXPECT_EQ(brokenLine(repeated("]", 1000) + repeated("[", 1000)), "1");
}

// Broken text and its lines

TEST(ParseJson, refusesAnEmptyDocument) {
  EXPECT_EQ(brokenLine(""), "1");
  EXPECT_EQ(brokenLine(" "), "1");
  EXPECT_EQ(brokenLine("\n"), "1");
  EXPECT_EQ(brokenLine("\n\n"), "2");
  EXPECT_EQ(brokenLine("\xEF\xBB\xBF"), "1");
}

TEST(ParseJson, tellsTheLineOfTheError) {
  EXPECT_EQ(brokenLine("x"), "1");
  EXPECT_EQ(brokenLine("[\n1,\nx\n]\n"), "3");
  EXPECT_EQ(brokenLine("[\n1,\n2 3\n]\n"), "3");
  EXPECT_EQ(brokenLine("[\n1,\n2\n3\n]\n"), "4");
  EXPECT_EQ(brokenLine("{\n\"a\":1,\n}\n"), "3");
  EXPECT_EQ(brokenLine("{\n\"a\" 1\n}\n"), "2");
  EXPECT_EQ(brokenLine("[\n1,\n]\n"), "3");
  EXPECT_EQ(brokenLine("[\n1\n]\n]\n"), "4");
  EXPECT_EQ(brokenLine("[\n1\n}\n"), "3");
  EXPECT_EQ(brokenLine("[\r\n1,\r\nnul\r\n]"), "3");
  EXPECT_EQ(brokenLine("[\n\"a\nb\"]\n"), "2");
  EXPECT_EQ(brokenLine("[\n\n\"\\x\"\n]"), "3");
  EXPECT_EQ(brokenLine("[\n1,\n1e400\n]\n"), "3");
  EXPECT_EQ(brokenLine("[\n1,\n\"\xFF\"\n]\n"), "3");
  EXPECT_EQ(brokenLine("[\n1,\n01\n]\n"), "3");
}

TEST(ParseJson, tellsTheLastLineOfADocumentThatIsCutOff) {
  EXPECT_EQ(brokenLine("["), "1");
  EXPECT_EQ(brokenLine("[\n"), "1");
  EXPECT_EQ(brokenLine("[\n1,"), "2");
  EXPECT_EQ(brokenLine("[\n1,\n"), "2");
  EXPECT_EQ(brokenLine("[\n1,\n\n"), "3");
  EXPECT_EQ(brokenLine("[\n1,\r\n"), "2");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n\"te"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\ntru"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n-"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n1."), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n12"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n12\n"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n\"\xE2\x8C"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n\"\\u00"), "3");
  EXPECT_EQ(brokenLine("[\n{\"a\":\n\"\\"), "3");
}

TEST(ParseJson, refusesADocumentCutOffAnywhere) {
  const auto text = R"([{"a":[true,null,-1.5e3,"b\n⌘"],"c":{}}])"sv;
  ASSERT_NO_THROW(parseJson(text));
  for (std::size_t length = 0; length < text.size(); ++length)
    EXPECT_EQ(brokenLine(text.substr(0, length)), "1") << length;
}

TEST(ParseJson, refusesAnythingAfterTheDocument) {
  for (const std::string_view garbage : {"x"sv, "]"sv, ","sv, "{}"sv, "1"sv, "\0"sv, "\0x"sv,
                                         "\x1A"sv, "// done"sv, "\xEF\xBB\xBF"sv, "\xFF"sv}) {
    EXPECT_EQ(brokenLine("[1]\n" + std::string(garbage)), "2") << testing::PrintToString(garbage);
  }
}

TEST(ParseJson, refusesAByteOfValueZeroAnywhere) {
  EXPECT_EQ(brokenLine("\0"sv), "1");
  EXPECT_EQ(brokenLine("\0[1]"sv), "1");
  EXPECT_EQ(brokenLine("[\n1\0]"sv), "2");
  EXPECT_EQ(brokenLine("[1]\n\n\0"sv), "3");
  EXPECT_EQ(brokenLine("[1]\n[\0\n\n"sv), "2");
  EXPECT_EQ(brokenLine("[\n\"a\0b\"]"sv), "2");
  expectRefusal("[1]\n\0[2]"sv, "2", "a byte of value zero");
}

TEST(ParseJson, refusesWhatOnlyResemblesJson) {
  for (const char* text :
       {"{a:1}",     "{'a':1}",  "['a']", "[1,]",      "[,1]",      "{\"a\":1,}", "{\"a\"}",
        "{1:2}",     "{\"a\":}", "[1 2]", "// c\n1",   "/* c */ 1", "NaN",        "Infinity",
        "-Infinity", "True",     "nil",   "undefined", "+1",        "01",         "-01",
        ".5",        "5.",       "1e",    "1e+",       "0x10",      "1_000",      "- 1",
        "--1",       "\"a",      "a\"",   "\"\t\"",    R"("\a")",   R"("\u12")",  R"("\u12G4")",
        "[",         "]",        "{",     "}",         ":",         ",",          R"("a" "b")"}) {
    const DecodingError error = decodingErrorOf([&] { static_cast<void>(parseJson(text)); });
    EXPECT_FALSE(error.isAtPath()) << error.what();
  }
}

TEST(ParseJson, refusesNumbersThatNoDoubleHolds) {
  expectRefusal("1e400", "1", "number overflow parsing '1e400'");
  expectRefusal("[\n-1e400]", "2", "number overflow parsing '-1e400'");
  EXPECT_EQ(brokenLine(repeated("9", 400)), "1");
}

TEST(ParseJson, refusesLoneSurrogates) {
  for (const char* text :
       {R"("\ud800")", R"("\udfff")", R"("\ud800a")", R"("\ud800\n")", R"("\ud800\u0041")",
        R"("\ud800\ud800")", R"("\udc00\ud800")", R"({"\ud83d":1})"}) {
    EXPECT_EQ(brokenLine(text), "1") << text;
  }
}

TEST(ParseJson, refusesBytesThatAreNotUtf8) {
  for (const auto& text :
       {"\"\x80\""s, "\"\xC0\x80\""s, "\"\xED\xA0\x80\""s, "\"\xF4\x90\x80\x80\""s, "\"\xE2\x8C\""s,
        "\"\xFF\""s, "{\"\xFF\":1}"s, "\xFF"s, "[\xC3\xA9]"s, "\xFE\xFF\0["s, "\xEF\xBB[1]"s}) {
    EXPECT_EQ(brokenLine(text), "1") << testing::PrintToString(text);
  }
}

TEST(ParseJson, givesReasonsWithoutTheLibrarysOwnPrefix) {
  for (const auto& text : {""s, "x"s, "[1"s, "{\"a\":1e400}"s, "\"\xFF\""s, "[1,]"s,
                           "\"column \n\""s, "\"] \n\""s, "\xEF"s}) {
    const DecodingError error = decodingErrorOf([&] { static_cast<void>(parseJson(text)); });
    EXPECT_EQ(error.reason().find("json.exception"), std::string::npos) << error.reason();
    EXPECT_EQ(error.reason().find("at line"), std::string::npos) << error.reason();
    EXPECT_NE(error.reason().front(), ' ') << error.reason();
  }
  expectRefusal("[1", "1",
                "syntax error while parsing array - unexpected end of input; expected ']'");
}

// Properties

/// One line of valid UTF-8, at a line or a path.
void checkMessage(const DecodingError& error) {
  const std::string message = error.what();
  RC_ASSERT(plain::isUtf8(message));
  RC_ASSERT(message.find_first_of("\n\r"s + '\0') == std::string::npos);
  RC_ASSERT(!error.reason().empty());
  RC_ASSERT(message == error.where() + ": " + error.reason());
  if (!error.isAtPath())
    RC_ASSERT(std::ranges::all_of(error.where(), [](char c) { return c >= '0' && c <= '9'; }));
}

/// Runs every decoder over the text; whatever happens must be a value or a proper error.
void decodeEverything(const std::string& text) {
  try {
    const Json document = parseJson(text);
    const JsonReader reader(document);
    const auto attempt = [&](const auto& decoder) {
      try {
        decoder();
      } catch (const DecodingError& error) {
        checkMessage(error);
      }
    };
    attempt([&] { reader.list<Profile>(); });
    attempt([&] { reader.list<StoredDeviceSignatures>(); });
    attempt([&] { reader.as<TrellivarDevice>(); });
    attempt([&] { reader.as<Output>(); });
    attempt([&] { reader.as<Key>(); });
    attempt([&] { reader.as<Modifier>(); });
  } catch (const DecodingError& error) {
    checkMessage(error);
  }
}

RC_GTEST_PROP(ParseJson, takesAnyBytesWithoutHarm, ()) { decodeEverything(*generate::bytes()); }

RC_GTEST_PROP(ParseJson, takesAnyBytesWithinATextWithoutHarm, ()) {
  decodeEverything("[{\"" + *generate::bytes() + "\":\"" + *generate::bytes() + "\"}]");
}

/// Pieces that documents are made of, in any order.
rc::Gen<std::string> jumble() {
  const auto piece =
      rc::gen::oneOf(rc::gen::elementOf(std::vector<std::string>{"[",      "]",
                                                                 "{",      "}",
                                                                 ",",      ":",
                                                                 "\n",     " ",
                                                                 "\"",     "\\",
                                                                 "null",   "true",
                                                                 "1",      "-1",
                                                                 "1.5",    "1e400",
                                                                 "\"a\":", "\"id\":",
                                                                 "\"a\"",  "\"\\ud800\"",
                                                                 "\xFF",   std::string(1, '\0')}),
                     generate::character());
  return rc::gen::map(generate::upTo(20, piece), [](const std::vector<std::string>& pieces) {
    std::string text;
    for (const std::string& each : pieces)
      text += each;
    return text;
  });
}

/// A valid document in which one stretch is replaced by something else, sometimes by nothing.
rc::Gen<std::string> damagedDocument() {
  return rc::gen::exec([] {
    const auto profiles = *generate::upTo<Profile>(2);
    const auto records = *generate::upTo<StoredDeviceSignatures>(2);
    const auto document = *rc::gen::elementOf(
        std::vector<std::string>{prettyPrinted(encodeList(profiles)), encodeList(records).dump(),
                                 encode(*rc::gen::arbitrary<TrellivarDevice>()).dump(),
                                 encode(*rc::gen::arbitrary<Output>()).dump()});
    const auto from = *generate::range<std::size_t>(0, document.size());
    const auto length = *rc::gen::elementOf(std::vector<std::size_t>{0, 0, 0, 1, 2, 6});
    const auto harmless = rc::gen::elementOf(std::vector<std::string>{"", " ", "\n", "1"});
    std::string text = document;
    text.replace(from, length, *rc::gen::oneOf(jumble(), generate::bytes(), harmless));
    return text;
  });
}

RC_GTEST_PROP(ParseJson, takesAJumbleOfPiecesWithoutHarm, ()) { decodeEverything(*jumble()); }

RC_GTEST_PROP(ParseJson, takesDamagedDocumentsWithoutHarm, ()) {
  decodeEverything(*damagedDocument());
}

RC_GTEST_PROP(ParseJson, agreesWithTheLibraryExceptWhereItIsStricter, ()) {
  const std::string text = *rc::gen::oneOf(jumble(), damagedDocument());
  const bool libraryAccepts = Json::accept(text);
  RC_CLASSIFY(libraryAccepts, "valid JSON");
  try {
    const Json document = parseJson(text);
    RC_ASSERT(libraryAccepts);
    RC_ASSERT(document == Json::parse(text));
  } catch (const DecodingError& error) {
    const bool isStricter = error.reason() == "the key is there twice" ||
                            error.reason() == tooDeep || text.find('\0') != std::string::npos;
    RC_ASSERT(isStricter || !libraryAccepts);
  }
}

} // namespace
} // namespace trellivar
