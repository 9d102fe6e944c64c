#pragma once

#include "core/output.h"

#include <string>

namespace trellivar {

/// An output as people read it: "⌘ ⇧ K", "h e l l o", "Volume Up". In the current language.
std::string outputLabel(const Output& output);

} // namespace trellivar
