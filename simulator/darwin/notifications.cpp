#include "simulator/darwin/notifications.h"

#include "simulator/darwin/matching.h"

#include <string_view>

namespace trellivar::darwin_double {

void NotificationPort::destroy() {
  isDestroyed_ = true;
  messages_.clear();
  if (source_) source_->invalidate();
  source_ = {};
}

void NotificationPort::setOnMainQueue(bool on) {
  isOnMainQueue_ = on;
  deliver();
}

RunLoopSource& NotificationPort::source() {
  if (!source_) source_ = Held(new RunLoopSource(nullptr));
  return *source_;
}

void NotificationPort::send(io_iterator_t notification) {
  if (isDestroyed_) return;
  messages_.push_back(notification);
  deliver();
}

void NotificationPort::deliver() {
  if (messages_.empty()) return;
  if (isOnMainQueue_)
    machine("IONotificationPort").inModes({.isCommon = true}, [this] {
      if (isOnMainQueue_) handle();
    });
  else
    source().send([this] { handle(); });
}

void NotificationPort::handle() {
  while (!messages_.empty()) {
    const io_iterator_t name = messages_.front();
    messages_.pop_front();
    // It may have been released in the meantime.
    if (auto* notification = dynamic_cast<Notification*>(findIOObject(name))) notification->call();
  }
}

void Notification::arrive(desk::Registry::Change change, const desk::Entry& entry) {
  if (change != change_ || port_.isDestroyed() || !matches(entry, *wanted_)) return;
  const bool sends = isArmed_ && pending_.empty();
  pending_.push_back({entry.id, std::nullopt});
  if (change == desk::Registry::Change::disappeared) pending_.back().last = entry;
  if (!sends) return;
  isArmed_ = false;
  port_.send(name);
}

io_object_t Notification::next() {
  if (pending_.empty()) {
    isArmed_ = true;
    return 0;
  }
  const Arrival arrival = pending_.back();
  pending_.pop_back();
  const io_object_t entry = handOutEntry(arrival.id);
  if (arrival.last) ioEntry(entry, "IOIteratorNext").remember(*arrival.last);
  return entry;
}

void Notification::call() {
  const CallbackScope scope(machine("IOServiceAddMatchingNotification"));
  isCalling_ = true;
  callback_(context_, name);
  isCalling_ = false;
}

void Notification::requireReleasable() const {
  if (isCalling_) fail("IOObjectRelease", title() + " is released within its own callback");
}

void notify(Machine& machine, desk::Registry::Change change, const desk::Entry& entry) {
  for (const io_object_t name : ioObjectNames(machine.firstIOName)) {
    if (auto* notification = dynamic_cast<Notification*>(findIOObject(name)))
      notification->arrive(change, entry);
  }
}

io_iterator_t enterNotification(std::unique_ptr<Notification> notification) {
  return enter(std::move(notification), true);
}

NotificationPort& notificationPort(IONotificationPortRef port, const char* call) {
  for (const auto& known : machine(call).notificationPorts) {
    if (reinterpret_cast<IONotificationPortRef>(known.get()) != port) continue;
    if (known->isDestroyed()) fail(call, known->title() + " was destroyed before");
    return *known;
  }
  fail(call, "this is no notification port");
}

namespace {

IONotificationPortRef createPort() {
  constexpr const char* call = "IONotificationPortCreate";
  Machine& here = machine(call);
  if (desk::Faults::strikes(here.desk.faults().failingPorts)) return nullptr;
  auto& ports = here.notificationPorts;
  ports.push_back(std::make_unique<NotificationPort>(ports.size() + 1));
  return reinterpret_cast<IONotificationPortRef>(ports.back().get());
}

kern_return_t addNotification(IONotificationPortRef port, std::string_view type,
                              const Held<Dictionary>& wanted, IOServiceMatchingCallback callback,
                              void* context, io_iterator_t* result) {
  constexpr const char* call = "IOServiceAddMatchingNotification";
  Machine& here = machine(call);
  NotificationPort& target = notificationPort(port, call);
  *result = 0;
  if (desk::Faults::strikes(here.desk.faults().failingMatches)) return kIOReturnError;
  const bool isFirstMatch = type == kIOFirstMatchNotification;
  if (!isFirstMatch && type != kIOTerminatedNotification) return kIOReturnUnsupported;
  auto notification = std::make_unique<Notification>(
      target, isFirstMatch ? desk::Registry::Change::appeared : desk::Registry::Change::disappeared,
      wanted, callback, context);
  if (isFirstMatch) {
    for (const desk::EntryId id : matchingEntries(here.desk.registry(), *wanted))
      notification->add(id);
  }
  *result = enterNotification(std::move(notification));
  return kIOReturnSuccess;
}

} // namespace

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

IONotificationPortRef IONotificationPortCreate(mach_port_t) { return createPort(); }

void IONotificationPortSetDispatchQueue(IONotificationPortRef port, dispatch_queue_t queue) {
  constexpr const char* call = "IONotificationPortSetDispatchQueue";
  if (queue != nullptr && queue != dispatch_get_main_queue())
    fail(call, "only the main queue is known here");
  notificationPort(port, call).setOnMainQueue(queue != nullptr);
}

CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef port) {
  return reference<CFRunLoopSourceRef>(
      &notificationPort(port, "IONotificationPortGetRunLoopSource").source());
}

void IONotificationPortDestroy(IONotificationPortRef port) {
  notificationPort(port, "IONotificationPortDestroy").destroy();
}

kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef port, const io_name_t type,
                                               CFDictionaryRef matching,
                                               IOServiceMatchingCallback callback, void* context,
                                               io_iterator_t* notification) {
  constexpr const char* call = "IOServiceAddMatchingNotification";
  if (matching == nullptr) return kIOReturnBadArgument;
  const Held wanted(&as<Dictionary>(matching, call));
  wanted->release(call);
  return addNotification(port, type, wanted, callback, context, notification);
}

} // extern "C"
