#include "engine/orlo3_protocol.h"
#include "engine/orlo3_serial_link.h"
#include "engine/serial_port.h"
#include "files/file_descriptor.h"
#include "simulator/firmware/firmware_port.h"
#include "tests/engine/link_words.h"
#include "tests/engine/virtual_pad.h"
#include "tests/support/eventually.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
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

/// How many descriptors of this process are open on the device.
auto openOn(const std::string& device) {
  return std::ranges::count_if(openDescriptors(), [&](const std::string& descriptor) {
    return descriptor.ends_with(" " + device);
  });
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

/// The device as any program may have it open.
FileDescriptor openDevice(const std::string& path) {
  return FileDescriptor(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
}

/// Waits for bytes to read, or for the end of the cable.
void awaitEvent(const FileDescriptor& device, short events) {
  pollfd waited{device.get(), events, 0};
  EXPECT_EQ(::poll(&waited, 1, 10'000), 1) << "it never came";
}

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

// A whole write, whatever is wrong with the pad. Time passes only by sleeping, so that what a write
// takes is known exactly; a reply that is sure to come is waited for without any of it.

constexpr std::size_t querySize = 26;
constexpr std::size_t commandSize = 62 + 62 + 36; ///< for a key of one digit
constexpr double settling = 0.15;
constexpr double paced = 10 * 3 * 0.03;
constexpr double unanswered = 3.0;
constexpr double poll = 0.015;

struct Case {
  const char* name;
  Faults faults;
  Lines replies; ///< what comes to the queries, in their order
  std::optional<Orlo3Error::Case> error;
  int stored; ///< of the ten commands
  double takes;
};

void PrintTo(const Case& fault, std::ostream* out) { *out << fault.name; }
std::string nameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

/// What went through a port.
struct Traffic {
  Lines replies;
  std::size_t reads = 0;                        ///< that brought something
  std::vector<std::chrono::milliseconds> waits; ///< real time from each query to its reply
};

/// The port of the system, with the patience to wait for the replies that are due, and for the end
/// of the cable once the pad has got the bytes after which it is pulled.
class PatientPort : public SerialPort {
public:
  PatientPort(const std::string& path, LinkClock& clock, const Case& fault, Traffic& traffic)
      : port_(openSerialPort(path, clock)),
        device_(openDevice(path)),
        fault_(fault),
        traffic_(traffic) {}

  ~PatientPort() override { awaitEndOfCableIfDue(); }

  void discardInput() override { port_->discardInput(); }

  std::optional<std::size_t> write(std::string_view bytes) override {
    awaitEndOfCableIfDue();
    const auto before = WallClock::now(); // the pad may begin before the call has returned
    const auto taken = port_->write(bytes);
    written_ += taken.value_or(0);
    if (bytes == Orlo3Protocol::firmwareQuery && taken == bytes.size()) expectReply(before);
    return taken;
  }

  std::string read() override {
    if (due_ > 0) awaitEvent(device_, POLLIN);
    std::string bytes = port_->read();
    if (bytes.empty()) return bytes;
    if (traffic_.replies.back().empty())
      traffic_.waits.push_back(
          std::chrono::ceil<std::chrono::milliseconds>(WallClock::now() - asked_));
    traffic_.replies.back() += bytes;
    ++traffic_.reads;
    due_ -= std::min(due_, bytes.size());
    return bytes;
  }

private:
  void awaitEndOfCableIfDue() const {
    if (fault_.faults.unpluggedAfter && written_ >= *fault_.faults.unpluggedAfter)
      awaitEvent(device_, 0);
  }
  void expectReply(WallClock::time_point asked) {
    const std::size_t query = traffic_.replies.size();
    traffic_.replies.emplace_back();
    due_ = query < fault_.replies.size() ? fault_.replies[query].size() : 0;
    asked_ = asked;
  }

  std::unique_ptr<SerialPort> port_;
  FileDescriptor device_;
  const Case& fault_;
  Traffic& traffic_;
  std::size_t written_ = 0;
  std::size_t due_ = 0; ///< bytes of a reply
  WallClock::time_point asked_;
};

class FaultyPort : public testing::TestWithParam<Case> {
protected:
  FaultyPort() {
    // The pad keeps up with the lines, as far as it stores them.
    link.observeProgress([this](const Orlo3SerialLink::Progress& next) {
      const int count = std::min(static_cast<int>(next.line), GetParam().stored);
      EXPECT_TRUE(eventually([&] { return pad.counts().stored >= count; }));
    });
  }

  /// Taken while no other thread runs: a sanitizer opens pipes of its own in any of them.
  const std::set<std::string> before = openDescriptors();
  PadFirmware pad{"7"};
  std::optional<FirmwarePort> port{std::in_place, pad, GetParam().faults};
  VirtualClock clock;
  Traffic traffic;
  Orlo3SerialLink link{[this] { return port->path(); }, clock,
                       [this](const std::string& path) {
                         return std::make_unique<PatientPort>(path, clock, GetParam(), traffic);
                       }};
};

TEST_P(FaultyPort, endsAsItShouldInItsTimeWithEverythingClosed) {
  const Case& fault = GetParam();
  std::string version;
  EXPECT_EQ(errorOf([&] { version = link.writeMacros(commands(10)); }), fault.error);
  EXPECT_EQ(version.empty(), fault.error.has_value());

  EXPECT_GE(clock.elapsed().count(), fault.takes - 1e-6);
  const double late = fault.error && fault.takes >= unanswered ? poll : 0;
  EXPECT_LE(clock.elapsed().count(), fault.takes + late + 1e-6);

  Lines replies = traffic.replies;
  std::erase(replies, "");
  EXPECT_EQ(replies, fault.replies);
  for (const auto wait : traffic.waits)
    EXPECT_GE(wait, fault.faults.delay);
  EXPECT_EQ(pad.counts().stored, fault.stored);

  // The pad closes its own ends with the cable; nobody else has any left.
  const int endsOfThePad = fault.faults.unpluggedAfter ? 0 : 1;
  EXPECT_TRUE(eventually([&] { return openOn(port->path()) == endsOfThePad; }));
  port.reset();
  EXPECT_EQ(openDescriptors(), before);
  if (fault.faults.repliesByteByByte) {
    EXPECT_GT(traffic.reads, replies[0].size()) << "of two replies; some bytes may catch up";
  }
}

const std::string good = R"({"o":"get","t":"firmware","v":"7"})";
const std::string odd = R"({"o":"get","t":"firmware","v":107})";
const Case faults[] = {
    {"none", {}, {good, good}, std::nullopt, 10, settling + paced},
    {"silent", {.silentAfter = 0}, {}, dormant, 0, settling + unanswered},
    {"silentAfterSomeCommands",
     {.silentAfter = 4},
     {good},
     healthCheckFailed,
     3,
     settling + paced + unanswered},
    {"slow", {.delay = 50ms}, {good, good}, std::nullopt, 10, settling + paced},
    {"tooSlow", {.delay = 60s}, {}, dormant, 0, settling + unanswered},
    {"byteByByteAndSlow",
     {.repliesByteByByte = true, .delay = 50ms},
     {good, good},
     std::nullopt,
     10,
     settling + paced},
    {"numberAsValue",
     {.reply = Faults::Reply::numberAsValue},
     {odd, odd},
     std::nullopt,
     10,
     settling + paced},
    {"garbage", {.reply = Faults::Reply::garbage}, {"{boot}{"}, dormant, 0, settling + unanswered},
    {"garbageInTheEnd",
     {.mumblesAfter = 11},
     {good, "}{?"},
     healthCheckFailed,
     10,
     settling + paced + unanswered},
    {"garbageBeforeTheReply",
     {.reply = Faults::Reply::afterGarbage},
     {"}\x01 boot ok\r\n" + good + "\r\n", "}\x01 boot ok\r\n" + good + "\r\n"},
     std::nullopt,
     10,
     settling + paced},
    {"noText",
     {.reply = Faults::Reply::notUtf8},
     {"\xFF" + good},
     dormant,
     0,
     settling + unanswered},
    {"noOperation",
     {.reply = Faults::Reply::withoutOperation},
     {R"({"t":"firmware","v":"1.0.7"})"},
     dormant,
     0,
     settling + unanswered},
    {"twoReplies",
     {.reply = Faults::Reply::twice},
     {good + good},
     dormant,
     0,
     settling + unanswered},
    {"full", {.takesOnly = 0}, {}, dormant, 0, settling + unanswered},
    {"unpluggedInTheFirstQuery", {.unpluggedAfter = 10}, {}, dormant, 0, settling + unanswered},
    {"unpluggedInTheMiddle",
     {.unpluggedAfter = querySize + 6 * commandSize + 100},
     {good},
     healthCheckFailed,
     6,
     settling + (6 * 3 + 2) * 0.03},
    {"unpluggedBeforeTheLastQuery",
     {.unpluggedAfter = querySize + 10 * commandSize + 1},
     {good},
     healthCheckFailed,
     10,
     settling + paced},
};
INSTANTIATE_TEST_SUITE_P(All, FaultyPort, testing::ValuesIn(faults), nameOf);

/// How much a port of the system holds is its own business, but not what a write does then.
TEST(FirmwarePort, aPortThatFillsUpEndsTheWriteWithThePauseOfTheFrame) {
  const Case fault{"full", {.takesOnly = querySize + 1000}, {good}, healthCheckFailed, 6, 0};
  const auto before = openDescriptors();
  PadFirmware pad("7");
  std::optional<FirmwarePort> port(std::in_place, pad, fault.faults);
  VirtualClock clock;
  Traffic traffic;
  Orlo3SerialLink link([&] { return port->path(); }, clock,
                       [&](const std::string& path) {
                         return std::make_unique<PatientPort>(path, clock, fault, traffic);
                       });
  int frames = 0;
  link.observeProgress([&](const auto&) { ++frames; });
  EXPECT_EQ(errorOf([&] { link.writeMacros(commands(1000)); }), healthCheckFailed);
  EXPECT_NEAR(clock.elapsed().count(), settling + frames * 0.03, 1e-6);
  EXPECT_LT(frames, 3000);
  EXPECT_LE(pad.counts().stored, 6);
  EXPECT_EQ(openOn(port->path()), 1) << "the pad's own";
  port.reset();
  EXPECT_EQ(openDescriptors(), before);
}

// Signals

std::atomic<int> interruptions = 0;
void countInterruption(int) { ++interruptions; }

/// Sends signals that only threads which were started before may handle.
class Interrupter {
public:
  Interrupter() : before_(std::signal(SIGUSR1, countInterruption)) {
    ::pthread_sigmask(SIG_SETMASK, nullptr, &mask_);
    interruptions = 0;
  }
  ~Interrupter() {
    ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
    std::signal(SIGUSR1, before_);
  }
  Interrupter(const Interrupter&) = delete;
  Interrupter& operator=(const Interrupter&) = delete;

  static void spareThisThread() {
    sigset_t blocked{};
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
  }
  static void interrupt(int times) {
    for (int i = 0; i < times; ++i) {
      const int before = interruptions;
      ::kill(::getpid(), SIGUSR1);
      ASSERT_TRUE(eventually([&] { return interruptions > before; }));
    }
  }

private:
  void (*before_)(int);
  sigset_t mask_{}; ///< of the test's thread before
};

TEST(FirmwarePort, aSignalIsNoSilence) {
  const Interrupter signals;
  PadFirmware pad;
  FirmwarePort port(pad);
  Interrupter::spareThisThread();
  VirtualClock clock;
  const auto device = openSerialPort(port.path(), clock);
  std::string text;
  for (const auto& frames : Orlo3Protocol::numberedFrames(commands(2))) {
    for (const std::string& frame : frames)
      text += frame;
  }
  device->write(std::string_view(text).substr(0, commandSize + 70));
  ASSERT_TRUE(eventually([&] { return pad.counts().stored == 1; }));
  Interrupter::interrupt(20);
  device->write(std::string_view(text).substr(commandSize + 70));
  EXPECT_TRUE(eventually([&] { return pad.counts().stored == 2; }));
  EXPECT_EQ(pad.counts().dropped, 0);
}

TEST(FirmwarePort, repliesThatComeLateAreAwaitedInRealTimeToo) {
  PadFirmware pad;
  FirmwarePort port(pad, {.delay = 200ms});
  SystemLinkClock clock;
  Orlo3SerialLink link([&] { return port.path(); }, clock);
  const auto begin = WallClock::now();
  EXPECT_EQ(link.writeMacros(commands(1)), "1.0.7");
  EXPECT_GE(WallClock::now() - begin, 150ms + 2 * 200ms + 3 * 30ms);
  EXPECT_EQ(pad.counts().stored, 1);
}

TEST(FirmwarePort, afterThePortIsGoneItsPathCannotBeOpened) {
  PadFirmware pad;
  std::string path;
  {
    FirmwarePort port(pad);
    path = port.path();
  }
  VirtualClock clock;
  Orlo3SerialLink link([&] { return path; }, clock);
  const auto error = errorOf([&] { link.writeMacros(commands(1)); });
  ASSERT_TRUE(error && std::holds_alternative<Orlo3Error::Io>(*error));
  EXPECT_TRUE(std::get<Orlo3Error::Io>(*error).message.starts_with("open " + path + ": "));
}

TEST(FirmwarePort, endsAtOnceWhateverItIsAbout) {
  const auto begin = WallClock::now();
  for (const Faults& fault : {Faults{}, Faults{.delay = 60s}, Faults{.takesOnly = 0}}) {
    PadFirmware pad;
    FirmwarePort port(pad, fault);
    VirtualClock clock;
    const auto device = openSerialPort(port.path(), clock);
    device->write(Orlo3Protocol::firmwareQuery);
    const int answers = fault.takesOnly ? 0 : 1;
    EXPECT_TRUE(eventually([&] { return pad.counts().answered == answers; }));
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
