#include "core/json/json_reader.h"
#include "tests/core/json/decoded.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using Texts = std::vector<std::string>;

/// Reads the value of {"v": …}.
template <class Read> auto read(std::string_view value, const Read& reading) {
  const Json document = parseJson("{\"v\":" + std::string(value) + "}");
  const JsonReader root(document);
  const JsonReader member = root.member("v");
  return reading(member);
}

constexpr auto text = [](const JsonReader& reader) { return reader.text(); };
constexpr auto boolean = [](const JsonReader& reader) { return reader.boolean(); };
constexpr auto integer = [](const JsonReader& reader) { return reader.integer(); };
constexpr auto integer64 = [](const JsonReader& reader) { return reader.integer64(); };
constexpr auto number = [](const JsonReader& reader) { return reader.number(); };
constexpr auto object = [](const JsonReader& reader) { reader.object(); };
constexpr auto listOfInt = [](const JsonReader& reader) { return reader.list<int>(); };

template <class Read>
void expectRefusal(std::string_view value, const Read& reading, std::string_view reason) {
  SCOPED_TRACE(value);
  expectFailure([&] { read(value, reading); }, "v", reason);
}

/// One value of every type, and how a refusal of it calls it.
const std::vector<std::pair<std::string, std::string>> descriptions{
    {"null", "null"},        {"true", "true"},          {"false", "false"},
    {"\"1\"", "a text"},     {"\"\"", "a text"},        {"[]", "a list"},
    {"[1]", "a list"},       {"{}", "an object"},       {"0", "the number 0"},
    {"-7", "the number -7"}, {"1.5", "the number 1.5"}, {"1.0", "the number 1.0"},
};

std::string refusal(const std::string& expectation, const std::string& description) {
  return "expected " + expectation + ", found " + description;
}

/// Values of the given types are read; all others are refused.
template <class Read>
void expectOnly(const Texts& accepted, const Read& reading, const std::string& expectation) {
  for (const auto& [value, description] : descriptions) {
    const bool isAccepted = std::ranges::find(accepted, description) != accepted.end();
    if (isAccepted) {
      EXPECT_NO_THROW(read(value, reading)) << value;
    } else {
      expectRefusal(value, reading, refusal(expectation, description));
    }
  }
}

TEST(JsonReader, readsTexts) {
  EXPECT_EQ(read(R"("a\u0000⌘\n")", text), std::string("a\0⌘\n", 6));
  EXPECT_EQ(read(R"("")", text), "");
  expectOnly({"a text"}, text, "a text");
}

TEST(JsonReader, readsBooleans) {
  EXPECT_TRUE(read("true", boolean));
  EXPECT_FALSE(read("false", boolean));
  expectOnly({"true", "false"}, boolean, "true or false");
}

TEST(JsonReader, readsObjects) { expectOnly({"an object"}, object, "an object"); }

TEST(JsonReader, readsIntegersInTheirWholeRange) {
  EXPECT_EQ(read("0", integer), 0);
  EXPECT_EQ(read("-0", integer), 0);
  EXPECT_EQ(read("2147483647", integer), std::numeric_limits<int>::max());
  EXPECT_EQ(read("-2147483648", integer), std::numeric_limits<int>::min());
  expectOnly({"the number 0", "the number -7"}, integer,
             "an integer from -2147483648 to 2147483647");
}

TEST(JsonReader, refusesIntegersOutOfRange) {
  const std::string expected =
      "expected an integer from -2147483648 to 2147483647, found the number ";
  for (const char* value : {"2147483648", "-2147483649", "4294967296", "4294967297", "-4294967295",
                            "9223372036854775807", "9223372036854775808", "-9223372036854775808",
                            "18446744073709551615"}) {
    expectRefusal(value, integer, expected + value);
  }
  expectRefusal("18446744073709551616", integer, expected + "1.8446744073709552e+19");
  expectRefusal("-9223372036854775809", integer, expected + "-9.223372036854776e+18");
  expectRefusal("1e308", integer, expected + "1e+308");
}

TEST(JsonReader, refusesFloatsForIntegersEvenIfTheyAreWhole) {
  const std::string expected =
      "expected an integer from -2147483648 to 2147483647, found the number ";
  expectRefusal("1.0", integer, expected + "1.0");
  expectRefusal("1e2", integer, expected + "100.0");
  expectRefusal("1E0", integer, expected + "1.0");
  expectRefusal("-0.0", integer, expected + "-0.0");
  expectRefusal("0.5", integer, expected + "0.5");
}

