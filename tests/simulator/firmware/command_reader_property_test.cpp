#include "engine/orlo3_protocol.h"
#include "simulator/firmware/command_reader.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace trellivar::firmware {
namespace {

using Commands = std::vector<std::string>;

/// Different from every other command by its number.
std::string numberedCommand(int number) {
  const int size = *generate::range(0, 400);
  return R"({"o":"set","k":)" + std::to_string(number) + R"(,"v":")" +
         std::string(static_cast<std::size_t>(size), 'v') + R"(","s":"P"})";
}

Commands receivedInPieces(const std::string& bytes, int& dropped) {
  CommandReader reader;
  Commands commands;
  for (std::size_t at = 0; at < bytes.size();) {
    const auto size = static_cast<std::size_t>(*generate::range(1, 100));
    for (std::string& command : reader.receive(bytes.substr(at, size)))
      commands.push_back(std::move(command));
    at += size;
  }
  dropped = reader.dropped();
  return commands;
}

RC_GTEST_PROP(CommandReaderProperty, everyCommandOfAHealthyLineIsReadHoweverItIsCut, ()) {
  Commands sent;
  std::string bytes;
  const int count = *generate::range(0, 20);
  for (int i = 0; i < count; ++i) {
    sent.push_back(numberedCommand(i));
    for (const std::string& frame : Orlo3Protocol::frame(sent.back(), i % 9 + 1))
      bytes += frame;
  }
  int dropped = -1;
  RC_ASSERT(receivedInPieces(bytes, dropped) == sent);
  RC_ASSERT(dropped == 0);
}

RC_GTEST_PROP(CommandReaderProperty, framesThatGoMissingNeverMakeAnotherCommand, ()) {
  Commands sent;
  Commands untouched;
  std::string bytes;
  const int count = *generate::range(1, 12);
  for (int i = 0; i < count; ++i) {
    sent.push_back(numberedCommand(i));
    bool isWhole = true;
    for (const std::string& frame : Orlo3Protocol::frame(sent.back(), i % 9 + 1)) {
      switch (*rc::gen::weightedElement<int>({{20, 0}, {1, 1}, {1, 2}})) {
      case 0:
        bytes += frame;
        break;
      case 1: // lost
        isWhole = false;
        break;
      default: // twice
        bytes += frame + frame;
        isWhole = false;
      }
    }
    if (isWhole) untouched.push_back(sent.back());
  }
  int dropped = -1;
  const Commands received = receivedInPieces(bytes, dropped);
  for (const std::string& command : received)
    RC_ASSERT(std::ranges::count(sent, command) == 1);
  for (const std::string& command : untouched)
    RC_ASSERT(std::ranges::count(received, command) >= 1);
}

RC_GTEST_PROP(CommandReaderProperty, readsAnyBytesTheSameHoweverTheyAreCut, ()) {
  std::string bytes;
  const int count = *generate::range(0, 30);
  for (int i = 0; i < count; ++i) {
    bytes += *rc::gen::oneOf(
        rc::gen::element<std::string>("{", "}", "\"", "\\", "{\"o\":\"", "S", "1", "[1/2]",
                                      "S1[1/2]", "S1[2/2]", "S2[1/3]", "S2[3/3]", "{}", "\n", "x",
                                      R"({"o":"get","t":"firmware"})", std::string(55, 'y')),
        generate::bytes());
  }
  CommandReader whole;
  const Commands commands = whole.receive(bytes);
  int dropped = -1;
  RC_ASSERT(receivedInPieces(bytes, dropped) == commands);
  RC_ASSERT(dropped == whole.dropped());
}

} // namespace
} // namespace trellivar::firmware
