#include "tests/journeys/user.h"

namespace trellivar {
namespace {

using firmware::Faults;
using Done = WriteStatus::Done;

class Writing : public testing::Test {
protected:
  Writing() { user.start(); }

  const WriteStatus& status() { return *user.root().portableWrite().status(); }
  /// A pad with something wrong, from its next connection by cable on.
  void spoil(const Faults& faults) { user.machine.port.emplace(user.machine.firmware, faults); }
  static WriteStatus failed(L10n::Key why) { return {WriteStatus::Error{text(why)}}; }

  User user;
};

TEST_F(Writing, whatIsWrittenComesFromThePadItself) {
  user.connect(User::Link::usb);
  user.assign(1, chordOutput({Modifier::command}, "c"));
  user.assign(2, keyOutput("f1")); // the firmware has no such key
  user.assign(3, keyOutput("w"));
  EXPECT_EQ(user.heardOf(1), "*left_command+ *c+(left_command) *c-(left_command) *left_command-");
  user.write();
  EXPECT_EQ(status(), (WriteStatus{Done{"1.0.7", {"P", "M", "R"}, {{"P", {2}}}}}));
  EXPECT_EQ(user.root().portableWrite().portableModes(), (std::set<std::string>{"P", "M", "R"}));
  EXPECT_EQ(user.machine.firmware.macros().size(), 2U);

  user.connect(User::Link::bluetooth);
  EXPECT_EQ(user.heardOf(1), "left_command+ c+(left_command) c-(left_command) left_command-");
  EXPECT_EQ(user.heardOf(3), "w+ w-");
  EXPECT_EQ(user.heardOf(2), "*f1+ *f1-") << "what was skipped is remapped as before";
}

TEST_F(Writing, withoutAnythingBoundThereIsNothingToWrite) {
  user.connect(User::Link::usb);
  user.write();
  EXPECT_EQ(status(), failed(L10n::Key::errNothingToWrite));
}

TEST_F(Writing, aMissingPadIsAskedForUntilItIsThere) {
  user.assign(1, keyOutput("z"));
  user.write();
  EXPECT_TRUE(status().is<WriteStatus::NeedPad>());
  user.connect(User::Link::bluetooth);
  EXPECT_TRUE(status().is<WriteStatus::NeedPad>()) << "it takes the cable";
  user.connect(User::Link::usb);
  EXPECT_TRUE(status().is<WriteStatus::Idle>());
  user.write();
  EXPECT_EQ(status(), (WriteStatus{Done{"1.0.7", {"P", "M", "R"}, {}}}));
}

TEST_F(Writing, aSilentPadIsAskedForAndGetsNothing) {
  spoil({.silentAfter = 0});
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("z"));
  user.write();
  EXPECT_TRUE(status().is<WriteStatus::NeedPad>());
  EXPECT_TRUE(user.machine.firmware.macros().empty());
  EXPECT_EQ(user.heardOf(1), "*z+ *z-") << "remapping goes on";
}

TEST_F(Writing, aPadThatDiesInTheMiddleIsTold) {
  spoil({.silentAfter = 1});
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("z"));
  user.write();
  EXPECT_EQ(status(), failed(L10n::Key::errMidWrite));
  EXPECT_TRUE(user.root().portableWrite().portableModes().empty());
  EXPECT_EQ(user.heardOf(1), "*z+ *z-");
}

TEST_F(Writing, aPadThatIsUnpluggedInTheMiddleIsTold) {
  spoil({.unpluggedAfter = 60});
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("z"));
  user.write();
  EXPECT_EQ(status(), failed(L10n::Key::errMidWrite));
}

TEST_F(Writing, whatIsEditedMeanwhileIsKeptButNotWritten) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("z"));
  user.root().writeToPad();
  EXPECT_TRUE(status().is<WriteStatus::Writing>());
  user.assign(1, keyOutput("y"));
  user.background.run();
  user.machine.desk.queue().run();
  EXPECT_TRUE(status().is<Done>());
  EXPECT_EQ(user.storedMappings("P").front().output, keyOutput("y"));
  user.connect(User::Link::bluetooth);
  user.heard();
  user.machine.pad.setMacros({}); // the factory's keys again
  EXPECT_EQ(user.heardOf(1), "*y+ *y-");
}

TEST_F(Writing, theNewestOfTwoWritesCounts) {
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("z"));
  user.root().writeToPad();
  user.assign(1, keyOutput("y"));
  user.write();
  EXPECT_TRUE(status().is<Done>());
  EXPECT_EQ(user.machine.firmware.counts().stored, 2);
  user.connect(User::Link::bluetooth);
  EXPECT_EQ(user.heardOf(1), "y+ y-");
}

TEST_F(Writing, whatAnEarlierWriteLeftInThePadIsMindedAlthoughTheNewestFailed) {
  user.connect(User::Link::usb);
  user.assign(1, chordOutput({Modifier::command}, "c"));
  user.root().writeToPad();
  user.background.run();
  user.root().writeToPad(); // before the end of the first was noticed
  user.unplug();
  user.background.run();
  user.machine.desk.queue().run();
  EXPECT_TRUE(status().is<WriteStatus::NeedPad>());
  const auto& applied = user.app().engine->applied;
  EXPECT_EQ(std::ranges::count(applied, true, &MappingSet::portable), 4)
      << "three identities of P and one of M";
}

} // namespace
} // namespace trellivar