TEST(JsonReader, readsLongIntegersInTheirWholeRange) {
  EXPECT_EQ(read("9223372036854775807", integer64), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(read("-9223372036854775808", integer64), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(read("2147483648", integer64), 2147483648);
  expectOnly({"the number 0", "the number -7"}, integer64, "a 64-bit integer");
  const std::string expected = "expected a 64-bit integer, found the number ";
  expectRefusal("9223372036854775808", integer64, expected + "9223372036854775808");
  expectRefusal("18446744073709551615", integer64, expected + "18446744073709551615");
  expectRefusal("18446744073709551616", integer64, expected + "1.8446744073709552e+19");
  expectRefusal("-9223372036854775809", integer64, expected + "-9.223372036854776e+18");
  expectRefusal("1e2", integer64, expected + "100.0");
}

TEST(JsonReader, readsNumbersWholeOrNot) {
  EXPECT_EQ(read("0.5", number), 0.5);
  EXPECT_EQ(read("-3", number), -3.0);
  EXPECT_EQ(read("1e2", number), 100.0);
  EXPECT_EQ(read("18446744073709551615", number), 18446744073709551615.0);
  EXPECT_EQ(read("1e-400", number), 0.0);
  expectOnly({"the number 0", "the number -7", "the number 1.5", "the number 1.0"}, number,
             "a number");
}

} // namespace

template <> int decode<int>(const JsonReader& reader) { return reader.integer(); }

namespace {

TEST(JsonReader, readsListsInOrder) {
  EXPECT_EQ(read("[3,1,2,1]", listOfInt), (std::vector{3, 1, 2, 1}));
  EXPECT_EQ(read("[]", listOfInt), std::vector<int>{});
  for (const auto& [value, description] : descriptions) {
    if (description != "a list") expectRefusal(value, listOfInt, refusal("a list", description));
  }
}

TEST(JsonReader, tellsWhichElementOfAListIsWrong) {
  expectFailure([] { read("[0,1,\"2\"]", listOfInt); }, "v[2]",
                "expected an integer from -2147483648 to 2147483647, found a text");
}

TEST(JsonReader, readsMembers) {
  const Json document = parseJson(R"({"a":1,"":2,"n":null})");
  const JsonReader reader(document);
  EXPECT_EQ(reader.member("a").integer(), 1);
  EXPECT_EQ(reader.member("").integer(), 2);
  EXPECT_TRUE(reader.member("n").json().is_null());
  EXPECT_EQ(reader.optionalMember("a").value().integer(), 1);
}

TEST(JsonReader, missesAMemberThatIsNotThere) {
  const Json document = parseJson(R"({"a":{"b":[{}]}})");
  const JsonReader root(document);
  const JsonReader a = root.member("a");
  expectFailure([&] { static_cast<void>(root.member("A")); }, "A", "missing");
  expectFailure([&] { static_cast<void>(a.member("c")); }, "a.c", "missing");
  expectFailure([&] { static_cast<void>(a.member("")); }, "a[\"\"]", "missing");
}

TEST(JsonReader, takesNullForAbsentWhereAMemberIsOptional) {
  const Json document = parseJson(R"({"n":null,"f":false,"z":0,"t":""})");
  const JsonReader reader(document);
  EXPECT_FALSE(reader.optionalMember("n"));
  EXPECT_FALSE(reader.optionalMember("absent"));
  EXPECT_TRUE(reader.optionalMember("f"));
  EXPECT_TRUE(reader.optionalMember("z"));
  EXPECT_TRUE(reader.optionalMember("t"));
}

TEST(JsonReader, hasAMemberEvenIfItIsNull) {
  const Json document = parseJson(R"({"n":null})");
  EXPECT_TRUE(JsonReader(document).has("n"));
  EXPECT_FALSE(JsonReader(document).has("N"));
}

TEST(JsonReader, hasNoMembersUnlessItIsAnObject) {
  for (const auto& [value, description] : descriptions) {
    if (description == "an object") continue;
    const std::string reason = "expected an object, found " + description;
    const auto member = [](const JsonReader& reader) { static_cast<void>(reader.member("a")); };
    const auto optional = [](const JsonReader& reader) {
      static_cast<void>(reader.optionalMember("a"));
    };
    const auto has = [](const JsonReader& reader) { static_cast<void>(reader.has("a")); };
    const auto each = [](const JsonReader& reader) {
      reader.forEachMember([](const std::string&, const JsonReader&) {});
    };
    expectRefusal(value, member, reason);
    expectRefusal(value, optional, reason);
    expectRefusal(value, has, reason);
    expectRefusal(value, each, reason);
  }
}

TEST(JsonReader, visitsMembersInTheOrderOfTheirKeys) {
  const Json document = parseJson(R"({"b":1,"a":{"x":2},"10":3,"9":4})");
  Texts visited;
  JsonReader(document).forEachMember([&](const std::string& key, const JsonReader& value) {
    visited.push_back(key + " at " + value.path() + " is " + value.json().dump());
  });
  EXPECT_EQ(visited,
            (Texts{"10 at 10 is 3", "9 at 9 is 4", R"(a at a is {"x":2})", "b at b is 1"}));
}

TEST(JsonReader, knowsItsPath) {
  const Json document = parseJson(R"({"a":{"b c":{"d":1}}})");
  const JsonReader root(document);
  const JsonReader a = root.member("a");
  const JsonReader b = a.member("b c");
  EXPECT_EQ(root.path(), "");
  EXPECT_EQ(a.path(), "a");
  EXPECT_EQ(b.path(), R"(a["b c"])");
  EXPECT_EQ(b.member("d").path(), R"(a["b c"].d)");
}

TEST(JsonReader, failsAtItsPathWithTheReasonGiven) {
  const Json document = parseJson(R"({"a":[1]})");
  const JsonReader root(document);
  expectFailure([&] { root.member("a").fail("no good"); }, "a", "no good");
  expectFailure([&] { root.fail("no good"); }, "1", "no good");
}

} // namespace
} // namespace trellivar
