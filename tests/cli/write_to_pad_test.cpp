#include "tests/cli/pad_fixture.h"

namespace trellivar::cli {
namespace {

using namespace documents;
using firmware::Faults;
using firmware::StoredMacro;

class WriteToPad : public PadTest {
protected:
  Answer write(const std::string& list, const Arguments& further = {}) const {
    Arguments arguments{"write", "--port", port(), "--profiles", list};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return run(arguments);
  }
};

StoredMacro pressOf(const std::string& name, int code) {
  return {{{MacroEvent::Down{name, code}}, {MacroEvent::Wait{30}}, {MacroEvent::Up{name, code}}},
          1};
}

/// Two modes; key 1 of M has no firmware equivalent, nor have keys 3 and 2 of R.
std::string partlySkipped() {
  return "[" + profile("M", mapping(2, tap("b")) + "," + mapping(1, tap("f1"))) + "," +
         profile("P", mapping(1, tap("a"))) + "," +
         profile("R", mapping(3, tap("comma")) + "," + mapping(2, tap("f2"))) + "]";
}

TEST_F(WriteToPad, thePadKeepsTheBindingsAndTheReportSaysSo) {
  const Answer answer = write(file("list", partlySkipped()));
  EXPECT_EQ(answer.out, "Written P, M, R (firmware 1.0.7)\n"
                        "P ✓\n"
                        "M — keys 1 skipped (no firmware equivalent)\n"
                        "R — keys 2, 3 skipped (no firmware equivalent)\n");
  EXPECT_EQ(answer.code, 0);
  EXPECT_EQ(answer.err, "trellivarctl: writing 2 commands into the pad\n");
  EXPECT_EQ(pad().macros(), (std::map<firmware::PadFirmware::Slot, StoredMacro>{
                                {{"P", 1}, pressOf("A", 65)}, {{"M", 2}, pressOf("B", 66)}}));
}

TEST_F(WriteToPad, reportsAsJson) {
  const Answer answer = write(file("list", partlySkipped()), {"--json"});
  EXPECT_EQ(answer.code, 0);
  EXPECT_EQ(answer.out, R"({"firmware":"1.0.7","modes":["P","M","R"],)"
                        R"("skippedByMode":{"M":[1],"R":[2,3]}})"
                        "\n");
  connect();
  EXPECT_EQ(write(letters(1), {"--json"}).out,
            "{\"firmware\":\"1.0.7\",\"modes\":[\"P\"],\"skippedByMode\":{}}\n");
}

TEST_F(WriteToPad, takesTheStoredProfilesUnlessToldOtherwise) {
  expectDone({"bind", "R", "3", "cmd+c"});
  EXPECT_EQ(on("data", {"write", "--port", port()}).code, 0);
  EXPECT_EQ(pad().macros().size(), 1U);
  EXPECT_TRUE(pad().macro("R", 3));
}

TEST_F(WriteToPad, theEmulatedPadGetsWhatADryRunPrints) {
  const std::string list = file("list", partlySkipped());
  const Answer frames = write(list, {"--dry-run"});
  EXPECT_TRUE(pad().macros().empty()) << "a dry run opens no port";
  firmware::PadFirmware byHand;
  byHand.receive(frames.out); // line ends and all
  write(list);
  EXPECT_EQ(byHand.macros(), pad().macros());
  EXPECT_EQ(pad().macros().size(), 2U);
}

TEST_F(WriteToPad, aTerminalShowsEveryFrame) {
  errIsTerminal_ = true;
  const std::string list = file("list", "[" + profile("P", mapping(3, tap("a"))) + "," +
                                            profile("M", mapping(1, tap("b"))) + "]");
  const Answer answer = write(list);
  const std::string begin = "\r\x1b[K";
  std::string expected;
  for (const std::string place : {"mode P, key 3", "mode M, key 1"}) {
    for (const std::string frame : {"1", "2", "3"})
      expected.append(begin).append("Writing " + place + ": frame " + frame + " of 3");
  }
  EXPECT_EQ(answer.err, expected + begin) << "and is clean in the end";
}

TEST_F(WriteToPad, aSingleCommandIsNotSeveral) {
  EXPECT_EQ(write(letters(1)).err, "trellivarctl: writing 1 command into the pad\n");
}

TEST_F(WriteToPad, findsThePortUnlessItIsNamed) {
  int looked = 0;
  discoverPort_ = [&] {
    ++looked;
    return std::optional(port());
  };
  EXPECT_EQ(run({"write", "--profiles", letters(1)}).code, 0);
  EXPECT_EQ(looked, 1);
  EXPECT_EQ(write(letters(1)).code, 0);
  EXPECT_EQ(looked, 1);
  EXPECT_EQ(pad().counts().stored, 2);
}

TEST_F(WriteToPad, withoutAPadAsksForOne) {
  EXPECT_EQ(run({"write", "--profiles", letters(1)}), failure(needPad));
  EXPECT_EQ(run({"write", "--profiles", letters(1), "--json"}), failure(needPad));
}

TEST_F(WriteToPad, aPortThatCannotBeOpenedIsNamedWithTheReason) {
  EXPECT_EQ(run({"write", "--profiles", letters(1), "--port", "/dev/none"}),
            failure("open /dev/none: No such file or directory"));
  EXPECT_EQ(run({"write", "--profiles", letters(1), "--port", "/dev/null"}),
            failure("tcgetattr failed"));
  EXPECT_EQ(run({"write", "--profiles", letters(1), "--port", ""}),
            failure("open : No such file or directory"));
}

TEST_F(WriteToPad, aSilentPadIsAskedFor) {
  connect({.silentAfter = 0});
  EXPECT_EQ(write(letters(1)), failure(needPad));
}

TEST_F(WriteToPad, aPadThatFallsSilentIsReportedAsSuch) {
  connect({.silentAfter = 2});
  const Answer answer = write(letters(3));
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.out, "");
  EXPECT_EQ(answer.err, "trellivarctl: writing 3 commands into the pad\ntrellivarctl: " +
                            std::string(stoppedMidWrite) + "\n");
}

TEST_F(WriteToPad, aCableThatIsPulledIsReportedAsSuch) {
  connect({.unpluggedAfter = 200});
  const Answer answer = write(letters(3));
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.out, "");
  EXPECT_TRUE(answer.err.ends_with(std::string(stoppedMidWrite) + "\n")) << answer.err;
}

TEST_F(WriteToPad, nothingToWriteAndBadInputTouchNoPad) {
  EXPECT_EQ(write(file("list", "[]")), failure("Nothing to write yet — record a key first."));
  EXPECT_EQ(write(file("list", "[7]")).code, 2);
  EXPECT_EQ(write(path("none")).code, 1);
  EXPECT_EQ(pad().counts().commands(), 0);
}

} // namespace
} // namespace trellivar::cli
