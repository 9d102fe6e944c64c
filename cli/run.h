#pragma once

#include "cli/local_machine.h"
#include "cli/pad_port.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace trellivar::cli {

/// Where a run takes its input from and what it prints to.
struct Environment {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool errIsTerminal = false; ///< people watch `err`, so that a line may be overwritten
  std::function<std::optional<std::string>()> discoverPort = cli::discoverPort;
  std::function<LocalMachine()> machine = localMachine;
};

/// The whole of `trellivarctl`. Returns the exit code: 0 done, 1 the operation failed, 2 bad usage
/// or bad input. Messages are one line each, on `err`.
int run(int argc, const char* const* argv, const Environment& environment);

} // namespace trellivar::cli
