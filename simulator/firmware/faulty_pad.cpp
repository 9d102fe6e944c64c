#include "simulator/firmware/faulty_pad.h"

#include <algorithm>

namespace trellivar::firmware {

namespace {

constexpr auto endless = std::numeric_limits<std::size_t>::max();

std::vector<std::string> splinters(const std::vector<std::string>& texts) {
  std::vector<std::string> bytes;
  for (const std::string& text : texts) {
    for (const char byte : text)
      bytes.emplace_back(1, byte);
  }
  return bytes;
}

} // namespace

std::vector<std::string> FaultyPad::receive(std::string_view bytes) {
  bytes = bytes.substr(0, appetite());
  taken_ += bytes.size();
  std::vector<std::string> sent;
  // Where a fault begins with a command, it may begin in the middle of the bytes.
  const std::size_t step = faults_.silentAfter || faults_.mumblesAfter ? 1 : bytes.size();
  for (; !bytes.empty(); bytes.remove_prefix(step)) {
    if (hasReached(faults_.silentAfter)) break;
    const bool mumbles = hasReached(faults_.mumblesAfter);
    for (const std::string& reply : firmware_.receive(bytes.substr(0, step)))
      sent.push_back(mumbles ? "}{?" : deformed(reply));
  }
  return faults_.repliesByteByByte ? splinters(sent) : sent;
}

std::size_t FaultyPad::appetite() const {
  const std::size_t end =
      std::min(faults_.takesOnly.value_or(endless), faults_.unpluggedAfter.value_or(endless));
  return end == endless ? endless : end - std::min(taken_, end);
}

bool FaultyPad::isUnplugged() const {
  return faults_.unpluggedAfter && taken_ >= *faults_.unpluggedAfter;
}

bool FaultyPad::hasReached(const std::optional<int>& commands) const {
  return commands && firmware_.counts().commands() >= *commands;
}

std::string FaultyPad::deformed(const std::string& reply) const {
  switch (faults_.reply) {
  case Faults::Reply::normal:
    return reply;
  case Faults::Reply::twice:
    return reply + reply;
  case Faults::Reply::afterGarbage:
    return "}\x01 boot ok\r\n" + reply + "\r\n";
  case Faults::Reply::garbage:
    return "{boot}{";
  case Faults::Reply::notUtf8:
    return "\xFF" + reply;
  case Faults::Reply::withoutOperation:
    return R"({"t":"firmware","v":"1.0.7"})";
  case Faults::Reply::numberAsOperation:
    return R"({"o":1,"t":"firmware","v":"1.0.7"})";
  case Faults::Reply::numberAsValue:
    return R"({"o":"get","t":"firmware","v":107})";
  }
  return reply;
}

} // namespace trellivar::firmware
