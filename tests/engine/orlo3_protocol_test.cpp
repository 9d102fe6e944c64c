#include "engine/orlo3_protocol.h"
#include "tests/engine/macro_words.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using namespace std::string_literals;
using Orlo3Protocol::frame;
using Orlo3Protocol::writeKeyMacro;
using Frames = std::vector<std::string>;

TEST(Orlo3Protocol, asksForTheFirmwareInTwentySixBytes) {
  EXPECT_EQ(Orlo3Protocol::firmwareQuery, R"({"o":"get","t":"firmware"})");
  EXPECT_EQ(Orlo3Protocol::firmwareQuery.size(), 26U);
}

// Commands

TEST(WriteKeyMacro, writesTheCommandOfAKey) {
  const Macro commandC{down("Meta", 91), wait(), down("C", 67), wait(),
                       up("C", 67),      wait(), up("Meta", 91)};
  EXPECT_EQ(
      writeKeyMacro(2, "M", "click", commandC, 1),
      R"({"o":"set","k":2,"m":"keyboard","e":"click","v":[{"t":"down","k":"Meta","c":91},)"
      R"({"t":"wait","ms":30},{"t":"down","k":"C","c":67},{"t":"wait","ms":30},)"
      R"({"t":"up","k":"C","c":67},{"t":"wait","ms":30},{"t":"up","k":"Meta","c":91}],"r":1,"s":"M"})");
}

TEST(WriteKeyMacro, writesAnEmptyListOfStepsForAnEmptyMacro) {
  EXPECT_EQ(writeKeyMacro(1, "P", "click", {}, 1),
            R"({"o":"set","k":1,"m":"keyboard","e":"click","v":[],"r":1,"s":"P"})");
}

TEST(WriteKeyMacro, writesWhateverKeyModeEventAndRepeatCountItIsGiven) {
  EXPECT_EQ(
      writeKeyMacro(-12, "R", "hold", {{wait(5)}}, 100),
      R"({"o":"set","k":-12,"m":"keyboard","e":"hold","v":[{"t":"wait","ms":5}],"r":100,"s":"R"})");
  EXPECT_EQ(writeKeyMacro(INT_MIN, "", "", {}, INT_MAX),
            R"({"o":"set","k":-2147483648,"m":"keyboard","e":"","v":[],"r":2147483647,"s":""})");
}

TEST(WriteKeyMacro, endsWithoutALineEnd) {
  EXPECT_EQ(writeKeyMacro(1, "P", "click", {{down("A", 65)}}, 1).back(), '}');
}

TEST(WriteKeyMacro, escapesWhatWouldBreakTheCommand) {
  const auto json = nlohmann::json::parse(writeKeyMacro(1, "\"P\\\n", "a\"],\"v\":[", {}, 1));
  EXPECT_EQ(json["s"], "\"P\\\n");
  EXPECT_EQ(json["e"], "a\"],\"v\":[");
  EXPECT_EQ(json["v"], nlohmann::json::array());
}

std::string anyText() {
  return *rc::gen::oneOf(
      rc::gen::string<std::string>(),
      rc::gen::map(rc::gen::container<std::vector<std::string>>(rc::gen::element(
                       "\""s, "\\"s, "\n"s, "\0"s, "\x7F"s, "键"s, "\xC3"s, "\xFF"s, "/"s, "a"s)),
                   [](const std::vector<std::string>& pieces) {
                     std::string text;
                     for (const std::string& piece : pieces)
                       text += piece;
                     return text;
                   }));
}

Macro anyMacro() {
  Macro macro;
  const int count = *rc::gen::inRange(0, 6);
  for (int i = 0; i < count; ++i) {
    const int number = *rc::gen::arbitrary<int>();
    switch (*rc::gen::element(0, 1, 2)) {
    case 0:
      macro.push_back(down(anyText(), number));
      break;
    case 1:
      macro.push_back(up(anyText(), number));
      break;
    default:
      macro.push_back(wait(number));
    }
  }
  return macro;
}

