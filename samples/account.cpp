#include "cli/input.h"
#include "cli/replay.h"
#include "cli/shortcut.h"

#include <exception>
#include <iomanip>
#include <iostream>
#include <sstream>

/// Plays the samples of a folder through the engine's core and tells in plain words what happened.
namespace trellivar::samples {

namespace {

std::string keyText(const TapEvent& event) {
  return event.name.text() + (isDown(event.kind) ? " ↓" : " ↑");
}

template <class Events> std::string keysText(const Events& events) {
  std::string text;
  for (const TapEvent& event : events)
    text += (text.empty() ? "" : "  ") + keyText(event);
  return text;
}

struct Words {
  std::string operator()(const TapAction::Pass&) const { return "passes"; }
  std::string operator()(const TapAction::Suppress&) const { return "kept back"; }
  std::string operator()(const TapAction::Rewrite& rewrite) const {
    return "arrives as " + rewrite.name.text();
  }
  std::string operator()(const TapAction::Post& post) const {
    return "SENDS  " + keysText(*post.events);
  }
  std::string operator()(const TapAction::Replay& replay) const {
    return "gives back  " + keysText(replay.events);
  }
};

std::string actionsText(const TapActions& actions) {
  std::string text;
  for (const TapAction& action : actions)
    text += (text.empty() ? "" : ", ") + std::visit(Words{}, action.value);
  return text;
}

/// `text` padded to a width in characters; the arrows take three bytes each.
std::string padded(const std::string& text, std::size_t width) {
  std::size_t characters = 0;
  for (const char c : text)
    characters += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  return text + std::string(characters < width ? width - characters : 0, ' ');
}

void printBindings(const MappingSet& set) {
  std::cout << "  " << set.device.name << ", mode " << set.profile.name
            << (set.portable ? ", written into the pad" : "") << ":";
  for (const KeyMapping& mapping : set.profile.mappings)
    std::cout << "  key " << mapping.fromKeyId << " = " << cli::shortcutText(mapping.output);
  std::cout << '\n';
}

void printStep(const cli::Replayed& step) {
  std::ostringstream source;
  if (step.event) source << "device " << step.event->senderId;
  std::cout << "  " << std::fixed << std::setprecision(3) << std::setw(7)
            << step.t.time_since_epoch().count() << " s  " << padded(source.str(), 11)
            << padded(step.event ? keyText(*step.event) : "(time is up)", 22)
            << actionsText(step.actions) << '\n';
}

void play(cli::Context& context, const std::string& folder, const JsonReader& sample) {
  const std::string base = folder + "/" + sample.member("name").text();
  const Json document = cli::readDocument(context, base + ".sets.json");
  const auto sets = cli::decodeSets(JsonReader(document));
  const auto steps = cli::readRecording(context, base + ".events.jsonl");

  std::cout << "\n"
            << sample.member("name").text() << ": " << sample.member("shows").text() << "\n";
  for (const MappingSet& set : sets)
    printBindings(set);
  cli::replay(sets, steps, Seconds(0.5), cli::FlushBy::timer, printStep);
}

int playAll(const std::string& folder) {
  cli::Context context{std::cin, {}, {}};
  const Json list = cli::readDocument(context, folder + "/samples.json");
  for (const Json& sample : list)
    play(context, folder, JsonReader(sample));
  return std::cout.flush() ? 0 : 1;
}

} // namespace

} // namespace trellivar::samples

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: sample_account FOLDER\n";
    return 2;
  }
  try {
    return trellivar::samples::playAll(argv[1]);
  } catch (const std::exception& error) {
    std::cerr << "sample_account: " << error.what() << '\n';
    return 1;
  }
}
