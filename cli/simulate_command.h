#pragma once

#include "cli/context.h"

#include <optional>
#include <string>

namespace trellivar::cli {

struct SimulateOptions {
  std::optional<std::string> script; ///< none: the tour
  bool json = false;
};

/// Runs a simulation, in this process or in another program that is made for it.
void runSimulate(Context& context, const SimulateOptions& options);

} // namespace trellivar::cli
