#include "cli/pad_port.h"
#include "engine/darwin/iokit_port_discovery.h"

namespace trellivar::cli {

std::optional<std::string> discoverPort() { return darwin::discoverPadPort(); }

} // namespace trellivar::cli
