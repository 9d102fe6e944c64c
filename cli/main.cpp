#include "cli/run.h"

#include <iostream>

int main(int argc, char** argv) {
  return trellivar::cli::run(argc, argv, std::cin, std::cout, std::cerr);
}
