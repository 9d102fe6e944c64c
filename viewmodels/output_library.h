#pragma once

#include "core/output.h"

#include <vector>

/// The outputs that are offered ready to be assigned.
namespace trellivar::OutputLibrary {

/// Media keys, then mouse buttons.
const std::vector<Output>& outputs();

} // namespace trellivar::OutputLibrary
