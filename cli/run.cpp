#include "cli/run.h"

#include "cli/commands.h"
#include "cli/context.h"
#include "core/utf8.h"
#include "engine/version.h"

#include <algorithm>
#include <exception>
#include <ostream>

namespace trellivar::cli {

namespace {

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
  addWrite(app, context);
}

/// Keeps a message on one line.
int report(std::ostream& err, std::string message, int exitCode) {
  std::ranges::replace(message, '\n', ' ');
  err << "trellivarctl: " << utf8::replacingInvalid(message) << '\n';
  return exitCode;
}

int print(std::ostream& out, std::ostream& err, const std::string& text) {
  if ((out << text).flush()) return done;
  return report(err, "standard output cannot be written", failed);
}

} // namespace

int run(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err) {
  try {
    Context context{in, {}, {}};
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
    }
    return print(out, err, context.out);
  } catch (const CLI::ParseError& error) {
    return report(err, error.what(), badUsage);
  } catch (const BadInput& error) {
    return report(err, error.what(), badUsage);
  } catch (const std::exception& error) {
    return report(err, error.what(), failed);
  }
}

} // namespace trellivar::cli
