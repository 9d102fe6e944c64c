#include "tests/cli/simulation_fixture.h"

namespace trellivar::cli {
namespace {

using documents::tap;

const std::string mute = R"({"sequence":{"keys":[{"keyCode":"mute","kind":"consumerKeyCode"}]}})";

using SimulateWrite = SimulationTest;

TEST_F(SimulateWrite, whatIsWrittenPlaysOverBluetoothWithoutTheEngine) {
  const Simulation simulation =
      play({bind("P", 1, commandD), onCable, write, overBluetooth, press(1), wait("0.6")});
  EXPECT_EQ(simulation.resultOf(3),
            Json::parse(R"({"firmware":"1.0.7","modes":["P","M","R"],"skippedByMode":{}})"));
  EXPECT_EQ(simulation.heard(), "pad: left_command+ d+ d- left_command-");
}

TEST_F(SimulateWrite, onTheCableTheEngineGoesOnRemappingTheFactoryKeys) {
  EXPECT_EQ(play({bind("P", 1, commandD), onCable, write, press(1)}).heard(),
            "engine: left_command+ d+ d- left_command-");
}

TEST_F(SimulateWrite, aKeyWithoutABindingKeepsItsFactoryKeys) {
  EXPECT_EQ(
      play({bind("P", 1, commandD), onCable, write, press(2), overBluetooth, press(2)}).heard(),
      "engine: left_control+ v+ | pad: v- left_control- volume_decrement+ volume_decrement-")
      << "its first code waited for the chord of key 1";
}

TEST_F(SimulateWrite, modesComeInTheirOrderWithTheKeysThatWereSkipped) {
  const Simulation simulation = play(
      {bind("R", 2, mute), bind("R", 1, mute), bind("P", 3, tap("a")), onCable, write, wait("1")});
  const Json written = simulation.resultOf(5);
  EXPECT_EQ(written.dump(),
            R"({"firmware":"1.0.7","modes":["P","M","R"],"skippedByMode":{"R":[1,2]}})");
}

TEST_F(SimulateWrite, whatThePadCannotPlayTheEngineStillDoes) {
  EXPECT_EQ(play({bind("P", 1, tap("a")), bind("P", 2, mute), onCable, write, overBluetooth,
                  press(2), press(1)})
                .heard(),
            "engine: mute+ mute- | pad: a+ a-");
}

TEST_F(SimulateWrite, everyModePlaysItsOwn) {
  EXPECT_EQ(play({bind("P", 1, tap("p")), bind("M", 1, tap("m")), bind("R", 1, tap("r")), onCable,
                  write, overBluetooth, press(1), mode("M"), press(1), mode("R"), press(1)})
                .heard(),
            "pad: p+ p- m+ m- r+ r-");
}

TEST_F(SimulateWrite, aPadThatIsAwayOrOnBluetoothIsNeeded) {
  const Simulation simulation = play(
      {bind("P", 1, commandD), write, overBluetooth, write, onCable, away, write, onCable, write});
  for (const int step : {2, 4, 7})
    EXPECT_EQ(simulation.resultOf(step), Json({{"needPad", true}})) << step;
  EXPECT_EQ(simulation.resultOf(9)["modes"], Json({"P", "M", "R"}));
}

TEST_F(SimulateWrite, nothingToWriteIsAnErrorEvenWithThePad) {
  const Json nothing{{"error", "Nothing to write yet — record a key first."}};
  EXPECT_EQ(play({onCable, write}).resultOf(2), nothing);
  EXPECT_EQ(play({write}).resultOf(1), nothing);
  EXPECT_EQ(play({bind("P", 1, mute), onCable, write}).resultOf(3), nothing)
      << "nor a key without a firmware equivalent";
}

TEST_F(SimulateWrite, onTheDeskNoTimePasses) {
  const auto arrivals =
      play({bind("P", 1, commandD), onCable, write, R"({"type":["a"]})"}).arrivals();
  ASSERT_FALSE(arrivals.empty());
  EXPECT_EQ(arrivals[0]["t"], 0.3);
}

TEST_F(SimulateWrite, aScriptWithAWriteTellsTheSameBytesToo) {
  const std::string script =
      text({bind("P", 1, commandD), onCable, write, overBluetooth, press(1), wait("0.6")});
  const Answer first = run({"simulate", "--json", "-"}, script);
  EXPECT_EQ(first.code, 0);
  EXPECT_EQ(run({"simulate", "--json", "-"}, script), first);
}

TEST_F(SimulateWrite, tellsInWordsWhatBecameOfIt) {
  EXPECT_EQ(told({write, bind("P", 1, commandD), write, onCable, bind("M", 2, mute),
                  bind("M", 1, tap("a")), write}),
            "   1  write the bindings into the pad\n"
            "      (1)  Nothing to write yet — record a key first.\n"
            "   2  in mode P, key 1 shall do cmd+d\n"
            "   3  write the bindings into the pad\n"
            "      (3)  Plug in / reconnect the Orlo3 via USB (replug if unresponsive)\n"
            "   4  the pad is plugged in by cable\n"
            "   5  in mode M, key 2 shall do mute\n"
            "   6  in mode M, key 1 shall do a\n"
            "   7  write the bindings into the pad\n"
            "      (7)  Written P, M, R (firmware 1.0.7)\n"
            "      (7)  P ✓\n"
            "      (7)  M — keys 2 skipped (no firmware equivalent)\n"
            "      (7)  R ✓\n");
}

} // namespace
} // namespace trellivar::cli
