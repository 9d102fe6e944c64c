#include "tests/cli/cli_fixture.h"
#include "tests/cli/documents.h"

namespace trellivar::cli {
namespace {

using namespace documents;

constexpr auto senders = R"({"t":0,"senders":{"42":{"vendorId":7,"productId":9}}})"
                         "\n";
constexpr auto twoSenders = R"({"t":0,"senders":{"42":{"vendorId":7,"productId":9},)"
                            R"("-5":{"vendorId":7,"productId":9}}})"
                            "\n";

std::string event(const std::string& t, const std::string& kind, const std::string& name,
                  const std::string& sender = "42") {
  return R"({"t":)" + t + R"(,"sender":)" + sender + R"(,"kind":")" + kind + R"(","name":")" +
         name + "\"}\n";
}
std::string down(const std::string& t, const std::string& name, const std::string& sender = "42") {
  return event(t, "keyDown", name, sender);
}
std::string up(const std::string& t, const std::string& name, const std::string& sender = "42") {
  return event(t, "keyUp", name, sender);
}

std::string line(const std::string& t, const std::string& actions) {
  return R"({"t":)" + t + R"(,"actions":[)" + actions + "]}\n";
}
std::string flushed(const std::string& t, const std::string& actions) {
  return R"({"t":)" + t + R"(,"flush":true,"actions":[)" + actions + "]}\n";
}
std::string tapEvent(const std::string& kind, const std::string& name, const std::string& sender) {
  return R"({"sender":)" + sender + R"(,"kind":")" + kind + R"(","name":")" + name + R"("})";
}
std::string replayed(const std::string& name, const std::string& sender = "42") {
  return R"({"replay":[)" + tapEvent("keyDown", name, sender) + "]}";
}
std::string typed(const std::string& name) {
  return R"({"post":[)" + tapEvent("keyDown", name, "0") + "," + tapEvent("keyUp", name, "0") +
         "]}";
}

class ReplayCommand : public CliTest {
protected:
  Answer replay(const std::string& events, const Arguments& further = {}) const {
    Arguments arguments{"replay", "--sets", file("sets", sets(otherPadSet()))};
    arguments.insert(arguments.end(), further.begin(), further.end());
    arguments.push_back(file("events", events));
    return run(arguments);
  }
  /// The answer when a line of the recording is wrong.
  Answer wrong(const std::string& what) const { return badInput(path("events") + ":" + what); }
};

TEST_F(ReplayCommand, printsOneLineAStepAndNothingForControlLines) {
  EXPECT_EQ(replay(std::string(senders) + down("0.125", "left_control") + down("0.25", "f") +
                   R"({"t":0.25,"paused":[]})"
                   "\n" +
                   up("0.5", "f") + up("0.5", "left_control") + down("0.625", "g") +
                   up("0.75", "g") + down("1", "q")),
            printed(line("0.125", R"("suppress")") + line("0.25", R"("suppress",)" + typed("x")) +
                    line("0.5", R"("suppress")") + line("0.5", R"("suppress")") +
                    line("0.625", R"("suppress",)" + typed("y")) + line("0.75", R"("suppress")") +
                    line("1.0", R"("pass")")));
}

TEST_F(ReplayCommand, printsNothingForAnEmptyRecording) {
  EXPECT_EQ(replay("\n \r\n\t\n"), printed(""));
}

TEST_F(ReplayCommand, passesEventsOfUnknownSenders) {
  EXPECT_EQ(replay(senders + down("0", "g", "43")), printed(line("0.0", R"("pass")")));
  EXPECT_EQ(replay(down("0", "g")), printed(line("0.0", R"("pass")")));
}

TEST_F(ReplayCommand, treatsAllKindsOfEventsAlike) {
  for (const std::string kind : {"key", "consumer", "pointing"})
    EXPECT_EQ(replay(senders + event("1", kind + "Down", "g") + event("2", kind + "Up", "g")),
              printed(line("1.0", R"("suppress",)" + typed("y")) + line("2.0", R"("suppress")")));
  for (const std::string kind : {"consumerDown", "pointingDown"})
    EXPECT_EQ(replay(senders + event("1", kind, "f") + R"({"t":1.25,"flush":true})"),
              printed(line("1.0", R"("suppress")") + flushed("1.25", "") +
                      flushed("1.5", R"({"replay":[)" + tapEvent(kind, "f", "42") + "]}")));
}

TEST_F(ReplayCommand, keepsSendersOf64Bits) {
  const std::string most = "9223372036854775807";
  const std::string least = "-9223372036854775808";
  EXPECT_EQ(replay(R"({"t":0,"senders":{")" + most + R"(":{"vendorId":7,"productId":9},")" + least +
                   R"(":{"vendorId":7,"productId":9}}})"
                   "\n" +
                   down("0", "f", most) + down("0", "f", least)),
            printed(line("0.0", R"("suppress")") + line("0.0", R"("suppress")") +
                    flushed("0.5", replayed("f", least) + "," + replayed("f", most))));
}

