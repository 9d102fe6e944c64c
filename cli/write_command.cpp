#include "cli/commands.h"
#include "cli/data_folder.h"
#include "core/l10n.h"
#include "engine/orlo3_protocol.h"
#include "engine/portable_commands.h"

#include <memory>
#include <optional>

namespace trellivar::cli {

namespace {

struct WriteOptions {
  std::optional<std::string> profilesFile; ///< none: the stored ones
  std::string port;
  bool json = false;
  bool dryRun = false;
};

std::string framesOf(const std::vector<std::string>& lines) {
  std::string text;
  int seq = 1;
  for (const std::string& line : lines) {
    for (const std::string& frame : Orlo3Protocol::frame(line, seq))
      text += frame + '\n';
    seq = Orlo3Protocol::nextSequence(seq);
  }
  return text;
}

void runWrite(Context& context, const WriteOptions& options) {
  const auto profiles = options.profilesFile ? readProfiles(context, *options.profilesFile)
                                             : loadProfiles(ProfileStore(dataFolder(context)));
  const auto commands = portableCommands(portableModes(profiles));
  if (commands.lines.empty())
    throw Failure(std::string(L10n::text(L10n::Key::errNothingToWrite, AppLanguage::en)));
  context.out = framesOf(commands.lines);
}

} // namespace

void addWrite(CLI::App& app, Context& context) {
  auto options = std::make_shared<WriteOptions>();
  CLI::App* command =
      app.add_subcommand("write", "Show what writing the bindings into the pad would send");
  command->add_option("--profiles", options->profilesFile, "Profiles other than the stored ones");
  command->add_option("--port", options->port, "The pad's serial port; a dry run opens none");
  command->add_flag("--json", options->json,
                    "Report as JSON; a dry run prints frames all the same");
  // Sending needs the serial link, which does not exist yet.
  command->add_flag("--dry-run", options->dryRun, "Print every frame; no pad is needed")
      ->required();
  command->callback([&context, options] { runWrite(context, *options); });
}

} // namespace trellivar::cli
