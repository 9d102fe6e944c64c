#include "app/local_computer.h"

#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

// On a Mac this program holds the system's interfaces, so their double lives in another one beside
// it.

namespace trellivar {

std::unique_ptr<Computer> computer(bool /*isSimulated*/) { return localComputer(); }

/// Returns only by an exception.
void continueOnTheDesk(char** argv) {
  const std::string program =
      QCoreApplication::applicationDirPath().toStdString() + "/trellivar-desk";
  ::execv(program.c_str(), argv);
  throw std::runtime_error(program + ": " + std::generic_category().message(errno));
}

} // namespace trellivar
