#pragma once

#include "simulator/desk/desk.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trellivar::darwin_double {

struct Machine;

/// Makes a desk the machine on which the C interfaces of macOS act, for as long as it lives. There
/// is one at a time. The main run loop and the main dispatch queue run whenever the desk's queue
/// does. One thread; only dispatch_async_f may be called on others.
///
/// Misuse of a reference aborts with a message on standard error; what was forgotten is found with
/// `liveReferences`:
///
///     desk::Desk desk;
///     Platform platform(desk);
///     useTheEngine();
///     EXPECT_EQ(platform.liveReferences(), std::vector<std::string>{});
class Platform {
public:
  explicit Platform(desk::Desk& desk);
  /// What the program left standing (taps, timers, notifications) ends as well.
  ~Platform();
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;

  /// A line for each object, I/O Kit object and notification port that the program still owns, and
  /// for each source that it no longer owns but left in the run loop.
  std::vector<std::string> liveReferences() const;
  /// Event taps that stand, enabled or not.
  std::size_t taps() const;
  /// Timers of the main run loop that will fire.
  std::size_t scheduledTimers() const;

  enum class UntrustedTap : std::uint8_t {
    refused, ///< cannot be created
    deaf,    ///< is created but sees nothing, not even when trust is given later
  };
  /// What becomes of a tap that is created without trust. Refused from the start.
  void setUntrustedTap(UntrustedTap behaviour);
  /// Whether a HID manager makes one device object for each of its matching dictionaries that a
  /// device satisfies (it does from the start), else one for each device.
  void setDevicePerDictionary(bool each);
  /// The sender (field 87) stamped on posted events that carry none; 0 from the start.
  void setPostedSender(std::int64_t sender);
  /// The process id (field 41) stamped on posted events.
  void setProcessId(std::int64_t processId);
  std::int64_t processId() const;
  /// What IOHIDManagerOpen answers when the desk makes it fail; kIOReturnNotPermitted from the
  /// start.
  void setOpenError(int error);
  /// Where the pointer is.
  void setPointer(double x, double y);
  /// Runs `block` once, before an iterator gives out what follows its first object: a moment at
  /// which the registry may change below it.
  void duringNextIteration(std::function<void()> block);

  enum class Prompt : std::uint8_t { accessibility, inputMonitoring };
  /// What the user was asked for, in order. The desk's answers do not change by it.
  const std::vector<Prompt>& prompts() const;

private:
  std::unique_ptr<Machine> machine_;
};

} // namespace trellivar::darwin_double
