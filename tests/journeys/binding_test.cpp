#include "tests/journeys/user.h"
#include "viewmodels/profile_editing.h"

namespace trellivar {
namespace {

class Binding : public testing::Test {
protected:
  Binding() {
    user.start();
    user.turnTo("M");
    user.connect(User::Link::bluetooth);
    user.show("M");
    user.heard();
  }

  User user;
};

TEST_F(Binding, aKeyIsLearnedBoundRenamedAndBoundAnew) {
  user.learn(2);
  EXPECT_TRUE(*user.mapping().isLearning());
  user.press(2);
  EXPECT_EQ(user.heard(), "left_option+ 2+(left_option) 2-(left_option) left_option-")
      << "it is only looked at";
  user.pass(0.6);
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_EQ(user.completed, 1);
  EXPECT_EQ(user.storedSignatures(),
            (std::vector<StoredDeviceSignatures>{
                {0x05AC, 0x0220, {{2, chord({"left_option", "2"})}}, std::nullopt}}));

  user.assign(2, chordOutput({Modifier::command}, "c"));
  user.mapping().rename(2, " Copy ");
  EXPECT_EQ(user.heardOf(2), "*left_command+ *c+(left_command) *c-(left_command) *left_command-");

  user.record(2);
  user.type({"left_shift", "v"});
  EXPECT_EQ(user.heard(), "left_shift+ v+(left_shift) v-(left_shift) left_shift-");
  user.pass(0.6);
  EXPECT_EQ(user.completed, 2);
  EXPECT_EQ(user.heardOf(2), "*left_shift+ *v+(left_shift) *v-(left_shift) *left_shift-");
  const std::vector<KeyMapping> expected{{2, chordOutput({Modifier::shift}, "v"), "Copy"}};
  EXPECT_EQ(user.mapping().profile()->mappings, expected);
  EXPECT_EQ(user.storedMappings("M"), expected);
  EXPECT_EQ(user.storedProfiles(), *user.profiles().profiles());
}

TEST_F(Binding, aKeyThatIsNotLearnedIsNotBound) {
  user.assign(1, keyOutput("v"));
  EXPECT_EQ(user.error(), "Learn this key first.");
  EXPECT_TRUE(user.storedMappings("M").empty());
  EXPECT_EQ(user.heardOf(1), "left_option+ 1+(left_option) 1-(left_option) left_option-");
}

TEST_F(Binding, eachModeHasItsOwnBindings) {
  user.teach(1);
  user.assign(1, keyOutput("v"));
  user.turnTo("P");
  user.show("P");
  user.assign(1, keyOutput("w"));
  EXPECT_EQ(user.heardOf(1), "*w+ *w-");
  user.turnTo("M");
  EXPECT_EQ(user.heardOf(1), "*v+ *v-") << "whatever profile is on the screen";
  user.turnTo("P");
  user.show("M");
  EXPECT_EQ(user.heardOf(1), "*w+ *w-");
  EXPECT_EQ(user.storedMappings("P"), (std::vector<KeyMapping>{{1, keyOutput("w"), {}}}));
  EXPECT_EQ(user.storedMappings("M"), (std::vector<KeyMapping>{{1, keyOutput("v"), {}}}));
}

TEST_F(Binding, showingAnotherModeEndsALearn) {
  user.learn(1);
  user.show("R");
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_TRUE(user.app().engine->exempted.empty());
  user.press(1);
  user.pass(13);
  EXPECT_EQ(user.completed, 1);
  EXPECT_TRUE(user.storedSignatures().empty());
}

TEST_F(Binding, aRemappedKeyThatIsLearnedAnewIsLeftAloneMeanwhile) {
  user.teach(1);
  user.assign(1, keyOutput("v"));
  user.learn(1);
  user.press(1);
  EXPECT_EQ(user.heard(), "left_option+ 1+(left_option) 1-(left_option) left_option- "
                          "left_option+ 1+(left_option) 1-(left_option) left_option-");
  user.pass(0.6);
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
}

TEST_F(Binding, aBoundKeyThatIsLearnedAnewWorksAtOnce) {
  user.teach(1);
  user.assign(1, keyOutput("v"));
  user.learn(1);
  user.press(2); // from now on key 1 is where key 2 was
  user.pass(0.6);
  EXPECT_EQ(user.heardOf(2), "*v+ *v-");
  EXPECT_EQ(user.heardOf(1), "*left_option+ *1+(left_option) 1-(left_option) left_option-");
}

TEST_F(Binding, anEditMadeElsewhereIsShownAndInForceAtOnce) {
  user.teach(1);
  Profile shown = *user.mapping().profile();
  bindKey(shown, 1, keyOutput("v"));
  user.root().edit(shown);
  EXPECT_EQ(*user.mapping().profile(), shown);
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");

  user.show("P");
  bindKey(shown, 1, keyOutput("w"));
  user.root().edit(shown);
  EXPECT_EQ(user.mapping().profile()->name, "P");
  EXPECT_EQ(user.heardOf(1), "*w+ *w-");
  EXPECT_EQ(user.storedMappings("M"), shown.mappings);
}

TEST_F(Binding, aKeyHeldWhileTheProfileIsSwitchedComesUp) {
  user.teach(1);
  user.assign(1, chordOutput({Modifier::command}, "v"));
  user.heard();
  user.hold(1);
  user.show("P");
  user.pass(1);
  EXPECT_EQ(user.heard(), "*left_command+ *v+(left_command) *v-(left_command) *left_command-");
  user.letGo(1); // of which at most releases come through
  EXPECT_EQ(user.held(), "");
  EXPECT_EQ(user.heardOf(1), "*left_command+ *v+(left_command) *v-(left_command) *left_command-");
}

TEST_F(Binding, aTapThatTheSystemDisablesIsBackAtOnce) {
  user.teach(1);
  user.assign(1, keyOutput("v"));
  user.machine.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
  user.machine.desk.queue().run();
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
}

TEST_F(Binding, aShortcutThatNobodyTypesIsAskedForThreeTimes) {
  user.record(1);
  user.pass(23);
  EXPECT_TRUE(*user.mapping().isRecording());
  user.press(1);
  EXPECT_TRUE(*user.mapping().isRecording()) << "the pad itself does not count";
  user.pass(0.6);
  EXPECT_FALSE(*user.mapping().isRecording());
  EXPECT_EQ(user.error(), "Didn't catch a shortcut — press the keys you want, then release.");
  EXPECT_EQ(user.completed, 1);
}

TEST_F(Binding, aLanguageHoldsForWhatIsSaidFromThenOn) {
  user.assign(1, keyOutput("v"));
  user.app().settings->setLanguage(AppLanguage::zhHans);
  EXPECT_EQ(user.error(), "Learn this key first.") << "said before";
  user.assign(1, keyOutput("v"));
  EXPECT_EQ(user.error(), "请先学习此按键。");
  user.write();
  EXPECT_EQ(*user.root().portableWrite().status(),
            (WriteStatus{WriteStatus::Error{
                std::string(L10n::text(L10n::Key::errNothingToWrite, AppLanguage::zhHans))}}));
  user.app().settings->setLanguage(AppLanguage::en);
}

} // namespace
} // namespace trellivar
