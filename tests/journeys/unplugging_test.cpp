#include "tests/journeys/user.h"

namespace trellivar {
namespace {

class Unplugging : public testing::Test {
protected:
  Unplugging() { user.start(); }

  const std::set<DeviceIdentity>& exempted() { return user.app().engine->exempted; }
  DeviceIdentity mapped() { return user.mapping().device()->identity(); }

  User user;
};

TEST_F(Unplugging, theListFollowsThePad) {
  EXPECT_EQ(user.root().devices().selected()->has_value(), false);
  EXPECT_EQ(mapped(), cableP) << "until there is a pad, the one on the cable";
  user.connect(User::Link::usb);
  EXPECT_TRUE(user.root().devices().padLink()->is<PadLink::Usb>());
  user.turnTo("M");
  EXPECT_EQ(mapped(), cableM);
  user.connect(User::Link::bluetooth);
  EXPECT_EQ(mapped(), bluetoothM);
  EXPECT_EQ(*user.root().devices().padLink(), (PadLink{PadLink::Wireless{"Orlo3"}}));
  user.unplug();
  EXPECT_TRUE(user.root().devices().padLink()->is<PadLink::Disconnected>());
  EXPECT_EQ(mapped(), bluetoothM) << "it is still what one works on";
}

TEST_F(Unplugging, keysAreLearnedForEachIdentity) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  user.show("M");
  user.teach(1);
  user.connect(User::Link::usb);
  EXPECT_FALSE(user.mapping().hasSignature(1));
  user.teach(2);
  EXPECT_EQ(user.storedSignatures(),
            (std::vector<StoredDeviceSignatures>{
                {bluetoothM.vendorId, bluetoothM.productId, {{1, chord({"left_option", "1"})}}, {}},
                {cableM.vendorId, cableM.productId, {{2, chord({"left_option", "2"})}}, {}}}));
  user.assign(2, keyOutput("v"));
  EXPECT_EQ(user.heardOf(2), "*v+ *v-");
  user.connect(User::Link::bluetooth);
  EXPECT_TRUE(user.mapping().hasSignature(1));
  EXPECT_FALSE(user.mapping().hasSignature(2));
  EXPECT_EQ(user.heardOf(2), "left_option+ 2+(left_option) 2-(left_option) left_option-");
}

TEST_F(Unplugging, aLearnGoesOnWhenThePadComesBack) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  user.learn(1);
  user.unplug();
  EXPECT_TRUE(*user.mapping().isLearning());
  EXPECT_EQ(exempted(), std::set{bluetoothM});
  user.connect(User::Link::bluetooth);
  EXPECT_TRUE(*user.mapping().isLearning());
  user.press(1);
  user.pass(0.6);
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_TRUE(user.mapping().hasSignature(1));
  EXPECT_TRUE(exempted().empty());
  EXPECT_EQ(user.completed, 1);
}

TEST_F(Unplugging, aLearnOfAPadThatStaysAwayEndsByItself) {
  user.connect(User::Link::usb);
  user.learn(1);
  user.unplug();
  user.pass(3 * 12.1);
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_EQ(user.error(), text(L10n::Key::errNoCatchKey));
  EXPECT_TRUE(exempted().empty());
  EXPECT_EQ(user.completed, 1);
}

TEST_F(Unplugging, aLearnEndsWhenAnotherPadComes) {
  user.connect(User::Link::usb);
  user.learn(1);
  user.turnTo("M");
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_TRUE(exempted().empty());
  EXPECT_EQ(mapped(), cableM);
  user.press(1);
  user.pass(0.6);
  EXPECT_EQ(user.completed, 1);
  EXPECT_TRUE(user.storedSignatures().empty()) << "what the other pad sent is not kept";
}

TEST_F(Unplugging, aKeyThatIsHeldWhileItIsLearnedDoesNotStayDown) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  user.learn(1);
  user.hold(1);
  EXPECT_EQ(user.held(), "c left_control");
  user.unplug();
  user.pass(40);
  EXPECT_EQ(user.held(), "");
  EXPECT_TRUE(exempted().empty());
  EXPECT_FALSE(*user.mapping().isLearning());
}

TEST_F(Unplugging, aRemappedKeyThatIsHeldDoesNotStayDown) {
  user.connect(User::Link::usb);
  user.assign(1, chordOutput({Modifier::command}, "v"));
  user.hold(1);
  user.unplug();
  EXPECT_EQ(user.held(), "");
  user.connect(User::Link::usb);
  user.heard();
  EXPECT_EQ(user.heardOf(1), "*left_command+ *v+(left_command) *v-(left_command) *left_command-");
}

TEST_F(Unplugging, aKeyWithoutBindingThatIsHeldDoesNotStayDown) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v")); // the engine minds the pad
  user.hold(2);
  EXPECT_EQ(user.held(), "left_control v");
  user.unplug();
  EXPECT_EQ(user.held(), "");
}

TEST_F(Unplugging, aKeyHeldWhileTheModeIsSwitchedDoesNotStayDown) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  user.hold(2);
  user.turnTo("M");
  EXPECT_EQ(user.held(), "");
}

TEST_F(Unplugging, aRecordingGoesOnWithoutThePad) {
  user.connect(User::Link::usb);
  user.record(1);
  user.unplug();
  user.type({"left_command", "x"});
  user.pass(0.6);
  EXPECT_EQ(user.storedMappings("P"),
            (std::vector<KeyMapping>{{1, chordOutput({Modifier::command}, "x"), {}}}));
}

} // namespace
} // namespace trellivar
