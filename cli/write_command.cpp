#include "cli/commands.h"
#include "cli/data_folder.h"
#include "cli/interruption.h"
#include "cli/pad_link.h"
#include "cli/write_progress.h"
#include "cli/write_report.h"
#include "core/l10n.h"
#include "engine/orlo3_protocol.h"
#include "engine/portable_commands.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace trellivar::cli {

namespace {

struct WriteOptions {
  std::optional<std::string> profilesFile; ///< none: the stored ones
  std::optional<std::string> port;         ///< none: it is looked for
  bool json = false;
  bool dryRun = false;
};

std::vector<Profile> storedProfiles(const Context& context) {
  return *openProfiles(ProfileStore(dataFolder(context))).profiles();
}

PortableCommands commandsToWrite(Context& context, const WriteOptions& options) {
  const auto profiles =
      options.profilesFile ? readProfiles(context, *options.profilesFile) : storedProfiles(context);
  PortableCommands commands = portableCommands(portableModes(profiles));
  if (commands.lines.empty())
    throw Failure(std::string(L10n::text(L10n::Key::errNothingToWrite, AppLanguage::en)));
  return commands;
}

std::string framesOf(const PortableCommands& commands) {
  std::string text;
  for (const auto& frames : Orlo3Protocol::numberedFrames(commands.lines)) {
    for (const std::string& frame : frames)
      text += frame + '\n';
  }
  return text;
}

/// Returns the version of the firmware.
std::string sendToPad(Context& context, const WriteOptions& options,
                      const PortableCommands& commands) {
  try {
    InterruptibleClock clock;
    WriteProgress progress(context, commands.targets);
    Orlo3SerialLink link = padLink(context, options.port, clock);
    link.observeProgress([&](const auto& frame) { progress.show(frame); });
    return link.writeMacros(commands.lines);
  } catch (const Orlo3Error& error) {
    throw failureOf(error);
  } catch (const Interrupted&) {
    throw Failure("interrupted; the pad may hold some of the commands, so write again");
  }
}

void runWrite(Context& context, const WriteOptions& options) {
  PortableCommands commands = commandsToWrite(context, options);
  if (options.dryRun) {
    context.out = framesOf(commands);
    return;
  }
  std::string firmware = sendToPad(context, options, commands);
  const WriteStatus::Done done{std::move(firmware), std::move(commands.modes),
                               std::move(commands.skippedByMode)};
  context.out = options.json ? jsonReport(done).dump() + '\n' : wordedReport(done);
}

} // namespace

void addWrite(CLI::App& app, Context& context) {
  auto options = std::make_shared<WriteOptions>();
  CLI::App* command = app.add_subcommand("write", "Write the bindings of every mode into the pad");
  command->add_option("--profiles", options->profilesFile, "Profiles other than the stored ones");
  command->add_option("--port", options->port,
                      "The pad's serial port; else it is looked for. A dry run opens none");
  command->add_flag("--json", options->json,
                    "Report as JSON; a dry run prints frames all the same");
  command->add_flag("--dry-run", options->dryRun, "Print every frame; no pad is needed");
  command->callback([&context, options] { runWrite(context, *options); });
}

} // namespace trellivar::cli
