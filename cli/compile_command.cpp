#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "cli/input.h"

#include <memory>

namespace trellivar::cli {

void addCompile(CLI::App& app, Context& context) {
  auto file = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("compile", "Print the mapping table of a sets document");
  command->add_option("SETS", *file, "A sets document, - for standard input")->required();
  command->callback([&context, file] {
    const Json document = readDocument(context, *file);
    const auto sets = decodingFile(*file, [&] { return decodeSets(JsonReader(document)); });
    context.out = printable(MappingTable::compile(sets)).dump() + '\n';
  });
}

} // namespace trellivar::cli
