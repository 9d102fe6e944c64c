#pragma once

#include "simulator/darwin/object.h"
#include "simulator/darwin/platform.h"

namespace trellivar::darwin_double {

class HIDManager;
class IOObjects;
class MachPort;
class NotificationPort;
class RunLoopSource;
class RunLoopTimer;

/// The modes of the main run loop in which something runs.
struct Modes {
  bool isDefault = false;
  bool isCommon = false;
  bool any() const noexcept { return isDefault || isCommon; }
};

/// What a platform consists of. The lists name what is there now; objects enter and leave them by
/// themselves.
struct Machine {
  explicit Machine(desk::Desk& on);
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  ~Machine();

  /// Runs `block` from the main queue, in the default mode only unless it is wanted in the common
  /// modes; never after the end of the platform.
  void inModes(Modes modes, std::function<void()> block);
  /// Whether the main run loop now runs in one of these.
  bool runsIn(Modes modes) const {
    return modes.isCommon || (modes.isDefault && !desk.isTracking());
  }

  desk::Desk& desk;
  std::uint64_t firstObject; ///< number of the last object before
  std::uint32_t firstIOName;
  std::vector<MachPort*> ports;
  std::vector<RunLoopTimer*> timers;
  std::vector<RunLoopSource*> sources; ///< in the main run loop
  std::vector<HIDManager*> managers;
  std::vector<std::unique_ptr<NotificationPort>> notificationPorts; ///< destroyed ones included

  Platform::UntrustedTap untrustedTap = Platform::UntrustedTap::refused;
  bool devicePerDictionary = true;
  std::int64_t postedSender = 0;
  std::int64_t processId = 4711;
  int openError;
  double pointerX = 640;
  double pointerY = 400;
  std::function<void()> duringIteration;
  std::vector<Platform::Prompt> prompts;
  bool stopsLoop = false; ///< CFRunLoopStop was called
  bool isInCallback = false;

  std::shared_ptr<bool> alive = std::make_shared<bool>(true);
  std::shared_ptr<void> registryObserver;
  std::shared_ptr<void> hidListener;
};

/// The machine that the calls act on. Aborts if there is none.
Machine& machine(const char* call);
/// None: nullptr.
Machine* currentMachine() noexcept;

/// While the program's code runs within a callback of the platform.
class CallbackScope {
public:
  explicit CallbackScope(Machine& machine) noexcept
      : machine_(machine), outer_(std::exchange(machine.isInCallback, true)) {}
  ~CallbackScope() { machine_.isInCallback = outer_; }
  CallbackScope(const CallbackScope&) = delete;
  CallbackScope& operator=(const CallbackScope&) = delete;

private:
  Machine& machine_;
  bool outer_;
};

} // namespace trellivar::darwin_double
