#pragma once

#include "app/computer.h"

namespace trellivar {

/// The computer that the process runs on. Where it has no live input, there are stubs and the real
/// serial port.
std::unique_ptr<Computer> localComputer();

} // namespace trellivar
