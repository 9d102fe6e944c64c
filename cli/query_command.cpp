#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "cli/pad_link.h"

#include <cmath>
#include <memory>
#include <optional>

namespace trellivar::cli {

namespace {

struct QueryOptions {
  std::string line;
  std::optional<std::string> port;
  double timeout = Orlo3Linking::firmwareTimeoutSeconds;
};

OrderedJson printable(const std::optional<Orlo3Reply>& reply) {
  if (!reply) return nullptr;
  return {{"op", reply->op}, {"target", reply->target}, {"value", reply->value}};
}

void runQuery(Context& context, const QueryOptions& options) {
  if (!std::isfinite(options.timeout) || options.timeout < 0)
    throw BadInput("--timeout: expected seconds, 0 or more");
  try {
    SystemLinkClock clock;
    const auto reply = padLink(context, options.port, clock).query(options.line, options.timeout);
    context.out = printable(reply).dump() + '\n';
    context.isDone = reply.has_value();
  } catch (const Orlo3Error& error) {
    throw failureOf(error);
  }
}

} // namespace

void addQuery(CLI::App& app, Context& context) {
  auto options = std::make_shared<QueryOptions>();
  CLI::App* command = app.add_subcommand("query", "Send one line to the pad and print its reply");
  command->add_option("LINE", options->line, R"(Such as {"o":"get","t":"firmware"})")->required();
  command->add_option("--port", options->port, "The pad's serial port; else it is looked for");
  command->add_option("--timeout", options->timeout, "Seconds to wait for the reply (3)");
  command->callback([&context, options] { runQuery(context, *options); });
}

} // namespace trellivar::cli
