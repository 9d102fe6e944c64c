#include "engine/orlo3_protocol.h"
#include "engine/orlo3_serial_link.h"
#include "simulator/firmware/firmware_port.h"
#include "tests/engine/link_words.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <vector>

/// The real link on real descriptors, with the pad's firmware at the far end of a pseudo-terminal.
namespace trellivar::firmware {
namespace {

using namespace words;
using namespace std::chrono_literals;
using WallClock = std::chrono::steady_clock;
using Lines = std::vector<std::string>;

/// What is open in this process, by number and by what it leads to.
std::set<std::string> openDescriptors() {
  std::set<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator("/dev/fd")) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(entry.path(), error);
    const bool isTheFolderThatIsRead = target.filename() == "fd";
    if (!isTheFolderThatIsRead)
      found.insert(entry.path().filename().string() + " " + target.string());
  }
  return found;
}

std::vector<MacroEvent> tapA() {
  return {{MacroEvent::Down{"A", 65}}, {MacroEvent::Wait{30}}, {MacroEvent::Up{"A", 65}}};
}

Lines commands(int count) {
  Lines lines;
  for (int key = 1; key <= count; ++key)
    lines.push_back(Orlo3Protocol::writeKeyMacro(key, "M", "click", tapA(), 1));
  return lines;
}

/// For what a silent pad makes the link wait: time that passes thirty times as fast.
class HurriedClock : public LinkClock {
public:
  Instant now() override { return now_; }
  void sleep(Seconds duration) override {
    now_ += duration;
    std::this_thread::sleep_for(duration / 30);
  }
  Seconds elapsed() const { return now_.time_since_epoch(); }

private:
  Instant now_{};
};

TEST(FirmwarePort, aWriteThroughItIsKeptByThePad) {
  PadFirmware pad("3.1");
  FirmwarePort port(pad);
  SystemLinkClock clock;
  Orlo3SerialLink link([&] { return port.path(); }, clock);
  EXPECT_EQ(link.writeMacros(commands(3)), "3.1");
  for (int key = 1; key <= 3; ++key)
    EXPECT_EQ(pad.macro("M", key), (StoredMacro{tapA(), 1})) << key;
  EXPECT_EQ(pad.counts().dropped, 0);
  EXPECT_EQ(pad.counts().answered, 2);
}

TEST(FirmwarePort, aWriteTakesTheTimeOfItsFrames) {
  PadFirmware pad;
  FirmwarePort port(pad);
  SystemLinkClock clock;
  Orlo3SerialLink link([&] { return port.path(); }, clock);
  const auto begin = WallClock::now();
  link.writeMacros(commands(5));
  EXPECT_GE(WallClock::now() - begin, 150ms + 5 * 3 * 30ms);
}

TEST(FirmwarePort, servesOneCallAfterAnother) {
  PadFirmware pad;
  FirmwarePort port(pad);
  SystemLinkClock clock;
  Orlo3SerialLink link([&] { return port.path(); }, clock);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(link.query(Orlo3Protocol::firmwareQuery, 3),
              (Orlo3Reply{"get", "firmware", "1.0.7"}));
  EXPECT_EQ(pad.counts().answered, 3);
}

struct Case {
  const char* name;
  Faults faults;
  Orlo3Error::Case error;
};

void PrintTo(const Case& fault, std::ostream* out) { *out << fault.name; }
std::string nameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

class FaultyPort : public testing::TestWithParam<Case> {};

TEST_P(FaultyPort, endsInTheRightErrorInTimeWithEverythingClosed) {
  const auto before = openDescriptors();
  {
    PadFirmware pad;
    FirmwarePort port(pad, GetParam().faults);
    const auto connected = openDescriptors();
    HurriedClock clock;
    Orlo3SerialLink link([&] { return port.path(); }, clock);
    const auto error = errorOf([&] { link.writeMacros(commands(150)); });
    EXPECT_EQ(error, GetParam().error);
    EXPECT_LE(clock.elapsed().count(), 0.15 + 3.015 + 450 * 0.03 + 3.015 + 3 + 1e-6);
    if (GetParam().faults.unpluggedAfter) {
      // The pad's own ends are gone with the cable; nobody else has any left.
      for (const std::string& descriptor : openDescriptors())
        EXPECT_EQ(descriptor.find(port.path()), std::string::npos) << descriptor;
    } else {
      EXPECT_EQ(openDescriptors(), connected);
    }
  }
  EXPECT_EQ(openDescriptors(), before);
}

