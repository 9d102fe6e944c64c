#include "cli/simulate_command.h"

#include <mach-o/dyld.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

// On a Mac this program holds the system's interfaces, so their double lives in another one beside
// it.

namespace trellivar::cli {

namespace {

std::filesystem::path programOnDesk() {
  std::array<char, 4096> path{};
  auto size = static_cast<std::uint32_t>(path.size());
  if (_NSGetExecutablePath(path.data(), &size) != 0)
    throw Failure("the path of this program is too long");
  return std::filesystem::canonical(path.data()).parent_path() / "trellivarctl-desk";
}

} // namespace

/// Returns only by an exception.
void runSimulate(Context& context, const SimulateOptions& options) {
  std::vector<std::string> arguments{programOnDesk().string()};
  if (context.dataDir) arguments.insert(arguments.end(), {"--data-dir", *context.dataDir});
  arguments.emplace_back("simulate");
  if (options.json) arguments.emplace_back("--json");
  if (options.script) arguments.insert(arguments.end(), {"--", *options.script});

  std::vector<char*> pointers;
  for (std::string& argument : arguments)
    pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  ::execv(pointers.front(), pointers.data());
  throw Failure(arguments.front() + ": " + std::generic_category().message(errno));
}

} // namespace trellivar::cli
