#pragma once

#include "core/output.h"

#include <string>
#include <vector>

/// The outputs that are offered ready to be assigned, each with a drawing.
namespace trellivar::OutputLibrary {

/// Media keys, then mouse buttons.
const std::vector<Output>& outputs();

/// The name of the drawing for an output, which is that of its key; empty for what is not offered.
std::string glyph(const Output& output);

} // namespace trellivar::OutputLibrary
