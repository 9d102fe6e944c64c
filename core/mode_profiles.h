#pragma once

#include <array>
#include <string_view>

namespace trellivar {

/// The names of the profiles that belong to the pad's switch positions, in their order.
inline constexpr std::array<std::string_view, 3> modeNames{"P", "M", "R"};

} // namespace trellivar
