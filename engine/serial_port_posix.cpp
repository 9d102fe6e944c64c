#include "engine/orlo3_link.h"
#include "engine/serial_port.h"
#include "engine/serial_speed.h"
#include "files/file_descriptor.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace trellivar {

namespace {

using namespace std::chrono_literals;

constexpr Seconds settleTime = 150ms;

/// A signal, or a port that is full for the moment.
bool isPassing(int error) { return error == EINTR || error == EAGAIN || error == EWOULDBLOCK; }

class PosixSerialPort final : public SerialPort {
public:
  explicit PosixSerialPort(FileDescriptor port) : port_(std::move(port)) {}
  /// Closing waits for what the pad has not taken, half a minute on some systems. After a reply
  /// nothing is left, and a pad that sends none will not take the rest either.
  ~PosixSerialPort() override { ::tcflush(port_.get(), TCOFLUSH); }

  void discardInput() override { ::tcflush(port_.get(), TCIFLUSH); }

  std::optional<std::size_t> write(std::string_view bytes) override {
    const ssize_t taken = ::write(port_.get(), bytes.data(), bytes.size());
    if (taken >= 0) return static_cast<std::size_t>(taken);
    if (isPassing(errno)) return 0;
    return std::nullopt;
  }

  std::string read() override {
    std::array<char, longestRead> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const ssize_t size = ::read(port_.get(), buffer.data(), buffer.size());
    return size > 0 ? std::string(buffer.data(), static_cast<std::size_t>(size)) : std::string();
  }

private:
  FileDescriptor port_;
};

void configure(int port, LinkClock& clock) {
  termios attributes{};
  if (::tcgetattr(port, &attributes) != 0) throw Orlo3Error(Orlo3Error::Io{"tcgetattr failed"});
  ::cfmakeraw(&attributes);
  attributes.c_cflag |= static_cast<tcflag_t>(CLOCAL | CREAD);
  serialspeed::put(attributes);
  ::tcsetattr(port, TCSANOW, &attributes);
  serialspeed::request(port);
  int lines = TIOCM_DTR | TIOCM_RTS;
  ::ioctl(port, TIOCMBIS, &lines);
  clock.sleep(settleTime);
}

} // namespace

std::unique_ptr<SerialPort> openSerialPort(const std::string& path, LinkClock& clock) {
  FileDescriptor port(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  const int error = errno;
  if (!port.isOpen())
    throw Orlo3Error(
        Orlo3Error::Io{"open " + path + ": " + std::generic_category().message(error)});
  configure(port.get(), clock);
  return std::make_unique<PosixSerialPort>(std::move(port));
}

} // namespace trellivar
