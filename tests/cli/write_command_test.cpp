#include "tests/cli/documents.h"
#include "tests/cli/profiles_fixture.h"

namespace trellivar::cli {
namespace {

using namespace documents;

class WriteCommand : public ProfilesTest {
protected:
  Answer dryRun(const std::string& list) const {
    return run({"write", "--dry-run", "--profiles", file("list", list)});
  }
};

std::string press(const std::string& name, int code) {
  const std::string key = R"("k":")" + name + R"(","c":)" + std::to_string(code) + "}";
  return R"({"t":"down",)" + key + R"(,{"t":"wait","ms":30},{"t":"up",)" + key;
}
std::string command(int key, const std::string& mode, const std::string& steps) {
  return R"({"o":"set","k":)" + std::to_string(key) + R"(,"m":"keyboard","e":"click","v":[)" +
         steps + R"(],"r":1,"s":")" + mode + R"("})";
}
/// The frames of a command that is longer than one.
std::string frames(const std::string& command, int seq) {
  const std::size_t count = (command.size() + 54) / 55;
  std::string text;
  for (std::size_t i = 0; i < count; ++i)
    text += "S" + std::to_string(seq) + "[" + std::to_string(i + 1) + "/" + std::to_string(count) +
            "]" + command.substr(i * 55, 55) + "\n";
  return text;
}
const std::string nothing = R"({"sequence":{"keys":[]}})";
constexpr auto nothingToWrite = "Nothing to write yet — record a key first.";

TEST_F(WriteCommand, writesModesInTheOrderPMRAndLeavesOtherProfilesOut) {
  EXPECT_EQ(dryRun("[" + profile("R", mapping(1, tap("c"))) + "," +
                   profile("Games", mapping(1, tap("d"))) + "," +
                   profile("M", mapping(1, tap("b"))) + "," + profile("p", mapping(1, tap("e"))) +
                   "," + profile("P", mapping(2, tap("z")) + "," + mapping(1, tap("a"))) + "]"),
            printed(frames(command(1, "P", press("A", 65)), 1) +
                    frames(command(2, "P", press("Z", 90)), 2) +
                    frames(command(1, "M", press("B", 66)), 3) +
                    frames(command(1, "R", press("C", 67)), 4)));
}

TEST_F(WriteCommand, printsTheFramesThatThePadExpects) {
  const std::string whole =
      R"({"o":"set","k":2,"m":"keyboard","e":"click","v":[{"t":"down","k":"Meta","c":91},)"
      R"({"t":"wait","ms":30},{"t":"down","k":"C","c":67},{"t":"wait","ms":30},)"
      R"({"t":"up","k":"C","c":67},{"t":"wait","ms":30},{"t":"up","k":"Meta","c":91}],)"
      R"("r":1,"s":"M"})";
  const Answer answer = dryRun("[" + profile("M", mapping(2, chord("left_command", "c"))) + "]");
  EXPECT_EQ(answer, printed(frames(whole, 1)));
  const std::string firstFrame =
      R"(S1[1/5]{"o":"set","k":2,"m":"keyboard","e":"click","v":[{"t":")";
  EXPECT_TRUE(answer.out.starts_with(firstFrame + "\n")) << answer.out;
}

TEST_F(WriteCommand, numbersCommandsFrom1To9AndAgainFrom1) {
  std::string mappings;
  std::string expected;
  for (int key = 1; key <= 11; ++key) {
    mappings += (key == 1 ? "" : ",") + mapping(key, tap("a"));
    expected += frames(command(key, "P", press("A", 65)), key <= 9 ? key : key - 9);
  }
  EXPECT_EQ(dryRun("[" + profile("P", mappings) + "]"), printed(expected));
}

TEST_F(WriteCommand, aBindingToNothingIsWrittenWithoutSteps) {
  EXPECT_EQ(dryRun("[" + profile("P", mapping(1, nothing) + "," + mapping(2, tap("a"))) + "]"),
            printed(frames(command(1, "P", ""), 1) + frames(command(2, "P", press("A", 65)), 2)));
}

TEST_F(WriteCommand, keysWithoutFirmwareEquivalentAreLeftOutSilently) {
  const std::string mute = R"({"sequence":{"keys":[{"keyCode":"mute","kind":"consumerKeyCode"}]}})";
  EXPECT_EQ(dryRun("[" +
                   profile("P", mapping(1, mute) + "," + mapping(2, tap("a")) + "," +
                                    mapping(3, tap("f1"))) +
                   "]"),
            printed(frames(command(2, "P", press("A", 65)), 1)));
}

TEST_F(WriteCommand, nothingToWriteFails) {
  for (const std::string& list : {std::string("[]"), "[" + profile("P", "") + "]",
                                  "[" + profile("P", mapping(1, tap("f1"))) + "]",
                                  "[" + profile("Games", mapping(1, tap("a"))) + "]"})
    EXPECT_EQ(dryRun(list), failure(nothingToWrite));
  EXPECT_EQ(on("data", {"write", "--dry-run"}), failure(nothingToWrite));
}

TEST_F(WriteCommand, takesTheStoredProfilesUnlessToldOtherwise) {
  expectDone({"bind", "M", "3", "a"});
  const std::string expected = frames(command(3, "M", press("A", 65)), 1);
  EXPECT_EQ(on("data", {"write", "--dry-run"}), printed(expected));
  expectDone({"export", path("list")});
  const auto before = tree();
  EXPECT_EQ(on("none", {"write", "--dry-run", "--profiles", path("list")}), printed(expected));
  EXPECT_EQ(on("none", {"write", "--dry-run", "--profiles", "-"}, contentOf(path("list"))),
            printed(expected));
  EXPECT_EQ(tree(), before);
}

TEST_F(WriteCommand, anEmptyNameOfAFileIsNotTheStoredProfiles) {
  expectDone({"bind", "M", "3", "a"});
  EXPECT_EQ(on("data", {"write", "--dry-run", "--profiles", ""}).code, 1);
}

TEST_F(WriteCommand, aDryRunTakesAPortAndAnOutputFormThatItDoesNotNeed) {
  const std::string list = file("list", "[" + profile("P", mapping(1, tap("a"))) + "]");
  const Answer plain = run({"write", "--dry-run", "--profiles", list});
  EXPECT_EQ(run({"write", "--dry-run", "--profiles", list, "--port", "/dev/none"}), plain);
  EXPECT_EQ(run({"write", "--dry-run", "--profiles", list, "--json"}), plain);
  EXPECT_FALSE(plain.out.empty());
}

} // namespace
} // namespace trellivar::cli
