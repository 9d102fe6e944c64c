#include "simulator/darwin/run_loop.h"

#include "simulator/darwin/clock.h"
#include "simulator/darwin/values.h"

#include <algorithm>

namespace trellivar::darwin_double {

RunLoop& RunLoop::main() {
  static RunLoop& loop = *new RunLoop;
  return loop;
}

void requireMainLoop(CFRunLoopRef loop, const char* call) { as<RunLoop>(loop, call); }

namespace {

bool& named(Modes& modes, CFStringRef mode, const char* call) {
  const std::string& name = as<String>(mode, call).text();
  if (name == "kCFRunLoopDefaultMode") return modes.isDefault;
  if (name == "kCFRunLoopCommonModes") return modes.isCommon;
  fail(call, "the run loop is not known to have the mode " + name);
}

} // namespace

void add(Modes& modes, CFStringRef mode, const char* call) { named(modes, mode, call) = true; }
void remove(Modes& modes, CFStringRef mode, const char* call) { named(modes, mode, call) = false; }

RunLoopSource::~RunLoopSource() {
  if (Machine* machine = currentMachine()) std::erase(machine->sources, this);
  if (end_) end_();
}

void RunLoopSource::addTo(CFStringRef mode) {
  constexpr const char* call = "CFRunLoopAddSource";
  Modes modes = modes_;
  add(modes, mode, call);
  if (!isValid_) return;
  if (!modes_.any()) {
    machine(call).sources.push_back(this);
    hold();
  }
  modes_ = modes;
  deliver();
}

void RunLoopSource::removeFrom(CFStringRef mode) {
  const bool wasThere = modes_.any();
  remove(modes_, mode, "CFRunLoopRemoveSource");
  if (!wasThere || modes_.any()) return;
  std::erase(machine("CFRunLoopRemoveSource").sources, this);
  drop();
}

void RunLoopSource::invalidate() {
  if (!std::exchange(isValid_, false)) return;
  const Held self(this);
  messages_.clear();
  if (std::exchange(modes_, {}).any()) {
    if (Machine* machine = currentMachine()) std::erase(machine->sources, this);
    drop();
  }
  origin_ = {};
}

void RunLoopSource::send(std::function<void()> block) {
  if (!isValid_) return;
  messages_.push_back(std::move(block));
  deliver();
}

void RunLoopSource::deliver() {
  if (messages_.empty() || !modes_.any()) return;
  machine("CFRunLoop").inModes(modes_, [self = Held(this)] {
    const Machine& here = machine("CFRunLoop");
    while (!self->messages_.empty() && here.runsIn(self->modes_)) {
      const auto message = std::move(self->messages_.front());
      self->messages_.pop_front();
      message();
    }
  });
}

RunLoopTimer::RunLoopTimer(Instant due, Seconds interval, CFRunLoopTimerCallBack callback,
                           const CFRunLoopTimerContext& context)
    : Object(ownKind), due_(due), interval_(interval), callback_(callback), context_(context) {
  if (context_.retain) context_.info = const_cast<void*>(context_.retain(context_.info)); // NOLINT
  machine("CFRunLoopTimerCreate").timers.push_back(this);
}

RunLoopTimer::~RunLoopTimer() {
  invalidate();
  if (Machine* machine = currentMachine()) std::erase(machine->timers, this);
}

void RunLoopTimer::addTo(CFStringRef mode) {
  const bool wasThere = modes_.any();
  add(modes_, mode, "CFRunLoopAddTimer");
  if (!isValid_ || wasThere) return;
  kept_ = Held(this);
  arm();
}

void RunLoopTimer::arm() {
  auto& queue = machine("CFRunLoopAddTimer").desk.queue();
  alarm_ = queue.asyncAfter(due_ - queue.now(), [this] {
    Machine& here = machine("CFRunLoop");
    if (here.runsIn(modes_))
      fire();
    else
      here.inModes(modes_, [self = Held(this)] { self->fire(); });
  });
}

void RunLoopTimer::fire() {
  if (!isValid_) return;
  const Held self(this);
  {
    const CallbackScope scope(machine("CFRunLoop"));
    callback_(reference<CFRunLoopTimerRef>(this), context_.info);
  }
  if (!isValid_) return;
  if (interval_ <= Seconds::zero()) {
    invalidate();
    return;
  }
  const Instant now = machine("CFRunLoop").desk.queue().now();
  while (due_ <= now)
    due_ += interval_;
  arm();
}

void RunLoopTimer::invalidate() {
  if (!std::exchange(isValid_, false)) return;
  alarm_.cancel();
  if (context_.release) context_.release(context_.info);
  kept_ = {};
}

MachPort::MachPort() : Object(ownKind) { machine("CFMachPort").ports.push_back(this); }

MachPort::~MachPort() {
  invalidate();
  if (Machine* machine = currentMachine()) std::erase(machine->ports, this);
}

void MachPort::invalidate() {
  if (!std::exchange(isValid_, false)) return;
  if (Machine* machine = currentMachine()) machine->desk.events().removeTap(tap_.id);
  const Held self(this);
  if (!source_) return;
  source_->setEnd({});
  std::exchange(source_, nullptr)->invalidate();
}

RunLoopSource* MachPort::source() {
  if (!isValid_) return nullptr;
  if (!source_) {
    source_ = new RunLoopSource(this);
    source_->setEnd([this] { source_ = nullptr; });
  }
  return source_;
}

bool MachPort::isHeard() const {
  return isValid_ && source_ && machine("CFMachPort").runsIn(source_->modes());
}

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

const CFStringRef kCFRunLoopDefaultMode =
    reference<CFStringRef>(&constantString("kCFRunLoopDefaultMode"));
const CFStringRef kCFRunLoopCommonModes =
    reference<CFStringRef>(&constantString("kCFRunLoopCommonModes"));

CFRunLoopRef CFRunLoopGetMain() { return reference<CFRunLoopRef>(&RunLoop::main()); }
CFRunLoopRef CFRunLoopGetCurrent() { return CFRunLoopGetMain(); }

CFRunLoopRunResult CFRunLoopRunInMode(CFStringRef mode, CFTimeInterval seconds,
                                      Boolean returnAfterSourceHandled) {
  constexpr const char* call = "CFRunLoopRunInMode";
  Machine& here = machine(call);
  Modes modes;
  add(modes, mode, call);
  if (modes.isCommon) fail(call, "the common modes are no mode to run in");
  if (here.isInCallback) fail(call, "the run loop runs already");
  here.stopsLoop = false;
  auto& queue = here.desk.queue();
  const trellivar::Instant end = queue.now() + trellivar::Seconds(std::max(seconds, 0.0));
  while (queue.runNext(end)) {
    if (here.stopsLoop) return kCFRunLoopRunStopped;
    if (returnAfterSourceHandled != 0) return kCFRunLoopRunHandledSource;
  }
  queue.advance(end - queue.now());
  return kCFRunLoopRunTimedOut;
}

void CFRunLoopStop(CFRunLoopRef loop) {
  requireMainLoop(loop, "CFRunLoopStop");
  machine("CFRunLoopStop").stopsLoop = true;
}

void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFStringRef mode) {
  requireMainLoop(loop, "CFRunLoopAddSource");
  as<RunLoopSource>(source, "CFRunLoopAddSource").addTo(mode);
}

