#include "bench/window/resources.h"

#include <ctime>
#include <fstream>
#include <string>

namespace trellivar {

double residentMebibytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kibibytes = 0;
    if (word == "VmRSS:" && status >> kibibytes) return kibibytes / 1024;
  }
  return -1;
}

std::chrono::duration<double> processorTime() {
  timespec used{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

} // namespace trellivar
