#include "cli/pad_port.h"
#include "engine/linux/serial_ports.h"

namespace trellivar::cli {

std::optional<std::string> discoverPort() { return discoverPadPort(); }

} // namespace trellivar::cli
