#include "cli/run.h"

#include "cli/commands.h"
#include "cli/context.h"
#include "core/json/quoted.h"
#include "core/utf8.h"
#include "engine/version.h"

#include <algorithm>
#include <exception>
#include <ostream>
#include <string>
#include <vector>

namespace trellivar::cli {

namespace {

/// Of a group of commands, one has to be named.
[[noreturn]] void failWithoutCommand(const CLI::App& group, const std::vector<std::string>& rest) {
  std::string names;
  for (const CLI::App* command : group.get_subcommands([](const CLI::App*) { return true; }))
    names += (names.empty() ? "" : ", ") + command->get_name();
  std::string found = "a command is missing";
  if (!rest.empty())
    found = (rest.front().starts_with('-') ? "unknown option " : "unknown command ") +
            quotedJson(rest.front());
  throw BadInput(found + "; the commands of " + group.get_name() + " are " + names);
}

/// Says which commands there are where the parser only says that one is required.
[[noreturn]] void failWithUsage(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App* group = &app;
  while (!group->get_subcommands().empty())
    group = group->get_subcommands().front();
  if (group->get_require_subcommand_min() > 0) failWithoutCommand(*group, app.remaining(true));
  throw BadInput(error.what());
}

constexpr int done = 0;
constexpr int failed = 1;
constexpr int badUsage = 2;

void addCommands(CLI::App& app, Context& context) {
  addCompile(app, context);
  addReplay(app, context);
  addRecordings(app, context);
  addOutputs(app, context);
  addFrame(app, context);
  addResolve(app, context);
  addStrings(app, context);
  addKeys(app, context);
  addProfiles(app, context);
  addDevices(app, context);
  addWrite(app, context);
  addQuery(app, context);
  addMonitor(app, context);
  addStatus(app, context);
  addSimulate(app, context);
}

/// Keeps a message on one line.
int report(std::ostream& err, std::string message, int exitCode) {
  std::ranges::replace(message, '\n', ' ');
  err << "trellivarctl: " << utf8::replacingInvalid(message) << '\n';
  return exitCode;
}

int print(std::ostream& out, std::ostream& err, const std::string& text, int exitCode = done) {
  if ((out << text).flush()) return exitCode;
  return report(err, "standard output cannot be written", failed);
}

} // namespace

int run(int argc, const char* const* argv, const Environment& environment) {
  std::ostream& out = environment.out;
  std::ostream& err = environment.err;
  try {
    Context context{.in = environment.in,
                    .live = out,
                    .err = err,
                    .errIsTerminal = environment.errIsTerminal,
                    .discoverPort = environment.discoverPort,
                    .machine = environment.machine};
    CLI::App app("Trellivar on the command line", "trellivarctl");
    app.set_version_flag("--version", "trellivarctl " + std::string(TrellivarEngine::version));
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--data-dir", context.dataDir,
                   "The data folder instead of the application's own");
    addCommands(app, context);
    try {
      app.parse(argc, argv);
    } catch (const CLI::Success& success) { // --help and --version
      app.exit(success, out, err);
      return print(out, err, {});
    } catch (const CLI::ParseError& error) {
      failWithUsage(app, error);
    }
    return print(out, err, context.out, context.isDone ? done : failed);
  } catch (const BadInput& error) {
    return report(err, error.what(), badUsage);
  } catch (const std::exception& error) {
    return report(err, error.what(), failed);
  }
}

} // namespace trellivar::cli
