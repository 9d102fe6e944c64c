#include "cli/commands.h"
#include "cli/input.h"
#include "cli/replay.h"

#include <cmath>
#include <memory>

namespace trellivar::cli {

namespace {

struct ReplayOptions {
  std::string setsFile;
  std::string eventsFile;
  double chordWindow = 0.5;
  bool manualFlush = false;
};

double secondsOf(Instant t) { return t.time_since_epoch().count(); }

OrderedJson lineOf(const Replayed& step) {
  OrderedJson line{{"t", secondsOf(step.t)}};
  if (!step.event) line["flush"] = true;
  line["actions"] = printableList(step.actions);
  return line;
}

void runReplay(Context& context, const ReplayOptions& options) {
  if (options.setsFile == "-" && options.eventsFile == "-")
    throw BadInput("only one of SETS and EVENTS can be standard input");
  if (!std::isfinite(options.chordWindow) || options.chordWindow < 0)
    throw BadInput("--chord-window: expected seconds, 0 or more");
  const Json document = readDocument(context, options.setsFile);
  const auto sets =
      decodingFile(options.setsFile, [&] { return decodeSets(JsonReader(document)); });
  const auto steps = readRecording(context, options.eventsFile);
  if (!steps.empty() && !std::isfinite(secondsOf(steps.back().t) + options.chordWindow))
    throw BadInput("--chord-window: too long for the times of EVENTS");
  const FlushBy flushBy = options.manualFlush ? FlushBy::recording : FlushBy::timer;
  replay(sets, steps, Seconds(options.chordWindow), flushBy,
         [&](const Replayed& step) { context.out += lineOf(step).dump() + '\n'; });
}

} // namespace

void addReplay(CLI::App& app, Context& context) {
  auto options = std::make_shared<ReplayOptions>();
  CLI::App* command =
      app.add_subcommand("replay", "Play recorded events through the engine's core");
  command->add_option("--sets", options->setsFile, "A sets document: the bindings")->required();
  command->add_option("--chord-window", options->chordWindow,
                      "Seconds that held keys wait for the rest of their chord (0.5)");
  command->add_flag("--manual-flush", options->manualFlush,
                    "Flush overdue chords only at flush lines of the recording");
  command->add_option("EVENTS", options->eventsFile, "A recording, JSON Lines")->required();
  command->callback([&context, options] { runReplay(context, *options); });
}

} // namespace trellivar::cli
