#include "viewmodels/onboarding_view_model.h"

namespace trellivar {

namespace {

OnboardingStepState state(bool isDone, bool isNext) {
  if (isDone) return OnboardingStepState::done;
  return isNext ? OnboardingStepState::active : OnboardingStepState::pending;
}

} // namespace

void OnboardingViewModel::update(const EngineStatus& from) {
  const bool isPermitted = from.accessibilityGranted && from.inputMonitoringGranted;
  steps_.set({.accessibility = state(from.accessibilityGranted, true),
              .inputMonitoring = state(from.inputMonitoringGranted, from.accessibilityGranted),
              .device = state(from.trellivarGrabbed, isPermitted),
              .canContinue = isPermitted});
}

} // namespace trellivar
