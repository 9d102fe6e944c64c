#include "tests/journeys/user.h"

namespace trellivar {
namespace {

/// The drawn keycaps follow the keys of the real pad.
class PressedKeycaps : public testing::Test {
protected:
  using Ids = std::set<int>;

  PressedKeycaps() { user.start(); }

  Ids down() { return *user.root().pressedKeys().ids(); }

  User user;
};

TEST_F(PressedKeycaps, followThePadBeforeAnythingIsBound) {
  for (const auto link : {User::Link::usb, User::Link::bluetooth}) {
    user.connect(link);
    for (const int key : desk::Pad::keyIds) {
      user.hold(key);
      EXPECT_EQ(down(), Ids{key});
      user.letGo(key);
      EXPECT_EQ(down(), Ids{});
    }
  }
}

TEST_F(PressedKeycaps, followKeysThatDoSomethingElse) {
  user.connect(User::Link::bluetooth);
  user.assign(1, keyOutput("v"));
  user.hold(1);
  user.hold(3);
  EXPECT_EQ(down(), (Ids{1, 3}));
  user.letGo(1);
  EXPECT_EQ(down(), Ids{3});
  user.letGo(3);
  EXPECT_EQ(down(), Ids{});
}

TEST_F(PressedKeycaps, followThePadWhicheverModeIsShown) {
  user.connect(User::Link::usb);
  user.show("M");
  user.hold(2);
  EXPECT_EQ(down(), Ids{2});
  user.show("R");
  EXPECT_EQ(down(), Ids{2});
  user.letGo(2);
  EXPECT_EQ(down(), Ids{});
}

TEST_F(PressedKeycaps, leaveTheKeyboardAlone) {
  user.connect(User::Link::usb);
  user.machine.desk.press(user.machine.keyboard, KeyName("left_control"));
  user.machine.desk.press(user.machine.keyboard, KeyName("c"));
  user.pass(0.05);
  EXPECT_EQ(down(), Ids{}) << "what key 1 sends";
  user.machine.desk.release(user.machine.keyboard, KeyName("c"));
  user.machine.desk.release(user.machine.keyboard, KeyName("left_control"));
}

TEST_F(PressedKeycaps, comeUpWhenThePadIsUnplugged) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  for (const int key : {1, 2}) { // bound and unbound
    user.hold(key);
    EXPECT_EQ(down(), Ids{key});
    user.unplug();
    EXPECT_EQ(down(), Ids{});
    user.connect(User::Link::usb);
    EXPECT_EQ(down(), Ids{});
    user.press(key);
  }
}

TEST_F(PressedKeycaps, comeUpWhenTheModeIsSwitched) {
  user.connect(User::Link::usb);
  user.hold(1);
  EXPECT_EQ(down(), Ids{1});
  user.turnTo("M");
  EXPECT_EQ(down(), Ids{});
  user.turnTo("P");
  EXPECT_EQ(down(), Ids{});
  user.hold(1);
  EXPECT_EQ(down(), Ids{1});
  user.letGo(1);
}

TEST_F(PressedKeycaps, followAPadThatIsLearnedOnceItIsKnownWhatItSends) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  user.hold(1);
  EXPECT_EQ(down(), Ids{}) << "nobody knows which key that is";
  user.letGo(1);
  user.teach(1);
  user.hold(1);
  EXPECT_EQ(down(), Ids{1});
  user.letGo(1);
  EXPECT_EQ(down(), Ids{});
}

TEST_F(PressedKeycaps, followThePadWhileAKeyIsLearned) {
  user.connect(User::Link::usb);
  user.learn(2);
  user.hold(2);
  EXPECT_EQ(down(), Ids{2});
  user.letGo(2);
  EXPECT_EQ(down(), Ids{});
  user.pass(0.6);
  EXPECT_FALSE(*user.mapping().isLearning());
  user.hold(2);
  EXPECT_EQ(down(), Ids{2});
  user.mapping().learnKey([] {});
  user.mapping().endActiveCapture();
  user.letGo(2);
  EXPECT_EQ(down(), Ids{});
}

TEST_F(PressedKeycaps, followThePadWhileAModeIsDiscovered) {
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  const auto sheet = user.root().discover("M");
  sheet->checkPresence();
  for (const int key : sheet->keyIds()) {
    sheet->captureKey(key, [] {});
    user.press(key);
    user.pass(0.6);
  }
  sheet->save();
  user.hold(3);
  EXPECT_EQ(down(), Ids{3});
  user.letGo(3);
  EXPECT_EQ(down(), Ids{});
}

TEST_F(PressedKeycaps, comeUpWhenTheEngineMayNoLongerSee) {
  user.connect(User::Link::usb);
  user.hold(1);
  EXPECT_EQ(down(), Ids{1});
  user.permit(false, true);
  EXPECT_EQ(down(), Ids{});
  user.letGo(1);
  user.permit(true, true);
  EXPECT_EQ(down(), Ids{});
  user.hold(1);
  EXPECT_EQ(down(), Ids{1});
  user.letGo(1);
}

TEST_F(PressedKeycaps, startAnewWithTheApplication) {
  user.connect(User::Link::usb);
  user.hold(1);
  user.restart();
  EXPECT_EQ(down(), Ids{});
  user.letGo(1);
  EXPECT_EQ(down(), Ids{});
  user.hold(1);
  EXPECT_EQ(down(), Ids{1});
  user.letGo(1);
}

} // namespace
} // namespace trellivar
