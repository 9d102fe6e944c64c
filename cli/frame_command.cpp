#include "cli/commands.h"
#include "cli/input.h"
#include "core/utf8.h"
#include "engine/orlo3_protocol.h"

#include <memory>

namespace trellivar::cli {

namespace {

std::string readCommandLine(Context& context) {
  std::string line = readInput(context, "-");
  if (line.ends_with('\n')) line.pop_back();
  if (line.find('\n') != std::string::npos) throw BadInput("-:2: expected one command line");
  if (!utf8::isValid(line)) throw BadInput("-:1: the command is not valid UTF-8");
  return line;
}

} // namespace

void addFrame(CLI::App& app, Context& context) {
  auto seqText = std::make_shared<std::string>();
  CLI::App* command =
      app.add_subcommand("frame", "Cut a command from standard input into the pad's frames");
  command->add_option("--seq", *seqText, "The sequence number, 1 to 9")->required();
  command->callback([&context, seqText] {
    const int seq = parseInteger("--seq", *seqText);
    if (seq < 1 || seq > 9) throw BadInput("--seq: expected a number from 1 to 9");
    for (const std::string& frame : Orlo3Protocol::frame(readCommandLine(context), seq))
      context.out += frame + '\n';
  });
}

} // namespace trellivar::cli
