#pragma once

#include "engine/link_clock.h"
#include "engine/orlo3_link.h"
#include "engine/serial_port.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

/// The pad at a serial port. Every call opens the port, configures it, does its work and closes it,
/// whatever happens in between; nothing is kept from one call to the next.
///
/// The pad acknowledges no command: the reply to the last firmware query is the only confirmation
/// of a write. It alone would not tell that the computer's side of the port swallowed half a
/// frame, so the link sees to that itself: what the port does not take at once is offered again
/// every 15 ms, for a frame as long as its pause lasts, for a query until its deadline. If a frame
/// cannot be handed over completely, `writeMacros` stops there with `HealthCheckFailed`, and a
/// query counts as unanswered.
///
/// Waiting for room thus takes no time of its own: a `query` takes at most 150 ms and its timeout,
/// a `writeMacros` 150 ms, three seconds for each of its two queries, and 30 ms for each frame. A
/// deadline is noticed up to 15 ms late.
class Orlo3SerialLink final : public Orlo3Linking {
public:
  using Discover = std::function<std::optional<std::string>()>;
  /// Opens and configures; throws Orlo3Error::Io.
  using Open = std::function<std::unique_ptr<SerialPort>(const std::string& path)>;

  /// A frame that is about to be written.
  struct Progress {
    std::size_t line = 0;   ///< index among the lines of the write
    std::size_t frame = 0;  ///< of this line, from 1
    std::size_t frames = 0; ///< that this line has
  };
  using Observe = std::function<void(const Progress&)>;

  /// Finding the port is the platform's business. `clock` must outlive the link.
  Orlo3SerialLink(Discover discover, LinkClock& clock);
  /// The same with other ports than those of the system.
  Orlo3SerialLink(Discover discover, LinkClock& clock, Open open);

  /// Calls `observe` on the writing thread during each `writeMacros` from now on.
  void observeProgress(Observe observe);

  std::optional<std::string> discoverPort() override;
  std::optional<Orlo3Reply> query(std::string_view line, double timeoutSeconds) override;
  std::string writeMacros(const std::vector<std::string>& lines) override;

private:
  std::unique_ptr<SerialPort> openPort();

  Discover discover_;
  LinkClock& clock_;
  Open open_;
  Observe observe_;
};

} // namespace trellivar
