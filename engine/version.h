#pragma once

#include <string_view>

namespace trellivar::TrellivarEngine {

inline constexpr std::string_view version = "0.1.0";

} // namespace trellivar::TrellivarEngine
