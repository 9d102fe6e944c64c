#include "viewmodels/onboarding_view_model.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <tuple>
#include <vector>

namespace trellivar {

void PrintTo(const OnboardingSteps& steps, std::ostream* out) {
  constexpr const char* names[] = {"done", "active", "pending"};
  *out << names[static_cast<int>(steps.accessibility)] << ' '
       << names[static_cast<int>(steps.inputMonitoring)] << ' '
       << names[static_cast<int>(steps.device)] << (steps.canContinue ? " continue" : "");
}

namespace {

using enum OnboardingStepState;

OnboardingSteps stepsOf(const EngineStatus& status) {
  OnboardingViewModel model;
  model.update(status);
  return *model.steps();
}

TEST(OnboardingStepState, isDoneActiveOrPendingInThisOrder) {
  EXPECT_EQ(static_cast<int>(done), 0);
  EXPECT_EQ(static_cast<int>(active), 1);
  EXPECT_EQ(static_cast<int>(pending), 2);
}

TEST(Onboarding, beginsWithAccessibility) {
  const OnboardingViewModel model;
  EXPECT_EQ(*model.steps(), (OnboardingSteps{active, pending, pending, false}));
}

TEST(Onboarding, followsTheStatusOfTheEngine) {
  struct Row {
    bool accessibility, inputMonitoring, grabbed;
    OnboardingSteps steps;
  };
  const Row rows[] = {
      {false, false, false, {active, pending, pending, false}},
      {false, false, true, {active, pending, done, false}},
      {false, true, false, {active, done, pending, false}},
      {false, true, true, {active, done, done, false}},
      {true, false, false, {done, active, pending, false}},
      {true, false, true, {done, active, done, false}},
      {true, true, false, {done, done, active, true}},
      {true, true, true, {done, done, done, true}},
  };
  for (const Row& row : rows)
    EXPECT_EQ(stepsOf({row.accessibility, row.inputMonitoring, row.grabbed}), row.steps)
        << row.accessibility << row.inputMonitoring << row.grabbed;
}

TEST(Onboarding, goesBackWhenAPermissionIsWithdrawn) {
  OnboardingViewModel model;
  model.update({true, true, true});
  model.update({true, false, false});
  EXPECT_EQ(*model.steps(), (OnboardingSteps{done, active, pending, false}));
}

TEST(Onboarding, announcesAChangedChecklistOnly) {
  OnboardingViewModel model;
  int announced = 0;
  const Subscription seen = model.steps().willChange([&](const OnboardingSteps&) { ++announced; });
  model.update({});
  EXPECT_EQ(announced, 0);
  model.update({true, false, false});
  model.update({true, false, false});
  EXPECT_EQ(announced, 1);
}

TEST(Onboarding, tellsChecklistsApartByEveryPart) {
  const OnboardingSteps steps;
  EXPECT_EQ(steps, OnboardingSteps{});
  EXPECT_NE(steps, (OnboardingSteps{done, pending, pending, false}));
  EXPECT_NE(steps, (OnboardingSteps{active, active, pending, false}));
  EXPECT_NE(steps, (OnboardingSteps{active, pending, done, false}));
  EXPECT_NE(steps, (OnboardingSteps{active, pending, pending, true}));
}

RC_GTEST_PROP(Onboarding, hasOneActiveStepAtMostAndAllBeforeItAreDone, ()) {
  OnboardingViewModel model;
  for (const auto& [accessibility, inputMonitoring, grabbed] :
       *rc::gen::arbitrary<std::vector<std::tuple<bool, bool, bool>>>()) {
    model.update({accessibility, inputMonitoring, grabbed});
    const OnboardingSteps& steps = *model.steps();
    const std::vector states{steps.accessibility, steps.inputMonitoring, steps.device};
    const auto current = std::ranges::find(states, active);
    RC_ASSERT(std::count(states.begin(), states.end(), active) <= 1);
    RC_ASSERT(current == states.end() ||
              std::count(states.begin(), current, done) == std::distance(states.begin(), current));
    RC_ASSERT(steps.canContinue == (accessibility && inputMonitoring));
  }
}

} // namespace
} // namespace trellivar
