#include "engine/orlo3_protocol.h"
#include "tests/engine/link_words.h"
#include "tests/engine/virtual_pad.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A write to a pad or a port with a fault ends in the right way, in time, with the port closed.
namespace trellivar {
namespace {

using namespace words;
using firmware::Faults;
using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

/// Of three frames each, 62, 62 and 36 bytes.
Lines fourCommands() {
  const MacroEvent steps[] = {
      {MacroEvent::Down{"A", 65}}, {MacroEvent::Wait{30}}, {MacroEvent::Up{"A", 65}}};
  Lines lines;
  for (int key = 1; key <= 4; ++key)
    lines.push_back(Orlo3Protocol::writeKeyMacro(key, "P", "click", steps, 1));
  return lines;
}

/// What twelve frames take, and a query that nobody answers.
constexpr double paced = 12 * 0.03;
constexpr double unanswered = 3.0;
constexpr double poll = 0.015;

constexpr std::size_t querySize = 26;
std::size_t commandSize() {
  std::size_t size = 0;
  for (const std::string& frame : Orlo3Protocol::frame(fourCommands()[0], 1))
    size += frame.size();
  return size;
}

struct Case {
  const char* name;
  Faults pad;
  PortFaults port;
  std::optional<Orlo3Error::Case> error; ///< none: the write succeeds
  int stored;                            ///< of the four commands
  double takes;                          ///< seconds until the end
};

void PrintTo(const Case& fault, std::ostream* out) { *out << fault.name; }

std::string nameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

class FaultyWrite : public testing::TestWithParam<Case> {};

TEST_P(FaultyWrite, endsAsItShould) {
  const Case& fault = GetParam();
  VirtualPad pad(fault.pad, fault.port);
  std::string version;
  EXPECT_EQ(errorOf([&] { version = pad.link.writeMacros(fourCommands()); }), fault.error);
  EXPECT_EQ(version.empty(), fault.error.has_value());
  EXPECT_EQ(pad.record.opened, 1);
  EXPECT_EQ(pad.record.closed, 1);
  EXPECT_GE(pad.clock.elapsed().count(), fault.takes - 1e-6);
  // A deadline is noticed by polling; everything else takes exactly its time.
  const double late = fault.error && fault.takes >= unanswered ? poll : 0;
  EXPECT_LE(pad.clock.elapsed().count(), fault.takes + late + 1e-6);
  pad.firmware.lineIsQuiet();
  EXPECT_EQ(pad.firmware.counts().stored, fault.stored);
  EXPECT_EQ(pad.firmware.macros().size(), static_cast<std::size_t>(fault.stored));
}

const Case faultsOfThePad[] = {
    {"healthy", {}, {}, std::nullopt, 4, paced},
    {"silent", {.silentAfter = 0}, {}, dormant, 0, unanswered},
    {"silentAfterTheFirstQuery", {.silentAfter = 1}, {}, healthCheckFailed, 0, paced + unanswered},
    {"silentAfterTwoCommands", {.silentAfter = 3}, {}, healthCheckFailed, 2, paced + unanswered},
    {"silentAfterAllCommands", {.silentAfter = 5}, {}, healthCheckFailed, 4, paced + unanswered},
    {"slow", {.delay = 2900ms}, {}, std::nullopt, 4, 2.91 + paced + 2.91},
    {"tooSlow", {.delay = 3100ms}, {}, dormant, 0, unanswered},
    {"everyByteARead", {.repliesByteByByte = true}, {}, std::nullopt, 4, paced},
    {"everyByteAReadAndSlow",
     {.repliesByteByByte = true, .delay = 500ms},
     {},
     std::nullopt,
     4,
     0.51 + paced + 0.51},
    {"twoRepliesInOneRead", {.reply = Faults::Reply::twice}, {}, dormant, 0, unanswered},
    {"garbageBeforeTheReply", {.reply = Faults::Reply::afterGarbage}, {}, std::nullopt, 4, paced},
    {"garbage", {.reply = Faults::Reply::garbage}, {}, dormant, 0, unanswered},
    {"garbageInTheEnd", {.mumblesAfter = 5}, {}, healthCheckFailed, 4, paced + unanswered},
    {"noText", {.reply = Faults::Reply::notUtf8}, {}, dormant, 0, unanswered},
    {"noOperation", {.reply = Faults::Reply::withoutOperation}, {}, dormant, 0, unanswered},
    {"numberAsOperation", {.reply = Faults::Reply::numberAsOperation}, {}, dormant, 0, unanswered},
    {"numberAsValue", {.reply = Faults::Reply::numberAsValue}, {}, std::nullopt, 4, paced},
    {"unpluggedAtOnce", {.unpluggedAfter = 0}, {}, dormant, 0, 0},
    {"unpluggedInTheFirstQuery", {.unpluggedAfter = 10}, {}, dormant, 0, unanswered},
    {"unpluggedInTheMiddle",
     {.unpluggedAfter = querySize + commandSize() + 100},
     {},
     healthCheckFailed,
     1,
     5 * 0.03},
    {"unpluggedBeforeTheLastByte",
     {.unpluggedAfter = querySize + 4 * commandSize() - 1},
     {},
     healthCheckFailed,
     3,
     paced},
    {"unpluggedInTheLastQuery",
     {.unpluggedAfter = querySize + 4 * commandSize() + 10},
     {},
     healthCheckFailed,
     4,
     paced + unanswered},
};
INSTANTIATE_TEST_SUITE_P(Pad, FaultyWrite, testing::ValuesIn(faultsOfThePad), nameOf);

const Case faultsOfThePort[] = {
    {"oneByteAWrite", {}, {.mostPerWrite = 1}, std::nullopt, 4, paced},
    {"oddPieces", {}, {.mostPerWrite = 7}, std::nullopt, 4, paced},
    {"fullForAWhile", {}, {.fullUntil = Seconds(2.9)}, std::nullopt, 4, 2.91 + paced},
    {"fullForTooLong", {}, {.fullUntil = Seconds(3.1)}, dormant, 0, unanswered},
    {"fullForMostOfAPause",
     {},
     {.fullFrom = Seconds(0.05), .fullUntil = Seconds(0.085)},
     std::nullopt,
     4,
     paced},
    {"fullForMoreThanAPause",
     {},
     {.fullFrom = Seconds(0.05), .fullUntil = Seconds(0.095)},
     healthCheckFailed,
     0,
     2 * 0.03 + 0.03},
    {"fullForGood", {.takesOnly = 0}, {.room = 0}, dormant, 0, unanswered},
    {"roomForTheQueryOnly", {.takesOnly = 0}, {.room = querySize}, dormant, 0, unanswered},
    {"fullInTheMiddle",
     {.takesOnly = querySize + 2 * commandSize()},
     {.room = 100},
     healthCheckFailed,
     2,
     7 * 0.03 + 0.03},
    {"fullAfterAllCommands",
     {.takesOnly = querySize + 4 * commandSize()},
     {.room = 0},
     healthCheckFailed,
     4,
     paced + unanswered},
    {"brokenFromTheStart", {}, {.failsFrom = 1}, dormant, 0, 0},
    {"brokenAtTheFirstFrame", {}, {.failsFrom = 2}, healthCheckFailed, 0, 0},
    {"brokenInTheMiddle", {}, {.failsFrom = 2 + 2 * 3 + 1}, healthCheckFailed, 2, 7 * 0.03},
    {"brokenAtTheLastQuery", {}, {.failsFrom = 2 + 4 * 3}, healthCheckFailed, 4, paced},
};
INSTANTIATE_TEST_SUITE_P(Port, FaultyWrite, testing::ValuesIn(faultsOfThePort), nameOf);

/// The cable is pulled at every byte of the whole exchange.
TEST(WriteWithAFault, isNeverASuccessUnlessEveryByteArrived) {
  const std::size_t whole = querySize + 4 * commandSize() + querySize;
  for (std::size_t bytes = 0; bytes < whole; ++bytes) {
    VirtualPad pad({.unpluggedAfter = bytes});
    EXPECT_EQ(errorOf([&] { pad.link.writeMacros(fourCommands()); }),
              bytes < querySize ? dormant : healthCheckFailed)
        << bytes;
    EXPECT_EQ(pad.record.closed, 1);
    pad.firmware.lineIsQuiet();
    const std::size_t commands = bytes < querySize ? 0 : (bytes - querySize) / commandSize();
    EXPECT_EQ(pad.firmware.counts().stored, static_cast<int>(std::min<std::size_t>(commands, 4)));
  }
}

TEST(WriteWithAFault, stopsAtTheFrameThatDidNotGetThrough) {
  VirtualPad pad(PortFaults{.failsFrom = 4});
  EXPECT_EQ(errorOf([&] { pad.link.writeMacros(fourCommands()); }), healthCheckFailed);
  EXPECT_EQ(pad.record.attempts, 4) << "not one more frame, and no query";
  pad.firmware.lineIsQuiet();
  EXPECT_EQ(pad.firmware.counts().dropped, 1);
}

TEST(WriteWithAFault, offersTheRestAgainWithoutSendingAnyByteTwice) {
  VirtualPad pad(PortFaults{.mostPerWrite = 10});
  pad.link.writeMacros(fourCommands());
  std::string together;
  for (const std::string& piece : pad.record.lines())
    together += piece;
  std::string expected{Orlo3Protocol::firmwareQuery};
  for (const auto& frames : Orlo3Protocol::numberedFrames(fourCommands())) {
    for (const std::string& frame : frames)
      expected += frame;
  }
  expected += Orlo3Protocol::firmwareQuery;
  EXPECT_EQ(together, expected);
}

TEST(WriteWithAFault, offersAFrameAgainOnlyAsLongAsItsPauseLasts) {
  VirtualPad pad(Faults{.takesOnly = querySize + commandSize()}, PortFaults{.room = 10});
  EXPECT_EQ(errorOf([&] { pad.link.writeMacros(fourCommands()); }), healthCheckFailed);
  EXPECT_EQ(pad.record.attempts, 1 + 3 + 1 + 3) << "ten bytes, and at 0, 15 and 30 ms nothing";
  EXPECT_NEAR(pad.clock.elapsed().count(), 3 * 0.03 + 0.03, 1e-6);
}

/// Takes a byte now and then: once every 15 ms.
class DribblingPort : public SerialPort {
public:
  explicit DribblingPort(LinkClock& clock) : clock_(clock) {}
  void discardInput() override {}
  std::optional<std::size_t> write(std::string_view) override {
    if (clock_.now() == last_) return 0;
    last_ = clock_.now();
    answers_ = ++taken_ == querySize;
    return 1;
  }
  std::string read() override {
    return std::exchange(answers_, false) ? R"({"o":"get","v":"2"})" : "";
  }

private:
  LinkClock& clock_;
  std::optional<Instant> last_;
  std::size_t taken_ = 0;
  bool answers_ = false;
};

class DribblingLink : public testing::Test {
protected:
  VirtualClock clock_;
  Orlo3SerialLink link_{
      [] { return "/dev/pad"; }, clock_,
      [this](const std::string&) { return std::make_unique<DribblingPort>(clock_); }};
};

TEST_F(DribblingLink, progressBuysAFrameNoMoreTime) {
  EXPECT_EQ(errorOf([&] { link_.writeMacros(fourCommands()); }), healthCheckFailed);
  EXPECT_NEAR(clock_.elapsed().count(), (querySize - 1) * poll + 0.03, 1e-6);
}

TEST_F(DribblingLink, progressBuysAQueryNoMoreTime) {
  EXPECT_EQ(link_.query(Orlo3Protocol::firmwareQuery, 0.2), std::nullopt);
  EXPECT_GE(clock_.elapsed().count(), 0.2 - 1e-6);
  EXPECT_LE(clock_.elapsed().count(), 0.2 + poll + 1e-6);
}

TEST_F(DribblingLink, aQueryThatIsTakenInTimeIsAnswered) {
  const auto reply = link_.query(Orlo3Protocol::firmwareQuery, 0.4);
  ASSERT_TRUE(reply);
  EXPECT_EQ(reply->value, "2");
}

TEST(FaultyQuery, isUnansweredAndThePortClosed) {
  for (const Case& fault : faultsOfThePad) {
    VirtualPad pad(fault.pad);
    const auto reply = pad.link.query(Orlo3Protocol::firmwareQuery, 3);
    EXPECT_EQ(reply.has_value(), fault.error != dormant) << fault.name;
    EXPECT_EQ(pad.record.closed, 1);
    EXPECT_LE(pad.clock.elapsed().count(), 3.015 + 1e-6);
  }
}

} // namespace
} // namespace trellivar
