#include "cli/commands.h"

#include <mach-o/dyld.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

// On a Mac this program holds the system's interfaces, so their double lives in another one beside
// it.

namespace trellivar::cli {

namespace {

struct SimulateOptions {
  std::optional<std::string> script;
  bool json = false;
};

std::filesystem::path programOnDesk() {
  std::array<char, 4096> path{};
  auto size = static_cast<std::uint32_t>(path.size());
  if (_NSGetExecutablePath(path.data(), &size) != 0)
    throw Failure("the path of this program is too long");
  return std::filesystem::canonical(path.data()).parent_path() / "trellivarctl-desk";
}

/// Returns only by an exception.
void runSimulate(const Context& context, const SimulateOptions& options) {
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

} // namespace

void addSimulate(CLI::App& app, Context& context) {
  auto options = std::make_shared<SimulateOptions>();
  CLI::App* command = app.add_subcommand("simulate", "Run the whole engine on a simulated desk");
  command->add_option("SCRIPT", options->script, "Steps as JSON Lines; without it, a tour");
  command->add_flag("--json", options->json, "Report as JSON Lines");
  command->callback([&context, options] { runSimulate(context, *options); });
}

} // namespace trellivar::cli
