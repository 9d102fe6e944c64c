#include "cli/run.h"

#include <unistd.h>

#include <csignal>
#include <iostream>

int main(int argc, char** argv) {
  // A closed pipe is an output that cannot be written: reported, and exit code 1.
  std::signal(SIGPIPE, SIG_IGN);
  // Synchronised with C's streams, an error of reading would look like the end of the input.
  std::ios::sync_with_stdio(false);
  return trellivar::cli::run(argc, argv,
                             {.in = std::cin,
                              .out = std::cout,
                              .err = std::cerr,
                              .errIsTerminal = ::isatty(STDERR_FILENO) == 1});
}
