#include "tests/app/journeys/program.h"

#include <stdexcept>

namespace trellivar {

Program::Program(const QStringList& arguments) {
  process_.start(TRELLIVAR, arguments);
  if (!process_.waitForStarted()) throw std::runtime_error(TRELLIVAR " does not start");
}

bool Program::isRunning() {
  return !process_.waitForFinished(0) && process_.state() != QProcess::NotRunning;
}

void Program::kill() {
  process_.kill();
  process_.waitForFinished();
}

int Program::exitCode() const {
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

std::string Program::complaints() {
  process_.waitForReadyRead(0);
  return process_.readAllStandardError().toStdString();
}

} // namespace trellivar
