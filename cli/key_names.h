#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace trellivar::cli {

/// Every key name of the system: ordinary keys, modifiers, media keys, mouse buttons.
const std::vector<std::string>& allKeyNames();

/// The candidates that a person most likely meant by `text`, nearest first, at most three.
std::vector<std::string> nearestNames(std::string_view text,
                                      const std::vector<std::string>& candidates);

} // namespace trellivar::cli
