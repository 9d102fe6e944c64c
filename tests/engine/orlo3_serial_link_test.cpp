#include "engine/keycode_map.h"
#include "engine/orlo3_protocol.h"
#include "engine/orlo3_serial_link.h"
#include "engine/portable_commands.h"
#include "tests/engine/link_words.h"
#include "tests/engine/virtual_pad.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace trellivar {
namespace {

using namespace words;
using Lines = std::vector<std::string>;
using Reply = std::optional<Orlo3Reply>;

/// A command for a key that taps one letter: 139 bytes, three frames.
std::string command(int key, const std::string& mode = "P") {
  const MacroEvent steps[] = {
      {MacroEvent::Down{"A", 65}}, {MacroEvent::Wait{30}}, {MacroEvent::Up{"A", 65}}};
  return Orlo3Protocol::writeKeyMacro(key, mode, "click", steps, 1);
}

Lines commands(int count) {
  Lines lines;
  for (int key = 1; key <= count; ++key)
    lines.push_back(command(key));
  return lines;
}

TEST(SerialLink, withoutAPortNothingIsOpened) {
  VirtualClock clock;
  int opened = 0;
  Orlo3SerialLink link([] { return std::nullopt; }, clock,
                       [&](const std::string&) {
                         ++opened;
                         return std::unique_ptr<SerialPort>();
                       });
  EXPECT_EQ(link.discoverPort(), std::nullopt);
  EXPECT_EQ(errorOf([&] { link.query(firmwareQuery, 1); }), noPort);
  EXPECT_EQ(errorOf([&] { link.writeMacros({"line"}); }), noPort);
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(clock.elapsed(), Seconds(0));
}

TEST(SerialLink, opensThePortThatWasDiscoveredAndPassesItsErrorOn) {
  VirtualClock clock;
  Lines opened;
  Orlo3SerialLink link([] { return "/dev/second"; }, clock,
                       [&](const std::string& path) -> std::unique_ptr<SerialPort> {
                         opened.push_back(path);
                         throw Orlo3Error(Orlo3Error::Io{"open " + path + ": busy"});
                       });
  EXPECT_EQ(link.discoverPort(), "/dev/second");
  EXPECT_EQ(errorOf([&] { link.query(firmwareQuery, 1); }), io("open /dev/second: busy"));
  EXPECT_EQ(errorOf([&] { link.writeMacros({"line"}); }), io("open /dev/second: busy"));
  EXPECT_EQ(opened, (Lines{"/dev/second", "/dev/second"}));
}

TEST(SerialLink, aQueryIsOneLineAndItsReply) {
  VirtualPad pad;
  EXPECT_EQ(pad.link.query(firmwareQuery, 3), (Reply{{"get", "firmware", "1.0.7"}}));
  EXPECT_EQ(pad.record.lines(), Lines{firmwareQuery});
  EXPECT_EQ(pad.record.opened, 1);
  EXPECT_EQ(pad.record.closed, 1);
}

TEST(SerialLink, aQueryThatIsNotAnsweredEndsWithItsTime) {
  for (const double timeout : {0.2, 1.0, 3.0}) {
    VirtualPad pad({.silentAfter = 0});
    EXPECT_EQ(pad.link.query(firmwareQuery, timeout), std::nullopt);
    EXPECT_GE(pad.clock.elapsed().count(), timeout);
    EXPECT_LT(pad.clock.elapsed().count(), timeout + 0.015 + 1e-9);
    EXPECT_EQ(pad.record.closed, 1);
  }
}

TEST(SerialLink, aQueryWithoutTimeOnlyWrites) {
  VirtualPad pad;
  EXPECT_EQ(pad.link.query(firmwareQuery, 0), std::nullopt);
  EXPECT_EQ(pad.record.lines(), Lines{firmwareQuery});
  EXPECT_EQ(pad.clock.elapsed(), Seconds(0));
}

TEST(SerialLink, looksForAReplyEveryFifteenMilliseconds) {
  VirtualPad pad({.delay = std::chrono::milliseconds(31)});
  EXPECT_TRUE(pad.link.query(firmwareQuery, 3));
  EXPECT_NEAR(pad.clock.elapsed().count(), 0.045, 1e-9);
}

TEST(SerialLink, writesEverythingBetweenTwoFirmwareQueries) {
  VirtualPad pad;
  const std::string shortLine(63, ' ');
  EXPECT_EQ(pad.link.writeMacros({shortLine, command(2)}), "1.0.7");
  Lines expected{firmwareQuery, shortLine};
  for (const std::string& frame : Orlo3Protocol::frame(command(2), 2))
    expected.push_back(frame);
  expected.push_back(firmwareQuery);
  EXPECT_EQ(pad.record.lines(), expected);
  EXPECT_EQ(pad.record.opened, 1);
  EXPECT_EQ(pad.record.closed, 1);
}

TEST(SerialLink, restsThirtyMillisecondsAfterEveryFrameAShortLineIncluded) {
  VirtualPad pad;
  pad.link.writeMacros({"   ", command(1)});
  std::vector<double> times;
  for (const auto& write : pad.record.writes)
    times.push_back(write.at);
  ASSERT_EQ(times.size(), 6U);
  for (std::size_t i = 0; i < times.size(); ++i)
    EXPECT_NEAR(times[i], i == 0 ? 0 : 0.03 * static_cast<double>(i - 1), 1e-9) << i;
}

TEST(SerialLink, asksTwiceEvenWithNothingToWrite) {
  VirtualPad pad;
  EXPECT_EQ(pad.link.writeMacros({}), "1.0.7");
  EXPECT_EQ(pad.record.lines(), (Lines{firmwareQuery, firmwareQuery}));
  EXPECT_EQ(pad.clock.elapsed(), Seconds(0));
}

TEST(SerialLink, numbersTheTenthCommandLikeTheFirst) {
  VirtualPad pad;
  pad.link.writeMacros(commands(11));
  std::string numbers;
  for (const std::string& line : pad.record.lines()) {
    if (line.find("[1/3]") == 2) numbers += line[1];
  }
  EXPECT_EQ(numbers, "12345678912");
  EXPECT_EQ(pad.firmware.counts().stored, 11);
}

TEST(SerialLink, returnsTheVersionOfTheLastReply) {
  VirtualPad pad({.reply = firmware::Faults::Reply::numberAsValue});
  EXPECT_EQ(pad.link.writeMacros(commands(1)), "107");
}

TEST(SerialLink, forgetsWhatWasPendingBeforeEachRequest) {
  const std::string stale = R"({"o":"get","t":"firmware","v":"0.1"})";
  VirtualPad pad;
  pad.pending = stale;
  EXPECT_EQ(pad.link.query(firmwareQuery, 3)->value, "1.0.7");
  EXPECT_EQ(pad.link.writeMacros({}), "1.0.7");

  VirtualPad silent({.silentAfter = 0});
  silent.pending = stale;
  EXPECT_EQ(silent.link.query(firmwareQuery, 3), std::nullopt);
}

/// A pad that acknowledges what nobody asked it to.
class ChattyPort : public SerialPort {
public:
  void discardInput() override { coming_.clear(); }
  std::optional<std::size_t> write(std::string_view bytes) override {
    coming_.push_back(bytes == firmwareQuery ? R"({"o":"get","t":"firmware","v":"2"})"
                                             : R"({"o":"set","v":"ok"})");
    return bytes.size();
  }
  std::string read() override {
    if (coming_.empty()) return {};
    std::string text = coming_.front();
    coming_.erase(coming_.begin());
    return text;
  }

private:
  Lines coming_;
};

TEST(SerialLink, forgetsAcknowledgementsBeforeItAsksForTheVersion) {
  VirtualClock clock;
  Orlo3SerialLink link([] { return "/dev/pad"; }, clock,
                       [](const std::string&) { return std::make_unique<ChattyPort>(); });
  EXPECT_EQ(link.writeMacros(commands(2)), "2");
}

TEST(SerialLink, tellsAboutEachFrameBeforeItIsWritten) {
  VirtualPad pad;
  std::vector<std::vector<std::size_t>> seen;
  pad.link.observeProgress([&](const Orlo3SerialLink::Progress& progress) {
    seen.push_back({progress.line, progress.frame, progress.frames, pad.record.writes.size()});
  });
  pad.link.writeMacros({"   ", command(1)});
  EXPECT_EQ(seen, (std::vector<std::vector<std::size_t>>{
                      {0, 1, 1, 1}, {1, 1, 3, 2}, {1, 2, 3, 3}, {1, 3, 3, 4}}));
}

/// Brings one text a read, each after a millisecond, and in the end nothing or the last for ever.
class ScriptedPort : public SerialPort {
public:
  ScriptedPort(LinkClock& clock, Lines texts, bool repeatsTheLast)
      : clock_(clock), texts_(std::move(texts)), repeatsTheLast_(repeatsTheLast) {}
  void discardInput() override {}
  std::optional<std::size_t> write(std::string_view bytes) override { return bytes.size(); }
  std::string read() override {
    if (next_ == texts_.size()) return {};
    clock_.sleep(Seconds(0.001));
    const bool stays = repeatsTheLast_ && next_ + 1 == texts_.size();
    return texts_[stays ? next_ : next_++];
  }

private:
  LinkClock& clock_;
  Lines texts_;
  bool repeatsTheLast_;
  std::size_t next_ = 0;
};

class ScriptedReplies : public testing::Test {
protected:
  Reply query(const Lines& texts, bool repeatsTheLast = false) {
    Orlo3SerialLink link([] { return "/dev/pad"; }, clock_,
                         [&](const std::string&) {
                           return std::make_unique<ScriptedPort>(clock_, texts, repeatsTheLast);
                         });
    return link.query(firmwareQuery, 3);
  }
  void expectTheWholeTime() {
    EXPECT_GE(clock_.elapsed().count(), 3 - 1e-6);
    EXPECT_LE(clock_.elapsed().count(), 3 + 0.015 + 1e-6);
  }

