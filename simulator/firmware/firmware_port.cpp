#include "simulator/firmware/firmware_port.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib> // posix_openpt and its like
#include <system_error>
#include <tuple>
#include <utility>

namespace trellivar::firmware {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

/// Much longer than a sender pauses between two frames.
constexpr milliseconds quiet = 500ms;
constexpr milliseconds forever = -1ms;
constexpr milliseconds betweenSplinters = 1ms;

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// No program that is started meanwhile inherits it.
FileDescriptor owned(int number, const char* what) {
  if (number < 0 || ::fcntl(number, F_SETFD, FD_CLOEXEC) != 0) fail(what);
  return FileDescriptor(number);
}

FileDescriptor openMaster() {
  FileDescriptor master = owned(::posix_openpt(O_RDWR | O_NOCTTY), "posix_openpt");
  if (::grantpt(master.get()) != 0 || ::unlockpt(master.get()) != 0) fail("unlockpt");
  // A reply that nobody reads is lost, as on a real port, rather than waited for.
  if (::fcntl(master.get(), F_SETFL, O_NONBLOCK) != 0) fail("fcntl");
  return master;
}

std::string slavePath(const FileDescriptor& master) {
  std::array<char, 128> path{};
  if (::ptsname_r(master.get(), path.data(), path.size()) != 0) fail("ptsname_r");
  return path.data();
}

/// Raw from the start: what comes before the other side has configured the port is not echoed.
FileDescriptor openSlave(const std::string& path) {
  FileDescriptor slave = owned(::open(path.c_str(), O_RDWR | O_NOCTTY), "open");
  termios attributes{};
  if (::tcgetattr(slave.get(), &attributes) != 0) fail("tcgetattr");
  ::cfmakeraw(&attributes);
  if (::tcsetattr(slave.get(), TCSANOW, &attributes) != 0) fail("tcsetattr");
  return slave;
}

std::pair<FileDescriptor, FileDescriptor> makePipe() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) fail("pipe");
  return {owned(ends[0], "fcntl"), owned(ends[1], "fcntl")};
}

} // namespace

FirmwarePort::FirmwarePort(PadFirmware& firmware, Faults faults)
    : pad_(firmware, faults),
      master_(openMaster()),
      slave_(-1),
      path_(slavePath(master_)),
      endReader_(-1),
      endWriter_(-1) {
  slave_ = openSlave(path_);
  std::tie(endReader_, endWriter_) = makePipe();
  thread_ = std::thread([this] { serve(); });
}

FirmwarePort::~FirmwarePort() {
  endWriter_ = FileDescriptor(-1);
  thread_.join();
}

void FirmwarePort::serve() {
  bool isUnfinished = false;
  while (!pad_.isUnplugged()) {
    switch (waitFor(pad_.appetite() > 0, isUnfinished ? quiet : forever)) {
    case Event::bytes:
      if (answer() == Event::end) return;
      isUnfinished = true;
      break;
    case Event::timeout:
      pad_.lineIsQuiet();
      isUnfinished = false;
      break;
    case Event::end:
      pad_.lineIsQuiet();
      return;
    }
  }
  pad_.lineIsQuiet();
  master_ = FileDescriptor(-1);
  slave_ = FileDescriptor(-1);
}

FirmwarePort::Event FirmwarePort::answer() {
  std::array<char, 512> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
  const ssize_t size =
      ::read(master_.get(), buffer.data(), std::min(buffer.size(), pad_.appetite()));
  if (size <= 0) return Event::timeout;
  const milliseconds pause =
      pad_.faults().repliesByteByByte ? betweenSplinters : pad_.faults().delay;
  for (const std::string& text : pad_.receive({buffer.data(), static_cast<std::size_t>(size)})) {
    if (pause > 0ms && waitFor(false, pause) == Event::end) return Event::end;
    [[maybe_unused]] const ssize_t sent = ::write(master_.get(), text.data(), text.size());
  }
  return Event::bytes;
}

FirmwarePort::Event FirmwarePort::waitFor(bool wantsBytes, milliseconds timeout) const {
  std::array<pollfd, 2> waited{{{endReader_.get(), POLLIN, 0}, {master_.get(), POLLIN, 0}}};
  const int count = ::poll(waited.data(), wantsBytes ? 2 : 1, static_cast<int>(timeout.count()));
  if (waited[0].revents != 0) return Event::end;
  return count > 0 ? Event::bytes : Event::timeout;
}

} // namespace trellivar::firmware