RC_GTEST_PROP(WriteKeyMacroProperty, isJsonWithAllMembersInOrderWhateverTheTexts, ()) {
  const std::string mode = anyText();
  const std::string event = anyText();
  const Macro macro = anyMacro();
  const int key = *rc::gen::arbitrary<int>();
  const int repeatCount = *rc::gen::arbitrary<int>();
  const auto json =
      nlohmann::ordered_json::parse(writeKeyMacro(key, mode, event, macro, repeatCount));

  std::vector<std::string> members;
  for (const auto& item : json.items())
    members.push_back(item.key());
  RC_ASSERT(members == (std::vector<std::string>{"o", "k", "m", "e", "v", "r", "s"}));
  RC_ASSERT(json["o"] == "set");
  RC_ASSERT(json["k"] == key);
  RC_ASSERT(json["m"] == "keyboard");
  RC_ASSERT(json["r"] == repeatCount);
  RC_ASSERT(json["v"].size() == macro.size());
  for (std::size_t i = 0; i < macro.size(); ++i)
    RC_ASSERT(json["v"][i].dump() == nlohmann::ordered_json::parse(macro[i].json()).dump());
}

/// UTF-8 of any scalar values.
std::string anyUtf8() {
  return *rc::gen::map(
      rc::gen::container<std::vector<char32_t>>(rc::gen::oneOf(
          rc::gen::cast<char32_t>(rc::gen::inRange<std::uint32_t>(0, 0x80)),
          rc::gen::cast<char32_t>(rc::gen::inRange<std::uint32_t>(0x80, 0xD800)),
          rc::gen::cast<char32_t>(rc::gen::inRange<std::uint32_t>(0xE000, 0x110000)))),
      [](const std::vector<char32_t>& scalars) {
        std::string text;
        const auto add = [&](char32_t bits) { text += static_cast<char>(bits); };
        for (const char32_t c : scalars) {
          if (c < 0x80) {
            add(c);
          } else if (c < 0x800) {
            add(0xC0 | (c >> 6));
            add(0x80 | (c & 0x3F));
          } else if (c < 0x10000) {
            add(0xE0 | (c >> 12));
            add(0x80 | ((c >> 6) & 0x3F));
            add(0x80 | (c & 0x3F));
          } else {
            add(0xF0 | (c >> 18));
            add(0x80 | ((c >> 12) & 0x3F));
            add(0x80 | ((c >> 6) & 0x3F));
            add(0x80 | (c & 0x3F));
          }
        }
        return text;
      });
}

RC_GTEST_PROP(WriteKeyMacroProperty, givesEveryTextBackToWhoeverReadsIt, ()) {
  const std::string mode = anyUtf8();
  const std::string event = anyUtf8();
  const std::string name = anyUtf8();
  const auto json = nlohmann::json::parse(writeKeyMacro(1, mode, event, {{down(name, 1)}}, 1));
  RC_ASSERT(json["s"] == mode);
  RC_ASSERT(json["e"] == event);
  RC_ASSERT(json["v"][0]["k"] == name);
}

RC_GTEST_PROP(WriteKeyMacroProperty, leavesPlainWordsAsTheyAre, ()) {
  const auto word = rc::gen::container<std::string>(
      rc::gen::distinctFrom(rc::gen::distinctFrom(rc::gen::inRange<char>(' ', '\x7F'), '"'), '\\'));
  const std::string mode = *word;
  const std::string event = *word;
  const std::string name = *word;
  const int key = *rc::gen::arbitrary<int>();
  const std::string expected =
      "{\"o\":\"set\",\"k\":" + std::to_string(key) + ",\"m\":\"keyboard\",\"e\":\"" + event +
      "\",\"v\":[{\"t\":\"up\",\"k\":\"" + name + "\",\"c\":7}],\"r\":1,\"s\":\"" + mode + "\"}";
  RC_ASSERT(writeKeyMacro(key, mode, event, {{up(name, 7)}}, 1) == expected);
}

// Frames

/// A command of `size` bytes of which no two neighbouring ones are alike.
std::string commandOf(std::size_t size) {
  std::string command;
  for (std::size_t i = 0; i < size; ++i)
    command += static_cast<char>('!' + i % 89);
  return command;
}

TEST(Frame, sendsAShortCommandAsItIs) {
  for (const std::size_t size : {0U, 1U, 54U, 55U, 56U, 62U, 63U})
    EXPECT_EQ(frame(commandOf(size), 1), Frames{commandOf(size)}) << size;
}

TEST(Frame, cutsACommandOfSixtyFourBytesInTwo) {
  const std::string command = commandOf(64);
  EXPECT_EQ(frame(command, 7),
            (Frames{"S7[1/2]" + command.substr(0, 55), "S7[2/2]" + command.substr(55)}));
  EXPECT_EQ(command.substr(55).size(), 9U);
}