TEST_F(ReplayCommand, flushesADeadlineBeforeALineOfTheSameTime) {
  EXPECT_EQ(replay(senders + down("1", "left_control") + down("1.5", "f")),
            printed(line("1.0", R"("suppress")") + flushed("1.5", replayed("left_control")) +
                    line("1.5", R"("suppress")") + flushed("2.0", replayed("f"))));
}

TEST_F(ReplayCommand, doesNotFlushBeforeTheDeadline) {
  EXPECT_EQ(replay(senders + down("1", "left_control") + down("1.4375", "f")),
            printed(line("1.0", R"("suppress")") + line("1.4375", R"("suppress",)" + typed("x"))));
}

TEST_F(ReplayCommand, flushesBeforeControlLinesToo) {
  for (const std::string control : {R"("sets":[])", R"("senders":{})", R"("flush":true)",
                                    R"("paused":[{"vendorId":7,"productId":9}])"}) {
    const std::string printedByControl =
        control == R"("flush":true)" ? flushed("1.5", "") : std::string();
    EXPECT_EQ(
        replay(senders + down("1", "f") + R"({"t":1.5,)" + control + "}\n"),
        printed(line("1.0", R"("suppress")") + flushed("1.5", replayed("f")) + printedByControl))
        << control;
  }
}

TEST_F(ReplayCommand, flushesEachDeadlineAtItsOwnTimeInOrder) {
  EXPECT_EQ(
      replay(twoSenders + down("1", "f") + down("1.125", "left_control", "-5") + down("4", "q")),
      printed(line("1.0", R"("suppress")") + line("1.125", R"("suppress")") +
              flushed("1.5", replayed("f")) + flushed("1.625", replayed("left_control", "-5")) +
              line("4.0", R"("pass")")));
}

TEST_F(ReplayCommand, flushesSeveralSendersOfOneDeadlineInOneLineSortedBySender) {
  std::string recording = R"({"t":0,"senders":{)";
  for (const std::string sender : {"42", "-5", "7", "100", "-40"})
    recording += (sender == "42" ? "\"" : ",\"") + sender + R"(":{"vendorId":7,"productId":9})";
  recording += "}}\n";
  std::string expected;
  for (const std::string sender : {"100", "7", "-5", "42", "-40"}) {
    recording += down("1", "f", sender);
    expected += line("1.0", R"("suppress")");
  }
  EXPECT_EQ(
      replay(recording),
      printed(expected + flushed("1.5", replayed("f", "-40") + "," + replayed("f", "-5") + "," +
                                            replayed("f", "7") + "," + replayed("f", "42") + "," +
                                            replayed("f", "100"))));
}

TEST_F(ReplayCommand, flushesWhatRemainsAfterTheLastLine) {
  EXPECT_EQ(replay(twoSenders + down("1", "f") + down("1.25", "f", "-5")),
            printed(line("1.0", R"("suppress")") + line("1.25", R"("suppress")") +
                    flushed("1.5", replayed("f")) + flushed("1.75", replayed("f", "-5"))));
}

TEST_F(ReplayCommand, runsTheWindowFromTheFirstHeldKeyAndReplaysAllOfThem) {
  EXPECT_EQ(replay(senders + down("1", "f") + down("1.25", "f")),
            printed(line("1.0", R"("suppress")") + line("1.25", R"("suppress")") +
                    flushed("1.5", R"({"replay":[)" + tapEvent("keyDown", "f", "42") + "," +
                                       tapEvent("keyDown", "f", "42") + "]}")));
}

TEST_F(ReplayCommand, takesTheChordWindow) {
  EXPECT_EQ(replay(senders + down("1", "f") + down("3", "left_control"), {"--chord-window", "2.5"}),
            printed(line("1.0", R"("suppress")") + line("3.0", R"("suppress",)" + typed("x"))));
  EXPECT_EQ(
      replay(senders + down("1", "f") + down("1.125", "left_control"), {"--chord-window=0.125"}),
      printed(line("1.0", R"("suppress")") + flushed("1.125", replayed("f")) +
              line("1.125", R"("suppress")") + flushed("1.25", replayed("left_control"))));
}

