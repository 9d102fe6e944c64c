#pragma once

#include "simulator/darwin/machine.h"
#include "simulator/darwin/object.h"

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>

#include <deque>
#include <functional>

namespace trellivar::darwin_double {

/// There is but the main one.
class RunLoop final : public Object {
public:
  static constexpr Kind ownKind = Kind::runLoop;
  static RunLoop& main();

private:
  RunLoop() : Object(ownKind) {}
};

/// Adds the mode with this name. Aborts for any other than the default and the common modes.
void add(Modes& modes, CFStringRef mode, const char* call);
void remove(Modes& modes, CFStringRef mode, const char* call);
/// Aborts unless `loop` is the main run loop.
void requireMainLoop(CFRunLoopRef loop, const char* call);

/// What brings messages into the run loop: events of a tap, notifications.
class RunLoopSource final : public Object {
public:
  static constexpr Kind ownKind = Kind::runLoopSource;
  /// Keeps `origin`, which may be NULL, until it is invalidated.
  explicit RunLoopSource(Object* origin) : Object(ownKind), origin_(origin) {}
  ~RunLoopSource() override;
  std::string description() const override { return modes_.any() ? "in the main run loop" : ""; }

  const Modes& modes() const noexcept { return modes_; }
  bool isValid() const noexcept { return isValid_; }
  void addTo(CFStringRef mode);
  void removeFrom(CFStringRef mode);
  void invalidate();
  /// Runs `block` as soon as the run loop runs in a mode of this source.
  void send(std::function<void()> block);
  /// Told when the source is no more.
  void setEnd(std::function<void()> end) { end_ = std::move(end); }

private:
  void deliver();

  Held<Object> origin_;
  Modes modes_;
  bool isValid_ = true;
  std::deque<std::function<void()>> messages_;
  std::function<void()> end_;
};

class RunLoopTimer final : public Object {
public:
  static constexpr Kind ownKind = Kind::runLoopTimer;
  RunLoopTimer(Instant due, Seconds interval, CFRunLoopTimerCallBack callback,
               const CFRunLoopTimerContext& context);
  ~RunLoopTimer() override;

  bool isScheduled() const noexcept { return isValid_ && modes_.any(); }
  void addTo(CFStringRef mode);
  void invalidate();

private:
  void arm();
  void fire();

  Instant due_;
  Seconds interval_; ///< 0: once
  CFRunLoopTimerCallBack callback_;
  CFRunLoopTimerContext context_;
  Modes modes_;
  bool isValid_ = true;
  WorkItem alarm_;
  Held<RunLoopTimer> kept_; ///< by the run loop
};

/// Where the events of a tap arrive.
class MachPort final : public Object {
public:
  static constexpr Kind ownKind = Kind::machPort;
  MachPort();
  ~MachPort() override;

  bool isValid() const noexcept { return isValid_; }
  void invalidate();
  /// The program owns one more reference to it; NULL if the port is invalid.
  RunLoopSource* source();
  /// The run loop takes messages from the port now.
  bool isHeard() const;

  struct Tap {
    desk::EventStream::TapId id = 0; ///< 0: one that sees nothing
    bool isEnabled = true;           ///< of one that sees nothing
    CGEventTapCallBack callback = nullptr;
    void* context = nullptr;
  };
  Tap& tap() noexcept { return tap_; }
  std::string description() const override { return isValid_ ? "valid" : "invalidated"; }

private:
  bool isValid_ = true;
  Tap tap_;
  RunLoopSource* source_ = nullptr;
};

} // namespace trellivar::darwin_double
