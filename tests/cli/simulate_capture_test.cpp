#include "tests/cli/simulation_fixture.h"

#include <algorithm>
#include <random>

namespace trellivar::cli {
namespace {

using documents::tap;

inline const Json missedKey{
    {"error", "Didn't catch that key — make sure the device is selected, then press it again."}};
inline const Json missedShortcut{
    {"error", "Didn't catch a shortcut — press the keys you want, then release."}};

std::string type(const std::string& names) { return R"({"type":[)" + names + "]}"; }

class SimulateCapture : public SimulationTest {
protected:
  /// The place of a step's report among all that was told.
  static std::size_t positionOf(const Simulation& simulation, int step) {
    const auto& lines = simulation.lines;
    return static_cast<std::size_t>(std::ranges::find_if(lines,
                                                         [&](const Json& line) {
                                                           return line.contains("step") &&
                                                                  line["step"] == step;
                                                         }) -
                                    lines.begin());
  }
};

TEST_F(SimulateCapture, aLearnedKeyIsReportedUnderTheStepThatAskedForIt) {
  const Simulation simulation =
      play({mode("R"), overBluetooth, learn(2), press(2), askStatus, wait("0.6"), askStatus});
  EXPECT_EQ(simulation.resultOf(3),
            Json::parse(R"({"codes":[{"keyCode":"tab"}],"isChord":false})"));
  EXPECT_GT(positionOf(simulation, 3), positionOf(simulation, 5)) << "half a second after it";
  EXPECT_LT(positionOf(simulation, 3), positionOf(simulation, 7));
}

TEST_F(SimulateCapture, codesThatArriveTogetherAreAChord) {
  const Simulation simulation = play({mode("M"), overBluetooth, learn(1), press(1), wait("0.6"),
                                      learn(2), R"({"press":[1,3],"stagger":0.2})"});
  EXPECT_EQ(simulation.resultOf(3), Json::parse(R"({"codes":[{"keyCode":"left_option"},)"
                                                R"({"keyCode":"1"}],"isChord":true})"));
  EXPECT_EQ(simulation.resultOf(6)["codes"].size(), 3U);
}

TEST_F(SimulateCapture, keysOneAfterTheOtherAreNoChord) {
  const Json learned = play({mode("R"), overBluetooth, learn(1), press(1), press(2)}).resultOf(3);
  EXPECT_EQ(learned, Json::parse(R"({"codes":[{"keyCode":"return_or_enter"},)"
                                 R"({"keyCode":"tab"}],"isChord":false})"));
}

TEST_F(SimulateCapture, aBoundKeyIsHeardAsThePadSendsItAndRemappedAgainAfterwards) {
  const Simulation simulation =
      play({bind("P", 1, commandD), onCable, learn(1), press(1), wait("0.6"), press(1)});
  EXPECT_EQ(simulation.heard(), "pad: left_control+ c+ c- left_control- | "
                                "engine: left_command+ d+ d- left_command-");
  EXPECT_EQ(simulation.resultOf(3)["isChord"], true);
}

TEST_F(SimulateCapture, onlyThePadsKeysAreLearned) {
  const Simulation simulation =
      play({mode("R"), overBluetooth, learn(1), type(R"("q")"), press(3), wait("0.6")});
  EXPECT_EQ(simulation.resultOf(3)["codes"].size(), 1U);
  EXPECT_EQ(simulation.resultOf(3)["codes"][0]["keyCode"], "escape");
}

TEST_F(SimulateCapture, anotherKeyboardsKeyDoesNotEndLearning) {
  const Simulation simulation = play({mode("R"), overBluetooth, learn(1), type(R"("q")"), wait("3"),
                                      press(3), wait("0.6"), askStatus});
  EXPECT_EQ(simulation.resultOf(3)["codes"][0]["keyCode"], "escape");
}

TEST_F(SimulateCapture, learningTriesThreeTimesForTwelveSeconds) {
  const Simulation simulation =
      play({onCable, learn(1), wait("36.1"), askStatus, wait("0.3"), askStatus});
  EXPECT_EQ(simulation.resultOf(2), missedKey);
  EXPECT_GT(positionOf(simulation, 2), positionOf(simulation, 4));
  EXPECT_LT(positionOf(simulation, 2), positionOf(simulation, 6));
}

TEST_F(SimulateCapture, theThirdPeriodStillLearns) {
  const Simulation simulation =
      play({mode("R"), overBluetooth, learn(1), wait("35"), press(1), wait("0.6")});
  EXPECT_TRUE(simulation.resultOf(3).contains("codes"));
}

TEST_F(SimulateCapture, aScriptThatEndsWhileLearningIsPlayedToItsResult) {
  EXPECT_EQ(play({onCable, learn(1)}).resultOf(2), missedKey);
  EXPECT_TRUE(play({onCable, learn(1), press(1)}).resultOf(2).contains("codes"));
}

TEST_F(SimulateCapture, thePadIsRemappedAgainAfterLearningHasFailed) {
  EXPECT_EQ(play({bind("P", 1, commandD), onCable, learn(2), wait("37"), press(1)}).heard(),
            "engine: left_command+ d+ d- left_command-");
}

TEST_F(SimulateCapture, learningFailsWhenThePadIsPulledInTheMiddle) {
  const Simulation simulation = play({onCable, learn(1), R"({"press":1,"hold":0.02})", wait("0.3"),
                                      away, learn(2), away, askStatus});
  EXPECT_TRUE(simulation.resultOf(2).contains("codes")) << "its keys had come up already";
  EXPECT_EQ(simulation.resultOf(6), missedKey);
  EXPECT_EQ(simulation.resultOf(8)["padLink"], "disconnected");
}

TEST_F(SimulateCapture, aPadThatComesBackWithinThePeriodIsLearnedAllTheSame) {
  const Simulation simulation = play({onCable, learn(1), away, onCable, press(1), wait("0.6")});
  EXPECT_TRUE(simulation.resultOf(2).contains("codes"));
}

TEST_F(SimulateCapture, anotherPadEndsLearning) {
  const Simulation simulation =
      play({bind("P", 1, commandD), onCable, learn(1), overBluetooth, press(1)});
  EXPECT_EQ(simulation.resultOf(3), missedKey);
  EXPECT_EQ(simulation.heard(), "engine: left_command+ d+ d- left_command-")
      << "and remapping goes on at once";
  EXPECT_EQ(play({onCable, learn(1), mode("M")}).resultOf(2), missedKey);
}

TEST_F(SimulateCapture, aShortcutIsRecordedOnTheOrdinaryKeyboardAndBound) {
  const Simulation simulation = play(
      {onCable, record(1), type(R"("left_command","right_shift","d")"), wait("0.6"), press(1)});
  EXPECT_EQ(simulation.resultOf(2),
            Json::parse(
                R"({"chord":{"key":{"keyCode":"d"},"modifiers":["left_command","right_shift"]}})"));
  EXPECT_TRUE(simulation.heard().ends_with("engine: left_command+ right_shift+ d+ d- "
                                           "right_shift- left_command-"))
      << simulation.heard();
}

TEST_F(SimulateCapture, aRecordedShortcutBelongsToTheModeOfThePad) {
  playOnData({mode("M"), overBluetooth, record(3), type(R"("a")"), wait("0.6")});
  for (const Json& profile : stored()) {
    const bool isM = profile["name"] == "M";
    EXPECT_EQ(profile["mappings"].size(), isM ? 1U : 0U) << profile["name"];
    if (isM) {
      EXPECT_EQ(profile["mappings"][0]["fromKeyId"], 3);
    }
  }
}

TEST_F(SimulateCapture, onlyOtherKeyboardsAreRecorded) {
  const Simulation simulation =
      play({mode("R"), overBluetooth, record(1), press(2), type(R"("a","b")"), press(3)});
  EXPECT_EQ(simulation.resultOf(3), Json::parse(R"({"sequence":{"keys":[{"keyCode":"a"},)"
                                                R"({"keyCode":"b"}]}})"));
  EXPECT_EQ(play({mode("R"), overBluetooth, record(1), press(2)}).resultOf(3), missedShortcut);
}

TEST_F(SimulateCapture, recordingTriesThreeTimesForEightSeconds) {
  const Simulation simulation =
      play({onCable, record(1), wait("23.9"), askStatus, wait("0.2"), askStatus});
  EXPECT_EQ(simulation.resultOf(2), missedShortcut);
  EXPECT_GT(positionOf(simulation, 2), positionOf(simulation, 4));
  EXPECT_LT(positionOf(simulation, 2), positionOf(simulation, 6));
  EXPECT_EQ(play({onCable, record(1)}).resultOf(2), missedShortcut);
  EXPECT_TRUE(
      play({onCable, record(1), wait("23"), type(R"("a")")}).resultOf(2).contains("sequence"));
}

TEST_F(SimulateCapture, aFailedRecordingKeepsTheBinding) {
  EXPECT_EQ(play({bind("P", 1, commandD), onCable, record(1), wait("25"), press(1)}).heard(),
            "engine: left_command+ d+ d- left_command-");
}

TEST_F(SimulateCapture, aRecordingKeepsTheLabelOfTheKey) {
  playOnData({bind("P", 2, tap("x"), R"(,"label":"Mine")"), onCable, record(2), type(R"("y")")});
  EXPECT_EQ(mappings()[0]["label"], "Mine");
  EXPECT_EQ(mappings()[0]["output"]["sequence"]["keys"][0]["keyCode"], "y");
}

TEST_F(SimulateCapture, whatIsStartedAnewTakesThePlaceOfWhatIsRunning) {
  const Simulation played =
      play({overBluetooth, learn(1), wait("1"), R"({"record":2})", wait("1"),
            R"({"type":["left_command","v"]})", wait("1"), learn(3), wait("1"), press(3)});
  EXPECT_TRUE(played.resultOf(2).contains("error"));
  EXPECT_TRUE(played.resultOf(4).contains("chord"));
  EXPECT_TRUE(played.resultOf(8).contains("codes"));
}

TEST_F(SimulateCapture, tellsInWordsWhatWasHeard) {
  EXPECT_EQ(told({mode("R"), overBluetooth, learn(1), R"({"press":[1,2]})", wait("0.6"), record(1),
                  type(R"("left_command","k")"), wait("0.6"), learn(3)}),
            "   1  the pad's switch moves to R\n"
            "   2  the pad connects over Bluetooth\n"
            "   3  learn key 1\n"
            "   4  press keys 1 and 2\n"
            "          0.700 s  pad        return_or_enter ↓  tab ↓  return_or_enter ↑  tab ↑\n"
            "   5  wait 0.6 s\n"
            "      (3)  the key sends return_or_enter+tab\n"
            "   6  record a shortcut for key 1\n"
            "   7  type left_command k on the keyboard\n"
            "          1.400 s  keyboard   left_command ↓  k ↓  k ↑  left_command ↑\n"
            "   8  wait 0.6 s\n"
            "      (6)  the shortcut is cmd+k\n"
            "   9  learn key 3\n"
            "      (9)  Didn't catch that key — make sure the device is selected, then press it "
            "again.\n");
}

/// Steps that may come in each other's way.
std::vector<std::string> anyScript(std::mt19937& random) {
  static const std::vector<std::string> steps{
      learn(1),
      learn(2),
      record(1),
      record(3),
      press(1),
      press(2),
      R"({"press":[1,2,3],"stagger":0.1})",
      R"({"press":[2,1],"hold":0.7})",
      onCable,
      overBluetooth,
      away,
      mode("P"),
      mode("R"),
      askStatus,
      wait("0.05"),
      wait("1"),
      wait("11.95"),
      type(R"("a")"),
      type(R"("left_control","x")"),
      R"({"bind":{"mode":"P","key":1,"output":{"modifiers":{"_0":["right_option"]}}}})",
      R"({"bind":{"mode":"R","key":2,"output":{"chord":{"modifiers":["left_shift"],"key":{"keyCode":"k"}}}}})",
      R"({"revoke":["inputMonitoring"]})",
      R"({"grant":["inputMonitoring","accessibility"]})",
      R"({"revoke":["accessibility"]})",
      R"({"disableTap":"timeout"})"};
  std::vector<std::string> script;
  for (int i = 0; i < 14; ++i)
    script.push_back(steps[random() % steps.size()]);
  return script;
}

TEST_F(SimulateCapture, everyStepThatReportsReportsOnceWhateverComesInItsWay) {
  std::mt19937 random(20260131); // NOLINT(cert-msc*): the same scripts each time
  for (int round = 0; round < 200 && !HasFailure(); ++round) {
    const Script script = anyScript(random);
    const Simulation simulation = play(script);
    std::map<int, int> reports;
    for (const Json& report : simulation.reports())
      ++reports[report["step"]];
    std::map<int, int> expected;
    for (std::size_t i = 0; i < script.size(); ++i) {
      const Json step = Json::parse(script[i]);
      if (step.contains("learn") || step.contains("record") || step.contains("status"))
        expected[static_cast<int>(i) + 1] = 1;
    }
    EXPECT_EQ(reports, expected) << text(script);
    EXPECT_EQ(simulation.heldInTheEnd(), std::vector<std::string>{}) << text(script);
  }
}

} // namespace
} // namespace trellivar::cli
