#include "engine/orlo3_protocol.h"
#include "engine/orlo3_serial_link.h"
#include "simulator/firmware/firmware_port.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

// A portable write takes the time that its pacing fixes: 150 ms for the port to settle and 30 ms
// for each frame. What the link adds to that is measured, with the system's clock and a simulated
// pad behind a pseudo-terminal. These are real seconds, so the counts of writes are fixed whatever
// the options.

using namespace trellivar;

namespace {

constexpr double mostRatio = 1.05;
/// Each of the two queries costs up to one poll of 15 ms, too much of the time of a shorter write.
constexpr int fewestCommandsWithALimit = 9;

/// A write and how often it is measured; an odd number, since the median counts.
struct Size {
  int commands;
  int writes;
};
constexpr std::array<Size, 3> sizes{{{1, 1}, {9, 3}, {27, 1}}};

/// Command + C on so many keys, five frames each, shared out among the modes.
std::vector<std::string> commands(int count) {
  const std::vector<MacroEvent> steps{{MacroEvent::Down{"Meta", 91}}, {MacroEvent::Wait{30}},
                                      {MacroEvent::Down{"C", 67}},    {MacroEvent::Wait{30}},
                                      {MacroEvent::Up{"C", 67}},      {MacroEvent::Wait{30}},
                                      {MacroEvent::Up{"Meta", 91}}};
  constexpr std::array<const char*, 3> modes{"P", "M", "R"};
  std::vector<std::string> lines;
  for (int i = 0; i < count; ++i) {
    const auto mode = static_cast<std::size_t>(i) % modes.size();
    const int key = 1 + i / static_cast<int>(modes.size());
    lines.push_back(Orlo3Protocol::writeKeyMacro(key, modes[mode], "click", steps, 1));
  }
  return lines;
}

std::size_t frameCount(const std::vector<std::string>& lines) {
  std::size_t count = 0;
  for (const auto& frames : Orlo3Protocol::numberedFrames(lines))
    count += frames.size();
  return count;
}

double secondsToWrite(const std::vector<std::string>& lines) {
  firmware::PadFirmware pad;
  const firmware::FirmwarePort port(pad);
  SystemLinkClock clock;
  Orlo3SerialLink link([&] { return port.path(); }, clock);
  const Instant begin = clock.now();
  link.writeMacros(lines);
  return (clock.now() - begin).count();
}

void measure(const Size& size) {
  const auto lines = commands(size.commands);
  const std::size_t frames = frameCount(lines);
  const double fixed = 0.150 + 0.030 * static_cast<double>(frames);
  std::vector<double> taken(static_cast<std::size_t>(size.writes));
  std::ranges::generate(taken, [&] { return secondsToWrite(lines); });
  std::ranges::sort(taken);
  const double median = taken[taken.size() / 2];
  const double ratio = median / fixed;
  std::printf("| %d command%s in %zu frames | %.3f s | %.3f s | %.3f |", size.commands,
              size.commands == 1 ? "" : "s", frames, median, fixed, ratio);
  if (size.commands < fewestCommandsWithALimit)
    std::printf(" |\n");
  else
    std::printf(" %.2f |%s\n", mostRatio, ratio > mostRatio ? " OVER THE LIMIT" : "");
}

} // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv); // takes the options that all benchmarks are given
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  std::printf("| portable write, real time | median | fixed by pacing | ratio | at most |\n");
  std::printf("|---|---|---|---|---|\n");
  std::ranges::for_each(sizes, measure);
  return 0;
}
