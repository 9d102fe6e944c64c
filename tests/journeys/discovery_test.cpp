#include "tests/journeys/user.h"

namespace trellivar {
namespace {

using Step = DiscoveryViewModel::Step;

constexpr DeviceIdentity cableR{0x4C4A, 0x4152};

class Discovering : public testing::Test {
protected:
  Discovering() { user.start(); }

  void begin(std::string_view mode) {
    sheet = user.root().discover(std::string(mode));
    sheet->checkPresence();
  }
  void listen(int key) {
    sheet->captureKey(key, [this] { ++user.completed; });
    user.machine.desk.queue().run();
  }
  void capture(int key) {
    listen(key);
    user.press(key);
    user.pass(0.6);
  }
  void discover(std::string_view mode) {
    begin(mode);
    for (const int key : sheet->keyIds())
      capture(key);
    EXPECT_EQ(*sheet->step(), Step{Step::Review{}});
    sheet->save();
    EXPECT_EQ(*sheet->step(), Step{Step::Done{}});
    sheet.reset();
  }
  const std::set<DeviceIdentity>& exempted() { return user.app().engine->exempted; }

  User user;
  std::shared_ptr<DiscoveryViewModel> sheet;
};

TEST_F(Discovering, theKeysOfMAreRemappedAfterwards) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  user.show("M");
  discover("M");
  EXPECT_EQ(user.completed, 3);
  EXPECT_EQ(user.storedSignatures(),
            (std::vector<StoredDeviceSignatures>{{bluetoothM.vendorId,
                                                  bluetoothM.productId,
                                                  {{1, chord({"left_option", "1"})},
                                                   {2, chord({"left_option", "2"})},
                                                   {3, chord({"left_option", "3"})}},
                                                  "M"}}));
  user.assign(3, keyOutput("v"));
  EXPECT_EQ(user.heardOf(3), "*v+ *v-");
  user.turnTo("P");
  user.turnTo("M");
  EXPECT_EQ(user.heardOf(3), "*v+ *v-");
}

TEST_F(Discovering, theKeysOfRAreRemappedAfterwards) {
  user.turnTo("R");
  user.connect(User::Link::usb);
  user.show("R");
  EXPECT_EQ(user.mapping().device()->name, "Orlo3-R");
  discover("R");
  EXPECT_EQ(user.storedSignatures(),
            (std::vector<StoredDeviceSignatures>{
                {cableR.vendorId,
                 cableR.productId,
                 {{1, single("return_or_enter")}, {2, single("tab")}, {3, single("escape")}},
                 "R"}}));
  user.assign(2, keyOutput("v"));
  EXPECT_EQ(user.heardOf(2), "*v+ *v-");
  EXPECT_EQ(user.heardOf(1), "return_or_enter+ return_or_enter-");
}

TEST_F(Discovering, whatIsDiscoveredCountsMoreThanWhatWasLearnedBefore) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  user.show("M");
  user.learn(1);
  user.press(2); // the wrong one
  user.pass(0.6);
  discover("M");
  EXPECT_TRUE(user.mapping().hasSignature(3));
  user.assign(1, keyOutput("v"));
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  user.restart();
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
}

TEST_F(Discovering, aModeIsUndiscoveredUntilItsKeysAreSaved) {
  EXPECT_FALSE(user.root().isUndiscovered()) << "of P everything is known";
  user.show("M");
  EXPECT_TRUE(user.root().isUndiscovered());
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  discover("M");
  EXPECT_FALSE(user.root().isUndiscovered());
  user.show("R");
  EXPECT_TRUE(user.root().isUndiscovered()) << "R is another mode";
}

