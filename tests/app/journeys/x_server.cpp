#include "tests/app/journeys/x_server.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace trellivar {

namespace {

[[noreturn]] void becomeServer(int answer) {
  const std::string to = std::to_string(answer);
  ::execlp("Xvfb", "Xvfb", "-displayfd", to.c_str(), "-screen", "0", "1500x1000x24", "-terminate",
           "-nolisten", "tcp", nullptr);
  ::_exit(127);
}

/// The number of the display; empty if there is none.
std::string numberFrom(int answer) {
  std::string number;
  for (char c = 0; ::read(answer, &c, 1) == 1 && c != '\n';)
    number += c;
  return number;
}

} // namespace

void startDisplay() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  const pid_t server = ::fork();
  if (server < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (server == 0) {
    ::close(ends[0]);
    becomeServer(ends[1]);
  }
  ::close(ends[1]);
  const std::string number = numberFrom(ends[0]);
  ::close(ends[0]);
  if (number.empty()) throw std::runtime_error("Xvfb does not start");
  ::setenv("DISPLAY", (":" + number).c_str(), 1); // NOLINT(concurrency-mt-unsafe)
}

} // namespace trellivar
