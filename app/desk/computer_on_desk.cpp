#include "app/desk/desk_computer.h"

// The program that holds the simulated desk and nothing else.

namespace trellivar {

std::unique_ptr<Computer> computer(bool /*isSimulated*/) { return deskComputer(); }

void continueOnTheDesk(char** /*argv*/) {}

} // namespace trellivar