TEST_F(Discovering, aPadInAnotherModeIsNotFound) {
  user.machine.desk.detach(user.machine.keyboard); // which might be a pad that nobody knows
  user.connect(User::Link::usb);
  begin("M");
  EXPECT_EQ(sheet->lastError()->value_or(""),
            "Couldn't see the pad in M mode — flip the switch to M and try again.");
  EXPECT_EQ(*sheet->step(), Step{Step::FlipSwitch{}});
  listen(1);
  EXPECT_EQ(user.completed, 1);
  EXPECT_TRUE(exempted().empty());
}

TEST_F(Discovering, thePadIsLeftAloneOnlyWhileItIsListenedTo) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  begin("P");
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  listen(1);
  EXPECT_EQ(exempted().size(), 1U);
  EXPECT_EQ(user.heardOf(1), "left_control+ c+(left_control) c-(left_control) left_control-");
  EXPECT_TRUE(exempted().empty());
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
}

TEST_F(Discovering, aKeyThatIsNotPressedIsAskedForAgain) {
  user.connect(User::Link::usb);
  begin("P");
  capture(1);
  listen(2);
  user.pass(12);
  EXPECT_EQ(*sheet->step(), (Step{Step::PressKey{2}}));
  EXPECT_EQ(sheet->lastError()->value_or(""), "Didn't catch that key — press it again.");
  EXPECT_TRUE(exempted().empty());
  capture(2);
  EXPECT_EQ(*sheet->step(), (Step{Step::PressKey{3}}));
}

TEST_F(Discovering, unpluggingInTheMiddleCostsOneKeyAtTheMost) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  begin("M");
  listen(1);
  user.hold(1);
  user.unplug();
  user.pass(12);
  EXPECT_TRUE(exempted().empty());
  EXPECT_FALSE(*sheet->isCapturing());
  user.connect(User::Link::bluetooth);
  capture(1);
  EXPECT_TRUE(sheet->captured()->contains(1));
  user.type({"left_option", "1"}); // what the pad left down was not minded by the engine
}

TEST_F(Discovering, aSheetThatIsClosedWhileItListensLeavesNothingBehind) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  begin("P");
  listen(1);
  sheet.reset();
  EXPECT_TRUE(exempted().empty());
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  user.pass(12);
  EXPECT_EQ(user.completed, 1);
  EXPECT_TRUE(user.storedSignatures().empty());
}

TEST_F(Discovering, aClosedSheetDoesNotDisturbTheOneThatIsOpenedNext) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  begin("P");
  listen(1);
  sheet.reset();
  begin("P");
  listen(1);
  EXPECT_EQ(exempted().size(), 1U) << "what the closed sheet listened to has ended only now";
  EXPECT_EQ(user.heardOf(1), "left_control+ c+(left_control) c-(left_control) left_control-");
  EXPECT_TRUE(sheet->captured()->contains(1));
  EXPECT_TRUE(exempted().empty());
}

TEST_F(Discovering, aClosedSheetDoesNotDisturbALearn) {
  user.connect(User::Link::usb);
  begin("P");
  listen(1);
  sheet.reset();
  user.learn(1);
  EXPECT_EQ(exempted().size(), 1U);
}

TEST_F(Discovering, anotherPadThatIsFoundMeanwhileIsTheOneThatIsLeftAlone) {
  user.turnTo("M");
  user.connect(User::Link::usb);
  begin("M");
  listen(1);
  user.connect(User::Link::bluetooth);
  sheet->checkPresence();
  listen(1);
  EXPECT_EQ(exempted(), std::set{bluetoothM});
  user.press(1);
  user.pass(0.6);
  EXPECT_TRUE(sheet->captured()->contains(1));
  EXPECT_TRUE(exempted().empty());
}

TEST_F(Discovering, aLearnEndsWhenASheetIsOpened) {
  user.connect(User::Link::usb);
  user.learn(1);
  begin("P");
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_TRUE(exempted().empty());
  capture(1);
  EXPECT_TRUE(sheet->captured()->contains(1));
  EXPECT_EQ(user.completed, 2);
}

} // namespace
} // namespace trellivar