TEST(Frame, fillsTwoFramesWithOneHundredAndTenBytes) {
  const std::string command = commandOf(110);
  EXPECT_EQ(frame(command, 1),
            (Frames{"S1[1/2]" + command.substr(0, 55), "S1[2/2]" + command.substr(55, 55)}));
  const std::string longer = commandOf(111);
  EXPECT_EQ(frame(longer, 1),
            (Frames{"S1[1/3]" + longer.substr(0, 55), "S1[2/3]" + longer.substr(55, 55),
                    "S1[3/3]" + longer.substr(110)}));
}

TEST(Frame, cutsOneHundredAndTwentyBytesInThree) {
  const std::string command = commandOf(120);
  EXPECT_EQ(frame(command, 3),
            (Frames{"S3[1/3]" + command.substr(0, 55), "S3[2/3]" + command.substr(55, 55),
                    "S3[3/3]" + command.substr(110, 10)}));
}

TEST(Frame, numbersFramesInPlainDecimal) {
  const Frames frames = frame(commandOf(55 * 12), 123);
  ASSERT_EQ(frames.size(), 12U);
  EXPECT_TRUE(frames[0].starts_with("S123[1/12]"));
  EXPECT_TRUE(frames[8].starts_with("S123[9/12]"));
  EXPECT_TRUE(frames[11].starts_with("S123[12/12]"));
}

TEST(Frame, replacesACharacterThatIsSplitBetweenTwoFrames) {
  // The two bytes of the character are the last of the first frame and the first of the second.
  const std::string command = commandOf(54) + "é" + commandOf(20);
  EXPECT_EQ(frame(command, 1), (Frames{"S1[1/2]" + commandOf(54) + "\xEF\xBF\xBD",
                                       "S1[2/2]\xEF\xBF\xBD" + commandOf(20)}));
}

TEST(Frame, keepsACharacterThatEndsWithItsFrame) {
  const std::string command = commandOf(53) + "é" + commandOf(20);
  EXPECT_EQ(frame(command, 1),
            (Frames{"S1[1/2]" + commandOf(53) + "é", "S1[2/2]" + commandOf(20)}));
}

TEST(Frame, measuresACommandInBytes) {
  const std::string thirtyTwoCharacters = commandOf(31) + "é";
  EXPECT_EQ(frame(thirtyTwoCharacters, 1).size(), 1U);
  std::string sixtyFourBytes;
  for (int i = 0; i < 32; ++i)
    sixtyFourBytes += "é";
  EXPECT_EQ(frame(sixtyFourBytes, 1).size(), 2U);
}

TEST(Frame, isAtMostSixtyTwoBytesLongUpToNineFramesAndSixtyFourUpToNinetyNine) {
  for (std::size_t count = 2; count <= 99; ++count) {
    const Frames frames = frame(commandOf(count * 55), 9);
    ASSERT_EQ(frames.size(), count);
    std::size_t longest = 0;
    for (const std::string& each : frames)
      longest = std::max(longest, each.size());
    EXPECT_EQ(longest, count <= 9 ? 62U : 64U) << count;
  }
}

RC_GTEST_PROP(FrameProperty, carriesTheWholeCommandInOrder, ()) {
  const auto size = *rc::gen::oneOf(rc::gen::inRange<std::size_t>(0, 130),
                                    rc::gen::inRange<std::size_t>(0, 6000));
  std::string command;
  for (std::size_t i = 0; i < size; ++i)
    command += *rc::gen::inRange<char>(0, 127);
  const int seq = *rc::gen::inRange(1, 10);

  const Frames frames = frame(command, seq);
  if (size <= 63) {
    RC_ASSERT(frames == Frames{command});
    return;
  }
  RC_ASSERT(frames.size() == (size + 54) / 55);
  std::string joined;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const std::string header = "S" + std::to_string(seq) + "[" + std::to_string(i + 1) + "/" +
                               std::to_string(frames.size()) + "]";
    RC_ASSERT(frames[i].starts_with(header));
    const std::string payload = frames[i].substr(header.size());
    RC_ASSERT(!payload.empty());
    RC_ASSERT(payload.size() == 55U || (i + 1 == frames.size() && payload.size() < 55U));
    joined += payload;
  }
  RC_ASSERT(joined == command);
}

TEST(SequenceNumber, countsFromOneToNineAndBeginsAgain) {
  std::vector<int> numbers{1};
  for (int i = 0; i < 11; ++i)
    numbers.push_back(Orlo3Protocol::nextSequence(numbers.back()));
  EXPECT_EQ(numbers, (std::vector{1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3}));
}

} // namespace
} // namespace trellivar
