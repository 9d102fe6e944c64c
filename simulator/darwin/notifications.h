#pragma once

#include "simulator/darwin/io_object.h"
#include "simulator/darwin/machine.h"
#include "simulator/darwin/run_loop.h"
#include "simulator/darwin/values.h"

#include <deque>
#include <string>
#include <vector>

namespace trellivar::darwin_double {

/// Where notifications arrive: on the main queue, or in the run loop.
class NotificationPort {
public:
  explicit NotificationPort(std::size_t number) : number_(number) {}

  std::string title() const { return "IONotificationPort #" + std::to_string(number_); }
  bool isDestroyed() const noexcept { return isDestroyed_; }
  void destroy();
  void setOnMainQueue(bool on);
  RunLoopSource& source();
  /// The message of a notification, to be delivered as soon as somebody takes it.
  void send(io_iterator_t notification);

private:
  void deliver();
  void handle();

  std::size_t number_;
  bool isDestroyed_ = false;
  bool isOnMainQueue_ = false;
  std::deque<io_iterator_t> messages_;
  Held<RunLoopSource> source_;
};

/// The iterator of a notification: what has arrived and was not yet read.
class Notification final : public IOObject {
public:
  Notification(NotificationPort& port, desk::Registry::Change change, Held<Dictionary> wanted,
               IOServiceMatchingCallback callback, void* context)
      : port_(port),
        change_(change),
        wanted_(std::move(wanted)),
        callback_(callback),
        context_(context) {}

  void arrive(desk::Registry::Change change, const desk::Entry& entry);
  /// What has been there before.
  void add(desk::EntryId id) { pending_.push_back({id, {}}); }
  /// 0 at the end, which arms the notification.
  io_object_t next();
  void call();
  std::string title() const override { return "notification iterator " + std::to_string(name); }
  void requireReleasable() const override;

private:
  struct Arrival {
    desk::EntryId id;
    std::optional<desk::Entry> last;
  };

  NotificationPort& port_;
  desk::Registry::Change change_;
  Held<Dictionary> wanted_;
  IOServiceMatchingCallback callback_;
  void* context_;
  std::vector<Arrival> pending_;
  bool isArmed_ = false;
  bool isCalling_ = false;
};

/// Tells every notification.
void notify(Machine& machine, desk::Registry::Change change, const desk::Entry& entry);
/// Enters it; the program owns a reference.
io_iterator_t enterNotification(std::unique_ptr<Notification> notification);
NotificationPort& notificationPort(IONotificationPortRef port, const char* call);

} // namespace trellivar::darwin_double
