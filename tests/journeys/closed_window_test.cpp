#include "tests/journeys/user.h"

namespace trellivar {
namespace {

/// The window is closed, and the application goes on in the status area.
class ClosedWindow : public testing::Test {
protected:
  ClosedWindow() {
    user.start();
    user.connect(User::Link::usb);
    user.assign(1, keyOutput("v"));
    user.root().stop();
  }

  static constexpr const char* untouched =
      "left_control+ c+(left_control) c-(left_control) left_control-";
  static constexpr const char* remapped = "*v+ *v-";
  User user;
};

TEST_F(ClosedWindow, remappingGoesOn) {
  user.pass(60);
  EXPECT_EQ(user.heardOf(1), remapped);
}

TEST_F(ClosedWindow, remappingComesBackWithThePermission) {
  user.permit(false, true);
  EXPECT_EQ(user.heardOf(1), untouched);
  user.permit(true, true);
  EXPECT_EQ(user.heardOf(1), remapped);
}

TEST_F(ClosedWindow, aPadThatIsPluggedInAnewIsRemapped) {
  user.unplug();
  user.pass(10);
  user.connect(User::Link::usb);
  EXPECT_EQ(user.heardOf(1), remapped);
}

TEST_F(ClosedWindow, nothingIsShownUntilItOpens) {
  user.permit(false, true);
  EXPECT_TRUE(user.root().onboarding().steps()->canContinue);
  user.root().start();
  EXPECT_FALSE(user.root().onboarding().steps()->canContinue);
}

} // namespace
} // namespace trellivar
