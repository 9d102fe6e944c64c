#include "engine/orlo3_protocol.h"

#include "core/json/quoted.h"
#include "core/utf8.h"

namespace trellivar::Orlo3Protocol {

std::string writeKeyMacro(int key, std::string_view mode, std::string_view event,
                          std::span<const MacroEvent> macro, int repeatCount) {
  std::string steps;
  for (const MacroEvent& step : macro) {
    if (!steps.empty()) steps += ',';
    steps += step.json();
  }
  return R"({"o":"set","k":)" + std::to_string(key) + R"(,"m":"keyboard","e":)" +
         quotedJson(event) + R"(,"v":[)" + steps + R"(],"r":)" + std::to_string(repeatCount) +
         R"(,"s":)" + quotedJson(mode) + "}";
}

std::vector<std::string> frame(std::string_view line, int seq) {
  if (line.size() <= longestUnframed) return {std::string(line)};
  const std::size_t total = (line.size() + framePayload - 1) / framePayload;
  std::vector<std::string> frames;
  for (std::size_t i = 1; i <= total; ++i) {
    const std::string header =
        "S" + std::to_string(seq) + "[" + std::to_string(i) + "/" + std::to_string(total) + "]";
    frames.push_back(header +
                     utf8::replacingInvalid(line.substr((i - 1) * framePayload, framePayload)));
  }
  return frames;
}

std::vector<std::vector<std::string>> numberedFrames(std::span<const std::string> lines) {
  std::vector<std::vector<std::string>> frames;
  int seq = 1;
  for (const std::string& line : lines) {
    frames.push_back(frame(line, seq));
    seq = nextSequence(seq);
  }
  return frames;
}

} // namespace trellivar::Orlo3Protocol
