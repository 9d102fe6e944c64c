#include "engine/serial_port.h"
#include "files/file_descriptor.h"
#include "tests/engine/link_words.h"
#include "tests/engine/virtual_pad.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <memory>
#include <set>
#include <string>

namespace trellivar {
namespace {

using namespace words;

std::set<std::string> openDescriptors() {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator("/dev/fd"))
    names.insert(entry.path().filename().string());
  return names;
}

/// A pseudo-terminal as the system makes it: cooked, echoing.
class SerialPortTest : public testing::Test {
protected:
  SerialPortTest() : master_(::posix_openpt(O_RDWR | O_NOCTTY)), slave_(-1) {
    ::grantpt(master_.get());
    ::unlockpt(master_.get());
    std::array<char, 128> name{};
    ::ptsname_r(master_.get(), name.data(), name.size());
    path_ = name.data();
    slave_ = FileDescriptor(::open(path_.c_str(), O_RDWR | O_NOCTTY));
  }

  std::unique_ptr<SerialPort> open() { return openSerialPort(path_, clock_); }
  termios attributes() const {
    termios value{};
    EXPECT_EQ(::tcgetattr(slave_.get(), &value), 0);
    return value;
  }
  void send(const std::string& text) const {
    ASSERT_EQ(::write(master_.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  /// Bytes take their time through the system; this waits for some.
  void waitUntilReadable(int descriptor) const {
    pollfd waited{descriptor, POLLIN, 0};
    ASSERT_EQ(::poll(&waited, 1, 10'000), 1);
  }

  VirtualClock clock_;
  FileDescriptor master_;
  FileDescriptor slave_;
  std::string path_;
};

TEST_F(SerialPortTest, aMissingPortIsReportedWithItsPathAndReason) {
  EXPECT_EQ(errorOf([&] { openSerialPort("/dev/no-such-port", clock_); }),
            io("open /dev/no-such-port: No such file or directory"));
  EXPECT_EQ(errorOf([&] { openSerialPort("/dev", clock_); }), io("open /dev: Is a directory"));
  EXPECT_EQ(clock_.elapsed(), Seconds(0));
}

TEST_F(SerialPortTest, whatIsNoTerminalIsRefusedAndClosed) {
  const auto before = openDescriptors();
  EXPECT_EQ(errorOf([&] { openSerialPort("/dev/null", clock_); }), io("tcgetattr failed"));
  EXPECT_EQ(openDescriptors(), before);
  EXPECT_EQ(clock_.elapsed(), Seconds(0));
}

TEST_F(SerialPortTest, isRawLocalAndReceiving) {
  const auto port = open();
  const termios value = attributes();
  EXPECT_EQ(value.c_lflag & static_cast<tcflag_t>(ICANON | ECHO | ISIG | IEXTEN), 0U);
  EXPECT_EQ(value.c_oflag & static_cast<tcflag_t>(OPOST), 0U);
  EXPECT_EQ(value.c_iflag & static_cast<tcflag_t>(ICRNL | INLCR | IXON | ISTRIP), 0U);
  EXPECT_EQ(value.c_cflag & static_cast<tcflag_t>(CLOCAL), static_cast<tcflag_t>(CLOCAL));
  EXPECT_EQ(value.c_cflag & static_cast<tcflag_t>(CREAD), static_cast<tcflag_t>(CREAD));
  EXPECT_EQ(value.c_cflag & static_cast<tcflag_t>(CSIZE), static_cast<tcflag_t>(CS8));
}

#ifndef __APPLE__
TEST_F(SerialPortTest, runsAt460800BitsASecond) {
  const auto port = open();
  EXPECT_EQ(::cfgetospeed(std::make_unique<termios>(attributes()).get()), speed_t{B460800});
  EXPECT_EQ(::cfgetispeed(std::make_unique<termios>(attributes()).get()), speed_t{B460800});
}
#endif

TEST_F(SerialPortTest, givesThePadTimeToSettle) {
  const auto port = open();
  EXPECT_NEAR(clock_.elapsed().count(), 0.150, 1e-9);
}

TEST_F(SerialPortTest, carriesBytesBothWaysAsTheyAre) {
  const auto port = open();
  EXPECT_EQ(port->write("{\"o\"}\n\x03"), 7U);
  waitUntilReadable(master_.get());
  std::array<char, 100> buffer{};
  EXPECT_EQ(::read(master_.get(), buffer.data(), buffer.size()), 7);
  EXPECT_EQ(std::string(buffer.data(), 7), "{\"o\"}\n\x03");

  EXPECT_EQ(port->read(), "");
  send("reply\r\n\x04");
  waitUntilReadable(slave_.get());
  EXPECT_EQ(port->read(), "reply\r\n\x04");
  EXPECT_EQ(port->read(), "");
}

TEST_F(SerialPortTest, readsAtMost512BytesAtOnce) {
  const auto port = open();
  send(std::string(600, 'x'));
  std::size_t size = 0;
  while (size < 600) {
    waitUntilReadable(slave_.get());
    const std::size_t read = port->read().size();
    EXPECT_LE(read, 512U);
    size += read;
  }
  EXPECT_EQ(size, 600U);
}

TEST_F(SerialPortTest, forgetsInputOnRequest) {
  const auto port = open();
  send("stale");
  waitUntilReadable(slave_.get());
  port->discardInput();
  EXPECT_EQ(port->read(), "");
}

TEST_F(SerialPortTest, isFullWhenNobodyReadsAndNeverBlocks) {
  const auto port = open();
  std::size_t total = 0;
  std::optional<std::size_t> taken;
  while ((taken = port->write(std::string(4096, 'x'))).value_or(0) > 0) {
    total += *taken;
    ASSERT_LT(total, std::size_t{1} << 24);
  }
  EXPECT_EQ(taken, 0U) << "full is not broken";
}

TEST_F(SerialPortTest, isBrokenOnceTheOtherEndIsGone) {
  const auto port = open();
  master_ = FileDescriptor(-1);
  EXPECT_EQ(port->write("x"), std::nullopt);
  EXPECT_EQ(port->read(), "");
  port->discardInput();
}

TEST_F(SerialPortTest, whatThePadHasNotTakenIsForgottenOnClosing) {
  constexpr std::size_t moreThanTheFarEndHolds = 6000;
  ASSERT_EQ(::fcntl(master_.get(), F_SETFL, O_NONBLOCK), 0);
  auto port = open();
  ASSERT_EQ(port->write(std::string(moreThanTheFarEndHolds, 'x')), moreThanTheFarEndHolds);
  port = nullptr;
  std::size_t arrived = 0;
  std::array<char, 512> buffer{};
  for (ssize_t size = 0; (size = ::read(master_.get(), buffer.data(), buffer.size())) > 0;)
    arrived += static_cast<std::size_t>(size);
  EXPECT_LT(arrived, moreThanTheFarEndHolds);
}

TEST_F(SerialPortTest, closesItsDescriptorAndLeavesItToNoChild) {
  const auto before = openDescriptors();
  {
    const auto port = open();
    const auto during = openDescriptors();
    EXPECT_EQ(during.size(), before.size() + 1);
    for (const std::string& name : during) {
      if (!before.contains(name)) {
        EXPECT_EQ(::fcntl(std::stoi(name), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
      }
    }
  }
  EXPECT_EQ(openDescriptors(), before);
}

} // namespace
} // namespace trellivar
