#include "app/desk/desk_computer.h"
#include "app/local_computer.h"

namespace trellivar {

std::unique_ptr<Computer> computer(bool isSimulated) {
  return isSimulated ? deskComputer() : localComputer();
}

void continueOnTheDesk(char** /*argv*/) {}

} // namespace trellivar
