#pragma once

#include "app/computer.h"

namespace trellivar {

/// The simulated desk, in a window of its own. One at a time.
std::unique_ptr<Computer> deskComputer();

} // namespace trellivar
