#include "engine/portable_commands.h"
#include "tests/engine/macro_words.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using words::key;
using Lines = std::vector<std::string>;
using Skipped = std::map<std::string, std::vector<int>>;

Output tapOf(std::string_view name) { return {Output::Sequence{{key(name)}}}; }

KeyMapping mapping(int keyId, Output output) { return {keyId, std::move(output), std::nullopt}; }

/// The command for a key that taps one letter.
std::string line(int keyId, std::string_view mode, char letter) {
  const std::string name(1, letter);
  const std::string payload = R"("k":")" + name + R"(","c":)" + std::to_string(int{letter}) + "}";
  return R"({"o":"set","k":)" + std::to_string(keyId) +
         R"(,"m":"keyboard","e":"click","v":[{"t":"down",)" + payload +
         R"(,{"t":"wait","ms":30},{"t":"up",)" + payload + R"(],"r":1,"s":")" + std::string(mode) +
         R"("})";
}

PortableCommands commandsFor(std::vector<ModeBindings> modes) { return portableCommands(modes); }

TEST(PortableCommands, areNoneWithoutModes) {
  const PortableCommands commands = commandsFor({});
  EXPECT_TRUE(commands.lines.empty());
  EXPECT_TRUE(commands.modes.empty());
  EXPECT_TRUE(commands.skippedByMode.empty());
}

TEST(PortableCommands, writeEachBindingAsASingleClickOfItsMode) {
  const PortableCommands commands = commandsFor({{"M", {mapping(2, tapOf("c"))}}});
  EXPECT_EQ(commands.lines, Lines{line(2, "M", 'C')});
  EXPECT_EQ(commands.lines,
            Lines{R"({"o":"set","k":2,"m":"keyboard","e":"click","v":[{"t":"down","k":"C","c":67},)"
                  R"({"t":"wait","ms":30},{"t":"up","k":"C","c":67}],"r":1,"s":"M"})"});
  EXPECT_EQ(commands.modes, Lines{"M"});
  EXPECT_EQ(commands.skippedByMode, Skipped{});
}

TEST(PortableCommands, areInAscendingOrderOfTheKeysWhateverTheProfilesOrder) {
  const PortableCommands commands =
      commandsFor({{"P",
                    {mapping(10, tapOf("a")), mapping(2, tapOf("b")), mapping(-1, tapOf("c")),
                     mapping(3, tapOf("d"))}}});
  EXPECT_EQ(commands.lines,
            (Lines{line(-1, "P", 'C'), line(2, "P", 'B'), line(3, "P", 'D'), line(10, "P", 'A')}));
}

TEST(PortableCommands, keepTheOrderOfBindingsOfTheSameKey) {
  std::vector<KeyMapping> mappings;
  Lines expected;
  for (int i = 0; i < 26; ++i) {
    const auto letter = static_cast<char>('a' + i * 7 % 26);
    mappings.push_back(mapping(5, tapOf(std::string(1, letter))));
    expected.push_back(line(5, "P", static_cast<char>(letter - 'a' + 'A')));
  }
  EXPECT_EQ(commandsFor({{"P", mappings}}).lines, expected);
}

TEST(PortableCommands, followTheGivenOrderOfTheModes) {
  const PortableCommands commands =
      commandsFor({{"R", {mapping(3, tapOf("a"))}}, {"P", {mapping(1, tapOf("b"))}}, {"M", {}}});
  EXPECT_EQ(commands.lines, (Lines{line(3, "R", 'A'), line(1, "P", 'B')}));
  EXPECT_EQ(commands.modes, (Lines{"R", "P", "M"})) << "a mode without bindings is written too";
}

TEST(PortableCommands, skipBindingsThatTheFirmwareCannotPlayAndWriteTheOthers) {
  const Output mute{Output::Chord{{}, {KeyName("mute"), Key::Kind::consumerKeyCode}}};
  const Output partly{Output::Sequence{{key("a"), key("f5")}}};
  const PortableCommands commands =
      commandsFor({{"P", {mapping(3, mute), mapping(2, tapOf("b")), mapping(1, partly)}},
                   {"M", {mapping(1, tapOf("c"))}},
                   {"R", {mapping(7, mute)}}});
  EXPECT_EQ(commands.lines, (Lines{line(2, "P", 'B'), line(1, "M", 'C')}));
  EXPECT_EQ(commands.targets, (std::vector<PortableCommands::Target>{{"P", 2}, {"M", 1}}));
  EXPECT_EQ(commands.skippedByMode, (Skipped{{"P", {1, 3}}, {"R", {7}}}));
  EXPECT_EQ(commands.modes, (Lines{"P", "M", "R"}));
}

TEST(PortableCommands, areNoLinesWhenEveryBindingIsSkipped) {
  const PortableCommands commands =
      commandsFor({{"P", {mapping(2, tapOf("f1")), mapping(1, tapOf("comma"))}}});
  EXPECT_TRUE(commands.lines.empty());
  EXPECT_EQ(commands.modes, Lines{"P"});
  EXPECT_EQ(commands.skippedByMode, (Skipped{{"P", {1, 2}}}));
}

TEST(PortableCommands, writeABindingWithoutStepsAsWell) {
  const PortableCommands commands = commandsFor(
      {{"P", {mapping(1, Output{Output::Sequence{}}), mapping(2, Output{Output::Modifiers{}})}}});
  EXPECT_EQ(commands.lines,
            (Lines{R"({"o":"set","k":1,"m":"keyboard","e":"click","v":[],"r":1,"s":"P"})",
                   R"({"o":"set","k":2,"m":"keyboard","e":"click","v":[],"r":1,"s":"P"})"}));
  EXPECT_EQ(commands.skippedByMode, Skipped{});
}

Profile profile(std::string name, std::vector<KeyMapping> mappings = {}) {
  return {UUID{}, std::move(name), std::move(mappings)};
}

std::vector<std::string> namesOf(const std::vector<ModeBindings>& modes) {
  std::vector<std::string> names;
  for (const ModeBindings& mode : modes)
    names.push_back(mode.mode);
  return names;
}

TEST(PortableModes, areTheSwitchPositionsInTheirOrder) {
  const Profile profiles[] = {profile("R"), profile("Games"), profile("M"), profile("P")};
  EXPECT_EQ(namesOf(portableModes(profiles)), (Lines{"P", "M", "R"}));
}

TEST(PortableModes, areOnlyThoseThatHaveAProfile) {
  EXPECT_TRUE(portableModes({}).empty());
  const Profile profiles[] = {profile("R"), profile("p"), profile("M "), profile("")};
  EXPECT_EQ(namesOf(portableModes(profiles)), Lines{"R"});
}

TEST(PortableModes, takeTheFirstOfTwoProfilesOfTheSameName) {
  const Profile profiles[] = {profile("P", {mapping(1, tapOf("a"))}),
                              profile("P", {mapping(2, tapOf("b"))})};
  const auto modes = portableModes(profiles);
  ASSERT_EQ(modes.size(), 1U);
  EXPECT_EQ(modes[0].mappings, profiles[0].mappings);
}

TEST(PortableModes, keepTheBindingsAsTheyAre) {
  const std::vector<KeyMapping> mappings{mapping(3, tapOf("f1")), mapping(1, tapOf("b")),
                                         mapping(3, tapOf("c"))};
  const Profile profiles[] = {profile("M", mappings)};
  const auto modes = portableModes(profiles);
  ASSERT_EQ(modes.size(), 1U);
  EXPECT_EQ(modes[0].mappings, mappings);
}

} // namespace
} // namespace trellivar
