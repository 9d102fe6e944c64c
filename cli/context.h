#pragma once

#include "cli/local_machine.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

namespace trellivar::cli {

/// What a command works with. Output is collected and printed only when the command has come to its
/// end, so that bad input leaves nothing behind.
struct Context {
  std::istream& in;
  std::ostream& live; ///< standard output, for what is told while it happens
  std::ostream& err;  ///< for progress and notes only; errors are thrown
  bool errIsTerminal = false;
  std::function<std::optional<std::string>()> discoverPort = {}; ///< the pad's serial port
  std::function<LocalMachine()> machine = {};
  std::string out = {};
  bool isDone =
      true; ///< else what is printed is the answer of an operation that failed: exit code 1
  std::optional<std::string> dataDir =
      {}; ///< as given with --data-dir; none: the application's own
};

/// The command line or an input is wrong: exit code 2.
struct BadInput : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What was asked for cannot be done: exit code 1.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

} // namespace trellivar::cli
