#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "cli/input.h"
#include "core/output_events.h"
#include "engine/keycode_map.h"

#include <memory>

namespace trellivar::cli {

namespace {

std::string macroText(const Output& output) {
  const auto macro = KeycodeMap::macro(output);
  if (!macro) return "null\n";
  std::string steps;
  for (const MacroEvent& step : *macro)
    steps += (steps.empty() ? "" : ",") + step.json();
  return "[" + steps + "]\n";
}

template <class Print>
void addOutputCommand(CLI::App& app, Context& context, const std::string& name,
                      const std::string& help, const Print& print) {
  auto file = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand(name, help);
  command->add_option("OUTPUT", *file, "An output as JSON, - for standard input")->required();
  command->callback(
      [&context, file, print] { context.out = print(readAs<Output>(context, *file)); });
}

} // namespace

void addOutputs(CLI::App& app, Context& context) {
  addOutputCommand(app, context, "expand", "Print the events that an output posts",
                   [](const Output& output) {
                     return printableList(OutputEvents::events(output)).dump() + '\n';
                   });
  addOutputCommand(app, context, "macro",
                   "Print the pad's macro for an output, null when its firmware has none",
                   macroText);
}

} // namespace trellivar::cli
