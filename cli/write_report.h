#pragma once

#include "cli/diagnostics_json.h"
#include "viewmodels/write_status.h"

#include <string>

namespace trellivar::cli {

/// What a portable write has done: {"firmware":…,"modes":[…],"skippedByMode":{…}}.
OrderedJson jsonReport(const WriteStatus::Done& done);

/// The same in the words of the application, a line for the write and one for each mode.
std::string wordedReport(const WriteStatus::Done& done);

} // namespace trellivar::cli
