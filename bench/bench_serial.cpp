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
// pad behind a pseudo-terminal. These are real seconds, so there are three writes whatever the
// options.

using namespace trellivar;

namespace {

constexpr double mostRatio = 1.05;

/// Command + C on three keys of each mode, five frames each.
std::vector<std::string> commands() {
  const std::vector<MacroEvent> steps{{MacroEvent::Down{"Meta", 91}}, {MacroEvent::Wait{30}},
                                      {MacroEvent::Down{"C", 67}},    {MacroEvent::Wait{30}},
                                      {MacroEvent::Up{"C", 67}},      {MacroEvent::Wait{30}},
                                      {MacroEvent::Up{"Meta", 91}}};
  std::vector<std::string> lines;
  for (const char* mode : {"P", "M", "R"}) {
    for (int key = 1; key <= 3; ++key)
      lines.push_back(Orlo3Protocol::writeKeyMacro(key, mode, "click", steps, 1));
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

} // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv); // takes the options that all benchmarks are given
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  const auto lines = commands();
  const std::size_t frames = frameCount(lines);
  const double fixed = 0.150 + 0.030 * static_cast<double>(frames);
  std::array<double, 3> taken{};
  std::ranges::generate(taken, [&] { return secondsToWrite(lines); });
  std::ranges::sort(taken);
  const double ratio = taken[1] / fixed;
  std::printf("| portable write, real time | median | fixed by pacing | ratio | at most |\n");
  std::printf("|---|---|---|---|---|\n");
  std::printf("| %zu commands in %zu frames | %.3f s | %.3f s | %.3f | %.2f |%s\n", lines.size(),
              frames, taken[1], fixed, ratio, mostRatio,
              ratio > mostRatio ? " OVER THE LIMIT" : "");
  return 0;
}
