#include "cli/context.h"
#include "cli/pad_port.h"

namespace trellivar::cli {

std::optional<std::string> discoverPort() {
  throw Failure("the pad cannot be looked for on this system; name its serial port with --port");
}

} // namespace trellivar::cli
