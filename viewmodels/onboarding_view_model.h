#pragma once

#include "engine/remap_engine.h"
#include "viewmodels/published.h"

#include <cstdint>

namespace trellivar {

enum class OnboardingStepState : std::uint8_t { done, active, pending };

/// The checklist of the first start. Its steps follow one another: at most one is active, and none
/// before all earlier ones are done.
struct OnboardingSteps {
  OnboardingStepState accessibility = OnboardingStepState::active;
  OnboardingStepState inputMonitoring = OnboardingStepState::pending;
  OnboardingStepState device = OnboardingStepState::pending; ///< the engine has taken over the pad
  bool canContinue = false; ///< everything is permitted; the pad may come later

  friend bool operator==(const OnboardingSteps&, const OnboardingSteps&) = default;
};

/// Makes the checklist out of what the engine may do and does. Main thread.
class OnboardingViewModel {
public:
  const Published<OnboardingSteps>& steps() const noexcept { return steps_; }
  void update(const EngineStatus& from);

private:
  Published<OnboardingSteps> steps_;
};

} // namespace trellivar
