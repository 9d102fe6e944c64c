#include "tests/cli/simulation_fixture.h"

namespace trellivar::cli {
namespace {

using documents::tap;

class SimulateCommand : public SimulationTest {
protected:
  static Json state(bool accessibility, bool inputMonitoring, bool grabbed,
                    const std::string& link) {
    return {{"accessibilityGranted", accessibility},
            {"inputMonitoringGranted", inputMonitoring},
            {"trellivarGrabbed", grabbed},
            {"padLink", link}};
  }
};

TEST_F(SimulateCommand, theDeskStartsPermittedWithThePadAway) {
  EXPECT_EQ(run({"simulate", "--json", "-"}, askStatus),
            printed(R"({"step":1,"result":{"accessibilityGranted":true,)"
                    R"("inputMonitoringGranted":true,"trellivarGrabbed":false,)"
                    R"("padLink":"disconnected"}})"
                    "\n"));
}

TEST_F(SimulateCommand, whatIsNotBoundReachesApplicationsAsThePadSendsIt) {
  EXPECT_EQ(run({"simulate", "--json", "-"}, text({onCable, press(2)})),
            printed(R"({"t":0.3,"sender":"pad","kind":"keyDown","name":"left_control",)"
                    R"("flags":["left_control"]})"
                    "\n"
                    R"({"t":0.304,"sender":"pad","kind":"keyDown","name":"v",)"
                    R"("flags":["left_control"]})"
                    "\n"
                    R"({"t":0.35,"sender":"pad","kind":"keyUp","name":"v",)"
                    R"("flags":["left_control"]})"
                    "\n"
                    R"({"t":0.354,"sender":"pad","kind":"keyUp","name":"left_control",)"
                    R"("flags":[]})"
                    "\n"));
}

TEST_F(SimulateCommand, aBoundKeyDoesWhatItIsBoundToOnBothLinks) {
  const Simulation simulation =
      play({bind("P", 1, commandD), onCable, press(1), overBluetooth, press(1)});
  EXPECT_EQ(simulation.heard(), "engine: left_command+ d+ d- left_command- "
                                "left_command+ d+ d- left_command-");
  EXPECT_EQ(simulation.arrivals()[1]["flags"], Json({"left_command"}));
  EXPECT_EQ(simulation.arrivals()[3]["flags"], Json::array());
}

TEST_F(SimulateCommand, flagsAreInTheOrderOfTheModifiersNotOfThePresses) {
  const Simulation simulation = play({R"({"type":["right_shift","left_command","a"]})"});
  EXPECT_EQ(simulation.heard(), "keyboard: right_shift+ left_command+ a+ a- left_command- "
                                "right_shift-");
  const Json flags = simulation.arrivals()[2]["flags"];
  EXPECT_EQ(flags, simulation.arrivals()[3]["flags"]);
  EXPECT_EQ(flags, Json({"left_command", "right_shift"}));
}

TEST_F(SimulateCommand, mediaKeysAndButtonsAreTheirOwnKinds) {
  const std::string media =
      R"({"sequence":{"keys":[{"keyCode":"mute","kind":"consumerKeyCode"}]}})";
  const std::string button =
      R"({"sequence":{"keys":[{"keyCode":"button3","kind":"pointingButton"}]}})";
  const Simulation simulation =
      play({bind("P", 1, media), bind("P", 2, button), onCable, press(1), press(2)});
  std::vector<std::string> kinds;
  for (const Json& arrival : simulation.arrivals())
    kinds.push_back(arrival["kind"]);
  EXPECT_EQ(kinds,
            (std::vector<std::string>{"consumerDown", "consumerUp", "pointingDown", "pointingUp"}));
}

TEST_F(SimulateCommand, aPadThatIsAwaySendsNothing) {
  EXPECT_EQ(play({press(1), onCable, away, press(1)}).lines, std::vector<Json>{});
}

TEST_F(SimulateCommand, thePadLinkTellsCableBluetoothOrNone) {
  const Simulation simulation =
      play({bind("P", 1, commandD), onCable, askStatus, overBluetooth, askStatus, away, askStatus});
  EXPECT_EQ(simulation.resultOf(3), state(true, true, true, "usb"));
  EXPECT_EQ(simulation.resultOf(5), state(true, true, true, "wireless"));
  EXPECT_EQ(simulation.resultOf(7), state(true, true, false, "disconnected"));
}

TEST_F(SimulateCommand, aPadWithoutBindingsIsNotIntercepted) {
  EXPECT_EQ(play({onCable, askStatus}).resultOf(2), state(true, true, false, "usb"));
}

TEST_F(SimulateCommand, thePadConnectsUnderAnIdentityOfItsOwn) {
  // The second identity of P over Bluetooth, and that of the cable.
  const Simulation simulation =
      play({bind("P", 1, commandD), R"({"connect":{"vendorId":1452,"productId":556}})", press(1),
            askStatus, R"({"connect":{"vendorId":19530,"productId":16725}})", askStatus});
  EXPECT_EQ(simulation.heard(), "engine: left_command+ d+ d- left_command-");
  EXPECT_EQ(simulation.resultOf(4)["padLink"], "wireless");
  EXPECT_EQ(simulation.resultOf(6)["padLink"], "usb");
}

TEST_F(SimulateCommand, anIdentityThatNobodyKnowsIsRemappedOnceItIsLearned) {
  const Simulation simulation =
      play({bind("P", 1, commandD), R"({"connect":{"vendorId":7,"productId":9}})", press(1),
            learn(1), press(1), wait("0.6"), press(1)});
  EXPECT_TRUE(simulation.resultOf(4).contains("codes"));
  EXPECT_TRUE(simulation.heard().ends_with("engine: left_command+ d+ d- left_command-"))
      << simulation.heard();
}

TEST_F(SimulateCommand, theSwitchChoosesTheProfile) {
  const Script bindAndLearn{bind("M", 1, tap("m")), bind("R", 1, tap("r")), bind("P", 1, tap("p")),
                            overBluetooth, press(1)};
  Script script = bindAndLearn;
  for (const std::string id : {"M", "R"}) {
    const Script more{mode(id), learn(1), press(1), wait("0.6"), press(1)};
    script.insert(script.end(), more.begin(), more.end());
  }
  script.push_back(mode("P"));
  script.push_back(press(1));
  EXPECT_EQ(play(script).heard(), "engine: p+ p- | pad: left_option+ 1+ 1- left_option- | "
                                  "engine: m+ m- | pad: return_or_enter+ return_or_enter- | "
                                  "engine: r+ r- p+ p-");
}

TEST_F(SimulateCommand, severalKeysArePressedInOrderAndReleasedTogether) {
  const Simulation simulation = play(
      {mode("R"), overBluetooth, R"({"press":[1,3,2],"stagger":0.1,"hold":0.25})", wait("0.1")});
  std::vector<std::pair<double, std::string>> events;
  for (const Json& arrival : simulation.arrivals())
    events.emplace_back(arrival["t"].get<double>() - 0.6, arrival["name"]);
  ASSERT_EQ(events.size(), 6U);
  const std::vector<std::pair<double, std::string>> expected{
      {0, "return_or_enter"},    {0.1, "escape"},   {0.2, "tab"},
      {0.45, "return_or_enter"}, {0.454, "escape"}, {0.458, "tab"}};
  for (std::size_t i = 0; i < events.size(); ++i) {
    EXPECT_NEAR(events[i].first, expected[i].first, 1e-6);
    EXPECT_EQ(events[i].second, expected[i].second);
  }
}

// A key is pressed that may begin a chord, of keys 1 and 2 together.
TEST_F(SimulateCommand, aKeyHeldPastTheChordWindowIsDeliveredAfterAll) {
  const Script learned{mode("R"), bind("R", 1, commandD), overBluetooth,
                       learn(1),  R"({"press":[1,2]})",   wait("0.6")};
  const auto with = [&](const std::string& step) {
    Script script = learned;
    script.push_back(step);
    Simulation simulation = play(script);
    EXPECT_EQ(simulation.resultOf(4)["isChord"], true);
    // The four events that were learned from went by before.
    simulation.lines.erase(simulation.lines.begin(), simulation.lines.begin() + 5);
    return simulation;
  };
  const Simulation held = with(R"({"press":1,"hold":0.7})");
  EXPECT_EQ(held.heard(), "engine: return_or_enter+ | pad: return_or_enter-");
  const auto arrivals = held.arrivals();
  ASSERT_EQ(arrivals.size(), 2U);
  EXPECT_NEAR(arrivals[1]["t"].get<double>() - arrivals[0]["t"].get<double>(), 0.2, 1e-6)
      << "the window is half a second";

  EXPECT_EQ(with(press(1)).heard(), "engine: return_or_enter+ return_or_enter-");
  EXPECT_EQ(with(R"({"press":[2,1],"stagger":0.4})").heard(),
            "engine: left_command+ d+ d- left_command-");
  EXPECT_EQ(with(R"({"press":[1,2],"stagger":0.6})").heard(),
            "engine: return_or_enter+ | pad: return_or_enter- | engine: tab+ tab-");
}

TEST_F(SimulateCommand, aBindingMayCarryALabel) {
  playOnData({bind("P", 3, commandD, R"(,"label":"Duplicate")"), bind("P", 1, tap("x"))});
  const Json labelled = mappings()[0];
  EXPECT_EQ(labelled["fromKeyId"], 3);
  EXPECT_EQ(labelled["label"], "Duplicate");
  EXPECT_EQ(labelled["output"]["chord"]["key"]["keyCode"], "d");
  EXPECT_EQ(mappings()[1]["fromKeyId"], 1);
  EXPECT_FALSE(mappings()[1].contains("label"));
}

TEST_F(SimulateCommand, bindingsAndLearnedKeysLastInTheDataFolder) {
  playOnData({mode("R"), bind("R", 2, commandD), overBluetooth, learn(2), press(2)});
  const auto tree = treeOf(path("data"));
  EXPECT_TRUE(tree.contains("profiles.json"));
  EXPECT_TRUE(tree.contains("signatures.json"));
  EXPECT_EQ(playOnData({mode("R"), overBluetooth, press(2)}).heard(),
            "engine: left_command+ d+ d- left_command-");
}

TEST_F(SimulateCommand, theProfilesOfTheDataFolderAreInForceFromTheStart) {
  expectDone({"bind", "P", "1", "cmd+d"});
  EXPECT_EQ(playOnData({onCable, press(1)}).heard(), "engine: left_command+ d+ d- left_command-");
}

TEST_F(SimulateCommand, nothingIsWrittenWithoutADataFolder) {
  const auto before = tree();
  play({mode("R"), bind("R", 2, commandD), overBluetooth, learn(2), press(2), wait("0.6"),
        record(3), R"({"type":["a"]})"});
  EXPECT_EQ(tree(), before) << "neither in the home folder nor elsewhere";
}

TEST_F(SimulateCommand, nothingOfTheHomeFolderIsReadWithoutADataFolder) {
  EXPECT_EQ(run({"profiles", "bind", "P", "1", "cmd+d"}), printed(""));
  EXPECT_EQ(play({onCable, press(1)}).heard(), "pad: left_control+ c+ c- left_control-");
}

TEST_F(SimulateCommand, waitingLetsTimePass) {
  const auto arrivals = play({R"({"type":["a"]})", wait("2.5"), R"({"type":["a"]})"}).arrivals();
  ASSERT_EQ(arrivals.size(), 4U);
  // Typing a key takes twice 0.03 s.
  EXPECT_EQ(arrivals[0]["t"], 0.0);
  EXPECT_EQ(arrivals[1]["t"], 0.03);
  EXPECT_EQ(arrivals[2]["t"], 2.56);
}

TEST_F(SimulateCommand, withoutAccessibilityThePadIsNotRemapped) {
  const Simulation simulation =
      play({bind("P", 1, commandD), onCable, R"({"revoke":["accessibility"]})", askStatus, press(1),
            R"({"grant":["accessibility"]})", askStatus, press(1)});
  EXPECT_EQ(simulation.resultOf(4), state(false, true, true, "usb"));
  EXPECT_EQ(simulation.resultOf(7), state(true, true, true, "usb"));
  EXPECT_EQ(simulation.heard(), "pad: left_control+ c+ c- left_control- | "
                                "engine: left_command+ d+ d- left_command-");
}

TEST_F(SimulateCommand, withoutInputMonitoringNothingIsLearned) {
  const Simulation simulation =
      play({R"({"revoke":["inputMonitoring"]})", onCable, askStatus, learn(1), press(1), wait("40"),
            R"({"grant":["inputMonitoring","accessibility"]})", askStatus, learn(1), press(1)});
  EXPECT_EQ(simulation.resultOf(3), state(true, false, false, "usb"));
  EXPECT_TRUE(simulation.resultOf(4).contains("error"));
  EXPECT_EQ(simulation.resultOf(8), state(true, true, false, "usb"));
  EXPECT_TRUE(simulation.resultOf(9).contains("codes"));
}

TEST_F(SimulateCommand, remappingGoesOnAfterTheSystemDisabledTheTap) {
  for (const std::string reason : {"timeout", "userInput"}) {
    const std::string disable = R"({"disableTap":")" + reason + R"("})";
    EXPECT_EQ(play({bind("P", 1, commandD), onCable, press(1), disable, press(1), disable, disable,
                    press(1)})
                  .heard(),
              "engine: left_command+ d+ d- left_command- left_command+ d+ d- left_command- "
              "left_command+ d+ d- left_command-")
        << reason;
  }
}

TEST_F(SimulateCommand, stepsAreCountedByLinesOfTheScript) {
  const Simulation simulation =
      understood(run({"simulate", "--json", "-"},
                     "\n \t\r\n" + askStatus + "\r\n\n\n" + onCable + "\n" + askStatus));
  ASSERT_EQ(simulation.lines.size(), 2U);
  EXPECT_EQ(simulation.resultOf(3)["padLink"], "disconnected");
  EXPECT_EQ(simulation.resultOf(7)["padLink"], "usb");
}

TEST_F(SimulateCommand, anEmptyScriptTellsNothing) {
  EXPECT_EQ(run({"simulate", "--json", "-"}, "\n\n"), printed(""));
  EXPECT_EQ(run({"simulate", "-"}, ""), printed(""));
}

TEST_F(SimulateCommand, aFileIsReadLikeStandardInput) {
  const std::string script = text({bind("P", 1, commandD), onCable, press(1), askStatus});
  const Answer answer = run({"simulate", "--json", file("script", script)});
  EXPECT_EQ(answer, run({"simulate", "--json", "-"}, script));
  EXPECT_NE(answer.out, "");
  EXPECT_EQ(run({"simulate", "--json", path("none")}),
            failure(path("none") + ": No such file or directory"));
}

TEST_F(SimulateCommand, theSameScriptTellsTheSameBytes) {
  const std::string script =
      text({bind("P", 1, commandD), onCable, press(1), R"({"press":[1,2,3],"stagger":0.013})",
            record(2), R"({"type":["left_shift","z"]})", wait("0.7"), learn(3), press(3),
            wait("1.7"), overBluetooth, press(2), mode("M"), press(1), askStatus});
  for (const Arguments& arguments : {Arguments{"simulate", "-"}, {"simulate", "--json", "-"}}) {
    const Answer first = run(arguments, script);
    EXPECT_EQ(first.code, 0);
    EXPECT_EQ(run(arguments, script), first);
  }
}

TEST_F(SimulateCommand, tellsInWordsWhatHappensAndWhatArrives) {
  EXPECT_EQ(told({bind("P", 1, commandD), "", onCable, press(1), R"({"press":[1,2],"hold":0.7})",
                  R"({"type":["left_shift","a"]})", R"({"disableTap":"timeout"})",
                  R"({"revoke":["inputMonitoring","accessibility"]})", askStatus, wait("1.5"), away,
                  mode("R"), R"({"connect":{"vendorId":7,"productId":9}})"}),
            "   1  in mode P, key 1 shall do cmd+d\n"
            "   3  the pad is plugged in by cable\n"
            "   4  press key 1\n"
            "          0.304 s  engine     left_command ↓  d ↓  d ↑  left_command ↑\n"
            "   5  press keys 1 and 2 for 0.7 s\n"
            "          0.404 s  engine     left_command ↓  d ↓  d ↑  left_command ↑\n"
            "          0.412 s  pad        v ↓  v ↑\n"
            "   6  type left_shift a on the keyboard\n"
            "          1.150 s  keyboard   left_shift ↓  a ↓  a ↑  left_shift ↑\n"
            "   7  the system disables the tap: timeout\n"
            "   8  revoke Input Monitoring and Accessibility\n"
            "   9  status\n"
            "      (9)  Accessibility not granted, Input Monitoring not granted, the pad is "
            "intercepted, link usb\n"
            "  10  wait 1.5 s\n"
            "  11  the pad is unplugged\n"
            "  12  the pad's switch moves to R\n"
            "  13  the pad connects as 7:9\n");
}

} // namespace
} // namespace trellivar::cli
