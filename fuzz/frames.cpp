#include "core/utf8.h"
#include "engine/orlo3_protocol.h"
#include "fuzz/check.h"

#include <algorithm>
#include <string>

using namespace trellivar;

namespace {

bool isAscii(const std::string& text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Takes "S3[1/2]" off and returns the rest.
std::string payloadOf(const std::string& frame, int seq, std::size_t index, std::size_t total) {
  const std::string header =
      "S" + std::to_string(seq) + "[" + std::to_string(index) + "/" + std::to_string(total) + "]";
  FUZZ_CHECK(frame.starts_with(header));
  return frame.substr(header.size());
}

} // namespace

/// Short commands go out unchanged; the payloads of long ones, put together, are the command.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int seq = data[0] % 9 + 1;
  const std::string command(reinterpret_cast<const char*>(data + 1), size - 1);
  const auto frames = Orlo3Protocol::frame(command, seq);
  if (command.size() <= 63) {
    FUZZ_CHECK(frames == std::vector{command});
    return 0;
  }
  FUZZ_CHECK(frames.size() == (command.size() + 54) / 55);
  std::string together;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const std::string payload = payloadOf(frames[i], seq, i + 1, frames.size());
    FUZZ_CHECK(utf8::isValid(payload));
    together += payload;
  }
  if (isAscii(command)) FUZZ_CHECK(together == command);
  return 0;
}