void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFStringRef mode) {
  requireMainLoop(loop, "CFRunLoopRemoveSource");
  as<RunLoopSource>(source, "CFRunLoopRemoveSource").removeFrom(mode);
}

void CFRunLoopAddTimer(CFRunLoopRef loop, CFRunLoopTimerRef timer, CFStringRef mode) {
  requireMainLoop(loop, "CFRunLoopAddTimer");
  as<RunLoopTimer>(timer, "CFRunLoopAddTimer").addTo(mode);
}

CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime fireDate,
                                       CFTimeInterval interval, CFOptionFlags, CFIndex,
                                       CFRunLoopTimerCallBack callback,
                                       CFRunLoopTimerContext* context) {
  constexpr const char* call = "CFRunLoopTimerCreate";
  if (callback == nullptr) fail(call, "NULL is no call-back");
  const CFRunLoopTimerContext none{};
  return handedOut<CFRunLoopTimerRef>(new RunLoopTimer(
      dueAt(fireDate), trellivar::Seconds(interval), callback, context ? *context : none));
}

void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  const Held held(&as<RunLoopTimer>(timer, "CFRunLoopTimerInvalidate"));
  held->invalidate();
}

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef port, CFIndex) {
  RunLoopSource* source = as<MachPort>(port, "CFMachPortCreateRunLoopSource").source();
  return source ? handedOut<CFRunLoopSourceRef>(source) : nullptr;
}

void CFMachPortInvalidate(CFMachPortRef port) {
  as<MachPort>(port, "CFMachPortInvalidate").invalidate();
}

Boolean CFMachPortIsValid(CFMachPortRef port) {
  return as<MachPort>(port, "CFMachPortIsValid").isValid() ? 1 : 0;
}

} // extern "C"
