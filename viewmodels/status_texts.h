#pragma once

#include "viewmodels/onboarding_view_model.h"
#include "viewmodels/pad_link.h"
#include "viewmodels/write_status.h"

#include <string>
#include <vector>

/// What screens say about the state of things, in the current language.
namespace trellivar::StatusTexts {

/// On the chip of the device.
std::string chip(const PadLink& link);
/// In the pop-over of the chip.
std::string explanation(const PadLink& link);
/// Below the pad.
std::string stageHint(const PadLink& link);

/// One text that says what has become of a write; empty while nothing has.
std::string write(const WriteStatus& status);
/// A line for each mode that was written.
std::vector<std::string> modeLines(const WriteStatus::Done& done);

/// On the badge of a step.
std::string badge(OnboardingStepState state);

} // namespace trellivar::StatusTexts