TEST_F(ReplayCommand, withoutAChordWindowHoldsNothingBeyondTheMoment) {
  EXPECT_EQ(replay(senders + down("1", "f") + down("1", "left_control"), {"--chord-window", "0"}),
            printed(line("1.0", R"("suppress")") + flushed("1.0", replayed("f")) +
                    line("1.0", R"("suppress")") + flushed("1.0", replayed("left_control"))));
}

TEST_F(ReplayCommand, manualFlushLeavesFlushingToTheRecording) {
  EXPECT_EQ(
      replay(senders + down("1", "f") +
                 R"({"t":1.25,"flush":true})"
                 "\n"
                 R"({"t":3,"flush":true})"
                 "\n",
             {"--manual-flush"}),
      printed(line("1.0", R"("suppress")") + flushed("1.25", "") + flushed("3.0", replayed("f"))));
  EXPECT_EQ(replay(senders + down("1", "f"), {"--manual-flush"}),
            printed(line("1.0", R"("suppress")")));
}

TEST_F(ReplayCommand, manualFlushReplaysOverdueKeysWithTheNextEventOfTheSender) {
  EXPECT_EQ(replay(senders + down("1", "f") + down("2", "q"), {"--manual-flush"}),
            printed(line("1.0", R"("suppress")") + line("2.0", replayed("f") + R"(,"pass")")));
}

TEST_F(ReplayCommand, pausedDevicesPassAndTheListIsReplaced) {
  EXPECT_EQ(replay(std::string(senders) +
                   R"({"t":0,"paused":[{"vendorId":7,"productId":9}]})"
                   "\n" +
                   down("1", "g") + up("1", "g") +
                   R"({"t":1,"paused":[{"vendorId":7,"productId":10}]})"
                   "\n" +
                   down("2", "g")),
            printed(line("1.0", R"("pass")") + line("1.0", R"("pass")") +
                    line("2.0", R"("suppress",)" + typed("y"))));
}

TEST_F(ReplayCommand, newSetsDropWhatIsHeld) {
  const std::string other =
      mappingSet(device(R"("vendorId":7,"productId":9)", physicalKey(1, key("f"), false)),
                 profile("P", mapping(1, tap("z"))));
  EXPECT_EQ(replay(senders + down("1", "f") + R"({"t":1.125,"sets":[)" + other + "]}\n" +
                   up("1.25", "f") + down("2", "f") + down("2", "left_control")),
            printed(line("1.0", R"("suppress")") + line("1.25", R"("suppress")") +
                    line("2.0", R"("suppress",)" + typed("z")) + line("2.0", R"("pass")")));
}

TEST_F(ReplayCommand, aNewSenderTableReplacesTheOld) {
  EXPECT_EQ(replay(senders + down("1", "g") +
                   R"({"t":1,"senders":{"8":{"vendorId":7,"productId":9}}})"
                   "\n" +
                   down("2", "g") + down("2", "g", "8")),
            printed(line("1.0", R"("suppress",)" + typed("y")) + line("2.0", R"("pass")") +
                    line("2.0", R"("suppress",)" + typed("y"))));
}

TEST_F(ReplayCommand, takesEitherFileFromStandardInputButNotBoth) {
  const std::string setsFile = file("sets", sets(otherPadSet()));
  const std::string eventsFile = file("events", senders + down("1", "g"));
  const Answer expected = printed(line("1.0", R"("suppress",)" + typed("y")));
  EXPECT_EQ(run({"replay", "--sets", "-", eventsFile}, sets(otherPadSet())), expected);
  EXPECT_EQ(run({"replay", "--sets", setsFile, "-"}, senders + down("1", "g")), expected);
  EXPECT_EQ(run({"replay", "--sets", "-", "-"}, sets(otherPadSet())),
            badInput("only one of SETS and EVENTS can be standard input"));
}

TEST_F(ReplayCommand, refusesTimeThatGoesBack) {
  EXPECT_EQ(replay("\r\n" + down("1", "g") + "\r\n\n" + R"({"t":0.5,"flush":true})"),
            wrong("5: t: earlier than the record before it"));
  EXPECT_EQ(replay(down("1", "g") + R"({"t":0.9,"paused":[]})"),
            wrong("2: t: earlier than the record before it"));
}

