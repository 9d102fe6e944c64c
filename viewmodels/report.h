#pragma once

#include <functional>
#include <string_view>

namespace trellivar {

/// Takes what went wrong where nobody is shown an error; `debugLog` in the application.
using Report = std::function<void(std::string_view)>;

} // namespace trellivar
