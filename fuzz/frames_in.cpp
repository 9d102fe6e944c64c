#include "engine/orlo3_protocol.h"
#include "fuzz/check.h"
#include "simulator/firmware/pad_firmware.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

using namespace trellivar;
using firmware::PadFirmware;

namespace {

/// The rest of the input, taken byte by byte; zeros when it is used up.
class Input {
public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool isEmpty() const { return size_ == 0; }
  std::uint8_t take() {
    if (isEmpty()) return 0;
    --size_;
    return *data_++;
  }
  std::string rest() const { return {reinterpret_cast<const char*>(data_), size_}; }

private:
  const std::uint8_t* data_;
  std::size_t size_;
};

/// Bytes are understood the same however they are cut.
void checkCuts(const std::string& bytes) {
  firmware::CommandReader whole;
  firmware::CommandReader splintered;
  const auto commands = whole.receive(bytes);
  std::vector<std::string> pieces;
  for (const char byte : bytes) {
    for (std::string& command : splintered.receive({&byte, 1}))
      pieces.push_back(std::move(command));
  }
  FUZZ_CHECK(pieces == commands);
  FUZZ_CHECK(splintered.dropped() == whole.dropped());
  whole.dropUnfinished();
  FUZZ_CHECK(whole.receive(Orlo3Protocol::firmwareQuery) ==
             std::vector<std::string>{std::string(Orlo3Protocol::firmwareQuery)});
}

struct Sent {
  std::string mode;
  int key = 0;
  firmware::StoredMacro macro;
};

Sent macroFrom(Input& input) {
  static constexpr std::array<const char*, 3> modes{"P", "M", "R"};
  Sent sent{modes[input.take() % 3], input.take(), {}};
  for (int count = input.take() % 12; count > 0; --count) {
    const int code = 65 + input.take() % 26;
    sent.macro.steps.push_back({MacroEvent::Down{std::string(1, static_cast<char>(code)), code}});
  }
  return sent;
}

/// Whatever happens to frames on the way, the pad stores nothing that was not sent, and everything
/// of which all frames arrived, in a row and once.
void checkLoss(Input input) {
  PadFirmware pad;
  std::map<PadFirmware::Slot, std::vector<firmware::StoredMacro>> sent;
  std::map<PadFirmware::Slot, firmware::StoredMacro> certain;
  int seq = 1;
  while (!input.isEmpty()) {
    const Sent next = macroFrom(input);
    const PadFirmware::Slot slot{next.mode, next.key};
    sent[slot].push_back(next.macro);
    const std::string line =
        Orlo3Protocol::writeKeyMacro(next.key, next.mode, "click", next.macro.steps, 1);
    bool isWhole = true;
    for (const std::string& frame : Orlo3Protocol::frame(line, seq)) {
      const int fate = input.take();
      if (fate < 250) pad.receive(frame);
      if (fate >= 253) pad.receive(frame + frame);
      isWhole = isWhole && fate < 250;
    }
    if (isWhole)
      certain[slot] = next.macro;
    else
      certain.erase(slot);
    seq = Orlo3Protocol::nextSequence(seq);
  }
  for (const auto& [slot, macro] : pad.macros()) {
    const auto& candidates = sent[slot];
    FUZZ_CHECK(std::ranges::find(candidates, macro) != candidates.end());
  }
  for (const auto& [slot, macro] : certain)
    FUZZ_CHECK(pad.macro(slot.first, slot.second) == macro);
}

} // namespace

/// The first byte chooses between bytes of any kind and commands that lose frames.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  if (input.take() % 2 == 0)
    checkCuts(input.rest());
  else
    checkLoss(input);
  return 0;
}
