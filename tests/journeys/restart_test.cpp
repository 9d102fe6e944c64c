#include "tests/journeys/user.h"

#include <fstream>

namespace trellivar {
namespace {

TEST(Restart, findsEverythingAgain) {
  User user;
  user.start();
  user.turnTo("M");
  user.connect(User::Link::bluetooth);
  user.show("M");
  user.teach(1);
  user.assign(1, keyOutput("v"));
  user.mapping().rename(1, "Paste");
  user.app().settings->setLanguage(AppLanguage::zhHans);
  user.app().settings->setAppearance(AppAppearance::dark);
  const auto profiles = *user.profiles().profiles();
  const auto device = *user.mapping().device();

  user.quit();
  EXPECT_EQ(user.heardOf(1), "left_option+ 1+(left_option) 1-(left_option) left_option-");
  L10n::setCurrent(AppLanguage::en);
  user.start();

  EXPECT_EQ(*user.profiles().profiles(), profiles);
  EXPECT_EQ(user.profiles().active()->name, "P");
  EXPECT_EQ(*user.mapping().device(), device) << "with its learned key";
  EXPECT_EQ(*user.app().settings->language(), AppLanguage::zhHans);
  EXPECT_EQ(*user.app().settings->appearance(), AppAppearance::dark);
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  user.show("M");
  EXPECT_EQ(user.mapping().mapping(1), (KeyMapping{1, keyOutput("v"), "Paste"}));
  user.assign(2, keyOutput("w"));
  EXPECT_EQ(user.error(), "请先学习此按键。");
  EXPECT_TRUE(user.reports.empty());
  L10n::setCurrent(AppLanguage::en);
}

TEST(Restart, thePadThatIsThereIsWorkedOnFromTheStart) {
  User user;
  user.turnTo("R");
  user.connect(User::Link::usb);
  user.start();
  EXPECT_EQ(user.mapping().device()->name, "Orlo3-R");
}

TEST(Restart, withAKeyHeldLeavesNothingDown) {
  User user;
  user.start();
  user.connect(User::Link::usb);
  user.assign(1, chordOutput({Modifier::command}, "v"));
  user.hold(1);
  user.restart();
  user.letGo(1);
  user.pass(1);
  EXPECT_EQ(user.held(), "");
  user.heard();
  EXPECT_EQ(user.heardOf(1), "*left_command+ *v+(left_command) *v-(left_command) *left_command-");
}

TEST(Restart, withALearnUnderWayLeavesNothingBehind) {
  User user;
  user.start();
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  user.learn(1);
  user.restart();
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  EXPECT_TRUE(user.storedSignatures().empty());
}

TEST(Restart, profilesThatCannotBeReadAreKeptBeside) {
  User user;
  std::ofstream(user.file("profiles.json")) << "[{\"id\": 1";
  user.start();
  ASSERT_EQ(user.reports.size(), 1U);
  EXPECT_NE(user.reports[0].find("profiles.json:"), std::string::npos) << user.reports[0];
  EXPECT_NE(user.reports[0].find("and is kept as"), std::string::npos) << user.reports[0];
  EXPECT_EQ(user.content("profiles.json.unreadable"), "[{\"id\": 1");
  ASSERT_EQ(user.profiles().profiles()->size(), 3U);
  for (const Profile& profile : *user.profiles().profiles())
    EXPECT_TRUE(profile.mappings.empty());
  EXPECT_EQ(user.storedProfiles(), *user.profiles().profiles());

  user.connect(User::Link::usb);
  user.assign(1, keyOutput("v"));
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  user.restart();
  EXPECT_EQ(user.reports.size(), 1U) << "it is read again without complaint";
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
}

TEST(Restart, learnedKeysThatCannotBeReadAreKeptBeside) {
  constexpr std::string_view broken = "[{\"vendorId\": 1,}]";
  User user;
  std::ofstream(user.file("signatures.json")) << broken;
  user.start();
  ASSERT_EQ(user.reports.size(), 1U);
  EXPECT_NE(user.reports[0].find("signatures.json:1:"), std::string::npos) << user.reports[0];

  user.connect(User::Link::usb);
  user.teach(1);
  EXPECT_EQ(user.content("signatures.json.unreadable"), broken);
  EXPECT_EQ(user.storedSignatures().size(), 1U);
  EXPECT_NE(user.reports.back().find("signatures.json.unreadable"), std::string::npos);
}

TEST(Restart, profilesFromBeforeThereWereModesBecomeThoseOfP) {
  User user;
  const Profile old{UUID::random(), "Mine", {{1, keyOutput("v"), "Paste"}}};
  ProfileStore(user.folder.path()).save({&old, 1});
  user.start();
  user.connect(User::Link::usb);
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  EXPECT_EQ(user.storedMappings("P"), old.mappings);
  EXPECT_NE(user.content("profiles-legacy-backup.json").find("Mine"), std::string::npos);
}

TEST(Restart, theModesThatThePadHoldsAreForgotten) {
  User user;
  user.start();
  user.connect(User::Link::usb);
  user.assign(1, keyOutput("z"));
  user.write();
  EXPECT_EQ(user.root().portableWrite().portableModes().size(), 3U);
  user.restart();
  EXPECT_TRUE(user.root().portableWrite().portableModes().empty());
}

} // namespace
} // namespace trellivar