  VirtualClock clock_;
  const std::string good_ = R"({"o":"get","t":"firmware","v":"2"})";
};

TEST_F(ScriptedReplies, aReplyInPiecesIsTakenWithItsLastBrace) {
  EXPECT_EQ(query({"{\"o\":", "\"get\",\"v\"", ":\"2\"}", "}"}), (Reply{{"get", "", "2"}}));
  EXPECT_NEAR(clock_.elapsed().count(), 0.003, 1e-6);
}

TEST_F(ScriptedReplies, whatCameBeforeAGoodReplyStillCounts) {
  EXPECT_EQ(query({R"({"t":"firmware","v":"1"})", good_}), std::nullopt)
      << "two objects are no reply, in one read or in two";
  expectTheWholeTime();
}

TEST_F(ScriptedReplies, garbageThatKeepsComingEndsWithTheTime) {
  EXPECT_EQ(query({"{boot}{"}, true), std::nullopt);
  expectTheWholeTime();
}

TEST_F(ScriptedReplies, garbageWithoutBracesIsNoHindrance) {
  EXPECT_EQ(query({"boot", " ok\r\n", good_}), (Reply{{"get", "firmware", "2"}}));
}

/// Ends what is going on after some time, as a user may.
class ImpatientClock : public VirtualClock {
public:
  struct Enough {};
  explicit ImpatientClock(Seconds patience) : patience_(patience) {}
  void sleep(Seconds duration) override {
    VirtualClock::sleep(duration);
    if (elapsed() >= patience_) throw Enough();
  }

private:
  Seconds patience_;
};

TEST(SerialLink, closesThePortWhenTheClockEndsTheCallWhereverThatIs) {
  for (double patience = 0; patience < 0.5; patience += 0.01) {
    ImpatientClock clock{Seconds(patience)};
    firmware::PadFirmware firmware;
    firmware::FaultyPad pad(firmware, {.delay = std::chrono::milliseconds(100)});
    PortRecord record;
    Orlo3SerialLink link([] { return "/dev/pad"; }, clock,
                         [&](const std::string&) {
                           return std::make_unique<MemoryPort>(pad, clock, PortFaults{}, record,
                                                               "");
                         });
    EXPECT_THROW(link.writeMacros(commands(4)), ImpatientClock::Enough) << patience;
    EXPECT_EQ(record.opened, 1);
    EXPECT_EQ(record.closed, 1);
  }
}

// What the pad keeps

std::map<firmware::PadFirmware::Slot, firmware::StoredMacro>
expectedMacros(const std::vector<ModeBindings>& modes) {
  std::map<firmware::PadFirmware::Slot, firmware::StoredMacro> macros;
  for (const auto& [mode, mappings] : modes) {
    for (const KeyMapping& mapping : mappings) {
      if (auto macro = KeycodeMap::macro(mapping.output))
        macros[{mode, mapping.fromKeyId}] = {*macro, 1};
    }
  }
  return macros;
}

/// Outputs of any shape of which the firmware knows most keys.
rc::Gen<Output> writableOutput() {
  const auto key = rc::gen::map(
      rc::gen::element<std::string>("a", "k", "z", "0", "9", "spacebar", "return_or_enter", "tab",
                                    "escape", "left_arrow", "down_arrow", "f1", "comma"),
      [](const std::string& name) { return Key{KeyName(name)}; });
  const auto modifiers = generate::upTo<Modifier>(4);
  return rc::gen::oneOf(
      rc::gen::map(rc::gen::pair(modifiers, key),
                   [](const auto& parts) {
                     return Output{Output::Chord{parts.first, parts.second}};
                   }),
      rc::gen::map(generate::upTo(12, key),
                   [](const auto& keys) { return Output{Output::Sequence{keys}}; }),
      rc::gen::map(modifiers, [](const auto& list) { return Output{Output::Modifiers{list}}; }));
}

std::vector<Profile> anyProfiles() {
  std::vector<Profile> profiles;
  for (const char* name : {"P", "M", "R", "Games"}) {
    Profile profile{UUID{}, name, {}};
    const int count = *generate::range(0, 5);
    for (int i = 0; i < count; ++i) {
      const int key =
          *rc::gen::weightedOneOf<int>({{4, generate::range(1, 3)}, {1, generate::integer<int>()}});
      Output output = *rc::gen::weightedOneOf<Output>(
          {{4, writableOutput()}, {1, rc::gen::arbitrary<Output>()}});
      profile.mappings.push_back({key, std::move(output), std::nullopt});
    }
    profiles.push_back(std::move(profile));
  }
  return profiles;
}

TEST(SerialLinkProperty, thePadKeepsExactlyTheBindingsOfThousandsOfProfiles) {
  std::size_t macros = 0;
  const bool holds = rc::check("stored macros equal the bindings", [&] {
    for (int i = 0; i < 10; ++i) {
      const auto modes = portableModes(anyProfiles());
      VirtualPad pad;
      pad.link.writeMacros(portableCommands(modes).lines);
      const auto expected = expectedMacros(modes);
      RC_ASSERT(pad.firmware.macros() == expected);
      RC_ASSERT(pad.firmware.counts().dropped == 0);
      macros += expected.size();
    }
  });
  EXPECT_TRUE(holds);
  EXPECT_GT(macros, 2000U) << "too few to mean anything";
}

} // namespace
} // namespace trellivar
