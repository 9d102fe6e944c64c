#pragma once

#include "cli/diagnostics_json.h"
#include "engine/portable_commands.h"

#include <string>

namespace trellivar::cli {

/// What a portable write has done: {"firmware":…,"modes":[…],"skippedByMode":{…}}.
OrderedJson jsonReport(const std::string& firmware, const PortableCommands& commands);

/// The same in the words of the application, a line for the write and one for each mode.
std::string wordedReport(const std::string& firmware, const PortableCommands& commands);

} // namespace trellivar::cli
