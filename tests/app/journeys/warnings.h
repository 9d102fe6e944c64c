#pragma once

#include <string>

namespace trellivar {

/// From now on everything that Qt or QML warns of is collected, and printed no more.
void collectWarnings();

/// Those since the last call, one a line.
std::string takeWarnings();

} // namespace trellivar
