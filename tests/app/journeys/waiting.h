#pragma once

#include <chrono>
#include <functional>
#include <string_view>

namespace trellivar {

/// How long people wait for a window before they call it broken.
inline constexpr std::chrono::seconds patience{8};

/// Looks again and again until the condition holds. In vain, the journey ends there: the exception
/// says what was waited for and all that is in sight, and the screen is saved as a picture.
void waitFor(std::string_view what, const std::function<bool()>& condition);

} // namespace trellivar
