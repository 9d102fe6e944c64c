#include "engine/orlo3_reply_parser.h"
#include "tests/engine/link_words.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using Reply = std::optional<Orlo3Reply>;

const std::string whole = R"({"o":"get","t":"firmware","v":"1.0.7"})";
const Orlo3Reply firmware{"get", "firmware", "1.0.7"};

TEST(ReplyParser, readsAReply) { EXPECT_EQ(parseReply(whole), Reply(firmware)); }

TEST(ReplyParser, waitsForTheLastByte) {
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_EQ(parseReply(whole.substr(0, size)), std::nullopt) << size;
}

TEST(ReplyParser, ignoresWhatStandsBeforeAndBehind) {
  EXPECT_EQ(parseReply("boot ok}\r\n" + whole + "\r\n[]"), Reply(firmware));
  EXPECT_EQ(parseReply(std::string("\0\x01", 2) + whole + " ]\""), Reply(firmware));
}

TEST(ReplyParser, doesNotTakeTwoRepliesForOne) {
  EXPECT_EQ(parseReply(whole + whole), std::nullopt);
  EXPECT_EQ(parseReply(whole + "\r\n" + whole), std::nullopt);
  EXPECT_EQ(parseReply(whole + "}"), std::nullopt);
  EXPECT_EQ(parseReply("{" + whole), std::nullopt);
}

TEST(ReplyParser, needsAnOperationThatIsText) {
  for (const char* text : {R"({"t":"firmware","v":"1.0.7"})", R"({"o":1,"t":"firmware"})",
                           R"({"o":null})", R"({"o":["get"]})", R"({"O":"get"})", "{}"})
    EXPECT_EQ(parseReply(text), std::nullopt) << text;
}

TEST(ReplyParser, takesAnEmptyOperation) {
  EXPECT_EQ(parseReply(R"({"o":""})"), (Reply{{"", "", ""}}));
}

TEST(ReplyParser, aTargetThatIsNoTextIsEmpty) {
  for (const char* text : {R"({"o":"get","v":"1"})", R"({"o":"get","t":7,"v":"1"})",
                           R"({"o":"get","t":null,"v":"1"})", R"({"o":"get","t":{},"v":"1"})"})
    EXPECT_EQ(parseReply(text), (Reply{{"get", "", "1"}})) << text;
}

TEST(ReplyParser, aValueOfAnotherTypeIsRenderedAsText) {
  const std::pair<const char*, const char*> cases[] = {
      {"107", "107"},
      {"-3", "-3"},
      {"1.5", "1.5"},
      {"true", "true"},
      {"false", "false"},
      {"null", "null"},
      {R"("")", ""},
      {R"("1.0")", "1.0"},
      {"18446744073709551615", "18446744073709551615"},
      {"[1,2]", "[1,2]"},
      {R"({"a":1})", R"({"a":1})"},
  };
  for (const auto& [value, text] : cases)
    EXPECT_EQ(parseReply(R"({"o":"get","t":"x","v":)" + std::string(value) + "}"),
              (Reply{{"get", "x", text}}))
        << value;
}

TEST(ReplyParser, aMissingValueIsEmpty) {
  EXPECT_EQ(parseReply(R"({"o":"set","t":"key"})"), (Reply{{"set", "key", ""}}));
}

TEST(ReplyParser, acceptsFurtherMembersInAnyOrder) {
  EXPECT_EQ(parseReply(R"({ "v" : "1.0.7", "x": [{}], "t":"firmware" , "o":"get"})"),
            Reply(firmware));
}

TEST(ReplyParser, readsEscapesAndCharacters) {
  EXPECT_EQ(parseReply(R"({"o":"g\u0065t","t":"\"键\"","v":"}{"})"),
            (Reply{{"get", "\"键\"", "}{"}}));
}

TEST(ReplyParser, refusesBytesThatAreNoText) {
  EXPECT_EQ(parseReply("\xFF" + whole), std::nullopt);
  EXPECT_EQ(parseReply(whole + "\xC3"), std::nullopt) << "a character that is not complete yet";
  EXPECT_EQ(parseReply(whole + "\xC3\xA9"), Reply(firmware));
}

TEST(ReplyParser, refusesWhatIsNoObject) {
  for (const char* text : {"", "}{", "{", "}", "[]", R"(["o"])", "{o:1}", R"({"o":"get",})",
                           R"({'o':'get'})", R"({"o":"get"; "t":""})", "get"})
    EXPECT_EQ(parseReply(text), std::nullopt) << text;
}

TEST(ReplyParser, refusesNestingWithoutEnd) {
  const std::string deep = R"({"o":"get","v":)" + std::string(100'000, '[');
  EXPECT_EQ(parseReply(deep + "}"), std::nullopt);
  EXPECT_EQ(parseReply(deep + std::string(100'000, ']') + "}"), std::nullopt);
}

TEST(ReplyParser, refusesAKeyThatStandsTwice) {
  EXPECT_EQ(parseReply(R"({"o":"get","v":"1","v":"2"})"), std::nullopt);
}

} // namespace
} // namespace trellivar
