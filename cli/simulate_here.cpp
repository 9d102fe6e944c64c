#include "cli/data_folder.h"
#include "cli/simulate/account.h"
#include "cli/simulate/player.h"
#include "cli/simulate_command.h"

#include <filesystem>
#include <vector>

namespace trellivar::cli {

namespace {

template <class Account>
void tell(Context& context, const std::vector<simulate::Step>& script,
          const std::optional<std::filesystem::path>& folder) {
  Account account(context.out);
  simulate::play(script, folder, account.listener());
}

} // namespace

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

} // namespace trellivar::cli