constexpr std::size_t querySize = 26;
INSTANTIATE_TEST_SUITE_P(
    All, FaultyPort,
    testing::Values(Case{"silent", {.silentAfter = 0}, dormant},
                    Case{"garbage", {.reply = Faults::Reply::garbage}, dormant},
                    Case{"noText", {.reply = Faults::Reply::notUtf8}, dormant},
                    Case{"noOperation", {.reply = Faults::Reply::withoutOperation}, dormant},
                    Case{"twoReplies", {.reply = Faults::Reply::twice}, dormant},
                    Case{"full", {.takesOnly = 0}, dormant},
                    Case{"unpluggedInTheFirstQuery", {.unpluggedAfter = 10}, dormant}),
    nameOf);

/// The first reply has to come in real time, and the rest of the write is waited for.
class PortThatFailsLater : public testing::TestWithParam<Case> {};

/// Real time until the pad has answered once, then in a hurry.
class LaterHurriedClock : public LinkClock {
public:
  explicit LaterHurriedClock(const PadFirmware& pad) : pad_(pad) {}
  Instant now() override { return system_.now() + gained_; }
  void sleep(Seconds duration) override {
    const double hurry = pad_.counts().answered > 0 ? 20 : 1;
    system_.sleep(duration / hurry);
    gained_ += duration - duration / hurry;
  }

private:
  const PadFirmware& pad_;
  SystemLinkClock system_;
  Seconds gained_{0};
};

TEST_P(PortThatFailsLater, failsTheHealthCheckWithEverythingClosed) {
  PadFirmware pad;
  FirmwarePort port(pad, GetParam().faults);
  const auto connected = openDescriptors();
  LaterHurriedClock clock(pad);
  Orlo3SerialLink link([&] { return port.path(); }, clock);
  const Instant begin = clock.now();
  EXPECT_EQ(errorOf([&] { link.writeMacros(commands(150)); }), GetParam().error);
  EXPECT_LE((clock.now() - begin).count(), 40.0);
  if (!GetParam().faults.unpluggedAfter) {
    EXPECT_EQ(openDescriptors(), connected);
  }
  for (const std::string& descriptor : openDescriptors())
    EXPECT_TRUE(connected.contains(descriptor)) << descriptor;
  EXPECT_LT(pad.macros().size(), 150U);
}

INSTANTIATE_TEST_SUITE_P(
    All, PortThatFailsLater,
    testing::Values(Case{"silentAfterSomeCommands", {.silentAfter = 10}, healthCheckFailed},
                    Case{"full", {.takesOnly = querySize + 1000}, healthCheckFailed},
                    Case{"unplugged", {.unpluggedAfter = querySize + 1000}, healthCheckFailed}),
    nameOf);

TEST(FirmwarePort, repliesInSplintersOrLateAreReadAllTheSame) {
  for (const Faults& faults : {Faults{.repliesByteByByte = true}, Faults{.delay = 200ms},
                               Faults{.reply = Faults::Reply::afterGarbage}}) {
    PadFirmware pad;
    FirmwarePort port(pad, faults);
    SystemLinkClock clock;
    Orlo3SerialLink link([&] { return port.path(); }, clock);
    EXPECT_EQ(link.writeMacros(commands(1)), "1.0.7");
    EXPECT_EQ(pad.counts().stored, 1);
  }
}

TEST(FirmwarePort, afterThePortIsGoneItsPathCannotBeOpened) {
  PadFirmware pad;
  std::string path;
  {
    FirmwarePort port(pad);
    path = port.path();
  }
  HurriedClock clock;
  Orlo3SerialLink link([&] { return path; }, clock);
  const auto error = errorOf([&] { link.writeMacros(commands(1)); });
  ASSERT_TRUE(error && std::holds_alternative<Orlo3Error::Io>(*error));
  EXPECT_TRUE(std::get<Orlo3Error::Io>(*error).message.starts_with("open " + path + ": "));
}

TEST(FirmwarePort, endsAtOnceWhateverItIsAbout) {
  const auto begin = WallClock::now();
  for (const Faults& faults : {Faults{}, Faults{.delay = 60s}, Faults{.takesOnly = 0}}) {
    PadFirmware pad;
    HurriedClock clock;
    FirmwarePort port(pad, faults);
    Orlo3SerialLink link([&] { return port.path(); }, clock);
    link.query(Orlo3Protocol::firmwareQuery, 0.1);
  }
  EXPECT_LT(WallClock::now() - begin, 30s);
}

TEST(FirmwarePort, thePadKeepsItsMacrosFromOnePortToTheNext) {
  PadFirmware pad;
  SystemLinkClock clock;
  for (int key = 1; key <= 2; ++key) {
    FirmwarePort port(pad);
    Orlo3SerialLink link([&] { return port.path(); }, clock);
    link.writeMacros({Orlo3Protocol::writeKeyMacro(key, "R", "click", tapA(), 1)});
  }
  EXPECT_EQ(pad.macros().size(), 2U);
}

} // namespace
} // namespace trellivar::firmware
