#include "viewmodels/status_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar {
namespace {

const PadLink onCable{PadLink::Usb{}};
const PadLink wireless{PadLink::Wireless{"Orlo3-M"}};
const PadLink none{PadLink::Disconnected{}};

TEST(StatusTexts, theChipTellsHowThePadIsConnected) {
  EXPECT_EQ(StatusTexts::chip(onCable), "Orlo3 · USB — ready to write");
  EXPECT_EQ(StatusTexts::chip(wireless), "Orlo3-M · wireless");
  EXPECT_EQ(StatusTexts::chip(none), "No Orlo3 detected");
}

TEST(StatusTexts, thePopOverExplainsTheChip) {
  EXPECT_EQ(StatusTexts::explanation(onCable), "USB cable connected — Write to pad is ready.");
  EXPECT_EQ(StatusTexts::explanation(wireless).substr(0, 24), "Connected over Bluetooth");
  EXPECT_EQ(StatusTexts::explanation(none).substr(0, 27), "Nothing on USB or Bluetooth");
}

TEST(StatusTexts, theHintBelowThePadDependsOnWhetherItIsThere) {
  EXPECT_EQ(StatusTexts::stageHint(onCable), StatusTexts::stageHint(wireless));
  EXPECT_EQ(StatusTexts::stageHint(wireless).substr(0, 9), "Tap a key");
  EXPECT_EQ(StatusTexts::stageHint(none).substr(0, 19), "Orlo3 not connected");
}

TEST(StatusTexts, aWriteIsTold) {
  EXPECT_EQ(StatusTexts::write({WriteStatus::Idle{}}), "");
  EXPECT_EQ(StatusTexts::write({WriteStatus::Writing{}}), "Writing…");
  EXPECT_EQ(StatusTexts::write({WriteStatus::NeedPad{}}),
            "Plug in / reconnect the Orlo3 via USB (replug if unresponsive)");
  EXPECT_EQ(StatusTexts::write({WriteStatus::Error{"as it is"}}), "as it is");
  EXPECT_EQ(StatusTexts::write({WriteStatus::Done{"1.0.7", {"P", "M", "R"}, {}}}),
            "Written P, M, R (firmware 1.0.7)");
}

TEST(StatusTexts, eachModeHasALineWithTheKeysThatWereSkipped) {
  const WriteStatus::Done done{"1.0.7", {"P", "M"}, {{"M", {1, 3}}}};
  EXPECT_EQ(StatusTexts::modeLines(done),
            (std::vector<std::string>{"P ✓", "M — keys 1, 3 skipped (no firmware equivalent)"}));
}

TEST(StatusTexts, aBadgeTellsTheStateOfAStep) {
  EXPECT_EQ(StatusTexts::badge(OnboardingStepState::done), "DONE");
  EXPECT_EQ(StatusTexts::badge(OnboardingStepState::active), "WAITING");
  EXPECT_EQ(StatusTexts::badge(OnboardingStepState::pending), "AUTOMATIC");
}

} // namespace
} // namespace trellivar
