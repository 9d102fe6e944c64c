#include "core/json/parse_json.h"
#include "engine/orlo3_protocol.h"
#include "simulator/firmware/pad_firmware.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace trellivar::firmware {
namespace {

using Replies = std::vector<std::string>;

std::vector<MacroEvent> tap(const std::string& name, int code) {
  return {{MacroEvent::Down{name, code}}, {MacroEvent::Wait{30}}, {MacroEvent::Up{name, code}}};
}

Replies write(PadFirmware& pad, const std::string& mode, int key,
              const std::vector<MacroEvent>& steps, int seq = 1) {
  Replies replies;
  const std::string line = Orlo3Protocol::writeKeyMacro(key, mode, "click", steps, 1);
  for (const std::string& frame : Orlo3Protocol::frame(line, seq)) {
    for (std::string& reply : pad.receive(frame))
      replies.push_back(std::move(reply));
  }
  return replies;
}

TEST(PadFirmware, tellsItsVersion) {
  PadFirmware pad;
  EXPECT_EQ(pad.receive(Orlo3Protocol::firmwareQuery),
            Replies{R"({"o":"get","t":"firmware","v":"1.0.7"})"});
  PadFirmware other("2.0\"beta");
  EXPECT_EQ(parseJson(other.receive(Orlo3Protocol::firmwareQuery).at(0))["v"], "2.0\"beta");
  EXPECT_EQ(pad.counts().answered, 1);
}

TEST(PadFirmware, keepsAMacroForEachKeyOfEachMode) {
  PadFirmware pad;
  write(pad, "P", 1, tap("A", 65));
  write(pad, "P", 2, tap("B", 66));
  write(pad, "M", 1, tap("C", 67));
  EXPECT_EQ(pad.macro("P", 1), (StoredMacro{tap("A", 65), 1}));
  EXPECT_EQ(pad.macro("P", 2), (StoredMacro{tap("B", 66), 1}));
  EXPECT_EQ(pad.macro("M", 1), (StoredMacro{tap("C", 67), 1}));
  EXPECT_EQ(pad.macro("R", 1), std::nullopt);
  EXPECT_EQ(pad.macro("M", 2), std::nullopt);
  EXPECT_EQ(pad.macros().size(), 3U);
  EXPECT_EQ(pad.counts().stored, 3);
}

TEST(PadFirmware, keepsAnEmptyMacroToo) {
  PadFirmware pad;
  write(pad, "P", 1, {});
  EXPECT_EQ(pad.macro("P", 1), (StoredMacro{{}, 1}));
}

TEST(PadFirmware, replacesTheMacroOfAKeyAsAWhole) {
  PadFirmware pad;
  write(pad, "P", 1, tap("A", 65));
  write(pad, "P", 1, tap("B", 66));
  EXPECT_EQ(pad.macro("P", 1), (StoredMacro{tap("B", 66), 1}));
  EXPECT_EQ(pad.counts().stored, 2);
}

TEST(PadFirmware, keepsTheOldMacroWhenTheNewOneArrivesInPart) {
  PadFirmware pad;
  write(pad, "P", 1, tap("A", 65));
  const std::string line = Orlo3Protocol::writeKeyMacro(1, "P", "click", tap("B", 66), 1);
  const auto frames = Orlo3Protocol::frame(line, 2);
  pad.receive(frames[0] + frames[1]);
  pad.lineIsQuiet();
  EXPECT_EQ(pad.macro("P", 1), (StoredMacro{tap("A", 65), 1}));
  EXPECT_EQ(pad.counts().dropped, 1);
}

TEST(PadFirmware, doesNotAcknowledgeWhatItStores) {
  PadFirmware pad;
  EXPECT_EQ(write(pad, "P", 1, tap("A", 65)), Replies{});
}

TEST(PadFirmware, refusesWhatItDoesNotKnow) {
  PadFirmware pad;
  int expected = 0;
  for (const char* command : {R"({"o":"get","t":"colour"})", R"({"o":"reset"})", R"({"o":7})",
                              R"({"t":"firmware"})", "{}", "{nonsense}"}) {
    EXPECT_EQ(pad.receive(command), Replies{}) << command;
    EXPECT_EQ(pad.counts().dropped, ++expected) << command;
  }
  write(pad, "X", 1, tap("A", 65));
  EXPECT_EQ(pad.counts().dropped, expected + 1);
  EXPECT_TRUE(pad.macros().empty());
  EXPECT_EQ(pad.receive(Orlo3Protocol::firmwareQuery).size(), 1U);
}

TEST(PadFirmware, mayBeAskedWhileItIsWritten) {
  PadFirmware pad;
  std::atomic<bool> isOver = false;
  std::thread writer([&] {
    for (int i = 0; i < 200; ++i)
      write(pad, "P", 1, i % 2 == 0 ? tap("A", 65) : tap("B", 66), i % 9 + 1);
    isOver = true;
  });
  while (!isOver) {
    const auto macro = pad.macro("P", 1);
    if (macro) {
      EXPECT_TRUE(macro->steps == tap("A", 65) || macro->steps == tap("B", 66));
    }
    EXPECT_LE(pad.macros().size(), 1U);
  }
  writer.join();
  EXPECT_EQ(pad.counts().stored, 200);
}

} // namespace
} // namespace trellivar::firmware
