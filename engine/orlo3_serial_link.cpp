#include "engine/orlo3_serial_link.h"

#include "engine/orlo3_protocol.h"
#include "engine/orlo3_reply_parser.h"

#include <utility>

namespace trellivar {

namespace {

using namespace std::chrono_literals;

constexpr Seconds framePause = 30ms;
constexpr Seconds idlePause = 15ms;

/// What happens between opening a port and closing it.
class Exchange {
public:
  Exchange(SerialPort& port, LinkClock& clock) : port_(port), clock_(clock) {}

  /// Whether the port took all bytes. Waiting for room is part of the pause, never in addition.
  bool writeFrame(std::string_view frame) {
    Seconds pause = framePause;
    const bool isTaken = write(frame, [&] {
      if (pause <= Seconds(0)) return false;
      clock_.sleep(idlePause);
      pause -= idlePause;
      return true;
    });
    if (isTaken) clock_.sleep(pause);
    return isTaken;
  }

  std::optional<Orlo3Reply> request(std::string_view line, double timeoutSeconds) {
    port_.discardInput();
    const Instant deadline = clock_.now() + Seconds(timeoutSeconds);
    const bool isTaken = write(line, [&] {
      if (clock_.now() >= deadline) return false;
      clock_.sleep(idlePause);
      return true;
    });
    if (!isTaken) return std::nullopt;
    std::string arrived;
    while (clock_.now() < deadline) {
      const std::string bytes = port_.read();
      if (bytes.empty()) {
        clock_.sleep(idlePause);
        continue;
      }
      arrived += bytes;
      if (auto reply = parseReply(arrived)) return reply;
    }
    return std::nullopt;
  }

  std::optional<Orlo3Reply> askForFirmware() {
    return request(Orlo3Protocol::firmwareQuery, Orlo3Linking::firmwareTimeoutSeconds);
  }

private:
  /// Whether the port took all bytes; `waitForRoom` tells whether there was time left to wait.
  template <typename WaitForRoom> bool write(std::string_view bytes, WaitForRoom waitForRoom) {
    while (!bytes.empty()) {
      const auto taken = port_.write(bytes);
      if (!taken) return false;
      bytes.remove_prefix(*taken);
      if (*taken == 0 && !waitForRoom()) return false;
    }
    return true;
  }

  SerialPort& port_;
  LinkClock& clock_;
};

} // namespace

Orlo3SerialLink::Orlo3SerialLink(Discover discover, LinkClock& clock)
    : Orlo3SerialLink(std::move(discover), clock,
                      [&clock](const std::string& path) { return openSerialPort(path, clock); }) {}

Orlo3SerialLink::Orlo3SerialLink(Discover discover, LinkClock& clock, Open open)
    : discover_(std::move(discover)), clock_(clock), open_(std::move(open)) {}

void Orlo3SerialLink::observeProgress(Observe observe) { observe_ = std::move(observe); }

std::optional<std::string> Orlo3SerialLink::discoverPort() { return discover_(); }

std::unique_ptr<SerialPort> Orlo3SerialLink::openPort() {
  const auto path = discoverPort();
  if (!path) throw Orlo3Error(Orlo3Error::NoPort{});
  return open_(*path);
}

std::optional<Orlo3Reply> Orlo3SerialLink::query(std::string_view line, double timeoutSeconds) {
  const auto port = openPort();
  return Exchange(*port, clock_).request(line, timeoutSeconds);
}

std::string Orlo3SerialLink::writeMacros(const std::vector<std::string>& lines) {
  const auto port = openPort();
  Exchange exchange(*port, clock_);
  if (!exchange.askForFirmware()) throw Orlo3Error(Orlo3Error::Dormant{});
  const auto framesOfLines = Orlo3Protocol::numberedFrames(lines);
  for (std::size_t line = 0; line < framesOfLines.size(); ++line) {
    const auto& frames = framesOfLines[line];
    for (std::size_t i = 0; i < frames.size(); ++i) {
      if (observe_) observe_({line, i + 1, frames.size()});
      if (!exchange.writeFrame(frames[i])) throw Orlo3Error(Orlo3Error::HealthCheckFailed{});
    }
  }
  const auto reply = exchange.askForFirmware();
  if (!reply) throw Orlo3Error(Orlo3Error::HealthCheckFailed{});
  return reply->value;
}

} // namespace trellivar
