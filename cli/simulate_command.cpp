#include "cli/commands.h"
#include "cli/data_folder.h"
#include "cli/simulate/account.h"
#include "cli/simulate/player.h"

#include <memory>
#include <optional>

namespace trellivar::cli {

namespace {

struct SimulateOptions {
  std::optional<std::string> script;
  bool json = false;
};

template <class Account>
void tell(Context& context, const std::vector<simulate::Step>& script,
          const std::optional<std::filesystem::path>& folder) {
  Account account(context.out);
  simulate::play(script, folder, account.listener());
}

void runSimulate(Context& context, const SimulateOptions& options) {
  const auto script =
      options.script ? simulate::readScript(context, *options.script) : simulate::tour();
  std::optional<std::filesystem::path> folder;
  if (context.dataDir) folder = dataFolder(context);
  if (options.json)
    tell<simulate::JsonAccount>(context, script, folder);
  else
    tell<simulate::WordedAccount>(context, script, folder);
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
