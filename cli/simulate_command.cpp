#include "cli/simulate_command.h"

#include "cli/commands.h"

#include <memory>

namespace trellivar::cli {

void addSimulate(CLI::App& app, Context& context) {
  auto options = std::make_shared<SimulateOptions>();
  CLI::App* command = app.add_subcommand("simulate", "Run the whole engine on a simulated desk");
  command->add_option("SCRIPT", options->script, "Steps as JSON Lines; without it, a tour");
  command->add_flag("--json", options->json, "Report as JSON Lines");
  command->callback([&context, options] { runSimulate(context, *options); });
}

} // namespace trellivar::cli