TEST_F(ReplayCommand, refusesRecordsOfAnotherShape) {
  struct Case {
    std::string record, reason;
  };
  const Case cases[] = {
      {"[1]", "expected an object, found a list"},
      {"{}", "t: missing"},
      {R"({"t":"0","flush":true})", "t: expected a number, found a text"},
      {R"({"t":true,"flush":true})", "t: expected a number, found true"},
      {R"({"t":0})", "expected one of kind, senders, paused, sets and flush"},
      {R"({"t":0,"flush":true,"paused":[]})",
       "expected one of kind, senders, paused, sets and flush"},
      {R"({"t":0,"flush":false})", "flush: expected true"},
      {R"({"t":0,"flush":1})", "flush: expected true or false, found the number 1"},
      {R"({"t":0,"senders":[]})", "senders: expected an object, found a list"},
      {R"({"t":0,"senders":{"x":{"vendorId":1,"productId":1}}})",
       "senders.x: expected a 64-bit sender id as the key"},
      {R"({"t":0,"senders":{"9223372036854775808":{"vendorId":1,"productId":1}}})",
       "senders.9223372036854775808: expected a 64-bit sender id as the key"},
      {R"({"t":0,"senders":{"":{"vendorId":1,"productId":1}}})",
       R"(senders[""]: expected a 64-bit sender id as the key)"},
      {R"({"t":0,"senders":{"4":{"vendorId":1,"productId":1},"04":{"vendorId":1,"productId":1}}})",
       "senders.4: sender 4 is there twice"},
      {R"({"t":0,"senders":{"4":{"vendorId":1}}})", "senders.4.productId: missing"},
      {R"({"t":0,"paused":{}})", "paused: expected a list, found an object"},
      {R"({"t":0,"paused":[{"vendorId":2147483648,"productId":1}]})",
       "paused[0].vendorId: expected an integer from -2147483648 to 2147483647, found the number "
       "2147483648"},
      {R"({"t":0,"paused":[{"vendorId":1.0,"productId":1}]})",
       "paused[0].vendorId: expected an integer from -2147483648 to 2147483647, found the number "
       "1.0"},
      {R"({"t":0,"sets":{}})", "sets: expected a list, found an object"},
      {R"({"t":0,"sets":[{"device":{"name":5}}]})",
       "sets[0].device.name: expected a text, found the number 5"},
      {R"({"t":0,"kind":"keyDown","name":"a"})", "sender: missing"},
      {R"({"t":0,"sender":9223372036854775808,"kind":"keyDown","name":"a"})",
       "sender: expected a 64-bit integer, found the number 9223372036854775808"},
      {R"({"t":0,"sender":1,"kind":"keydown","name":"a"})",
       R"(kind: unknown kind of event "keydown")"},
      {R"({"t":0,"sender":1,"kind":"keyDown"})", "name: missing"},
      {R"({"t":0,"t":0,"flush":true})", "t: the key is there twice"},
  };
  for (const auto& [record, reason] : cases)
    EXPECT_EQ(replay("\n" + down("0", "g") + record + "\n" + down("1", "g")), wrong("3: " + reason))
        << record;
}

TEST_F(ReplayCommand, refusesALayoutThatNamesAKeyTwiceInARecordToo) {
  const std::string repeated =
      mappingSet(device(R"("vendorId":7,"productId":9)",
                        physicalKey(1, "", false) + "," + physicalKey(1, "", false)),
                 profile("P", ""));
  EXPECT_EQ(replay(senders + std::string(R"({"t":0,"sets":[)") + repeated + "]}\n"),
            wrong("2: sets[0].device.layout.keys[1].id: key 1 is there twice"));
}

TEST_F(ReplayCommand, refusesChordWindowsThatAreNoTime) {
  for (const std::string window : {"-1", "-0.001", "nan", "inf"})
    EXPECT_EQ(replay("", {"--chord-window", window}),
              badInput("--chord-window: expected seconds, 0 or more"));
  EXPECT_EQ(replay("", {"--chord-window", "soon"}).code, 2);
  EXPECT_EQ(replay(senders + down("1e308", "f"), {"--chord-window", "1.7e308"}),
            badInput("--chord-window: too long for the times of EVENTS"));
}

TEST_F(ReplayCommand, checksTheSetsBeforeTheRecording) {
  EXPECT_EQ(run({"replay", "--sets", file("sets", R"({"sets":[{}]})"), file("events", "{")}),
            badInput(path("sets") + ":sets[0].device: missing"));
}

} // namespace
} // namespace trellivar::cli
