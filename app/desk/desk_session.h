#pragma once

#include "engine/link_clock.h"
#include "simulator/machine/machine.h"
#include "viewmodels/app_root.h"

#include <QTimer>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace trellivar {

/// The simulated computer in real time, on the loop of the application. Main thread.
class DeskSession {
public:
  DeskSession();
  ~DeskSession();
  DeskSession(const DeskSession&) = delete;
  DeskSession& operator=(const DeskSession&) = delete;

  desk::Machine& machine() { return *machine_; }

  /// Moves something on the desk, and lets its consequences happen.
  template <class Act> void act(Act act) {
    act(*machine_);
    notePort();
    run();
  }

  /// The services of the computer, for the application. They end with the session.
  std::shared_ptr<RemapEngine> engine() { return borrowed(machine_->engine); }
  std::shared_ptr<KeyCapturing> capturer() { return borrowed(machine_->capturer); }
  std::shared_ptr<DeviceEnumerating> enumerator() { return borrowed(machine_->enumerator); }
  std::shared_ptr<HotplugWatching> hotplug() { return machine_->hotplug; }
  /// To the firmware of the pad; may be used on another thread while the desk is in use.
  std::shared_ptr<Orlo3Linking> link();

private:
  template <class Service> static std::shared_ptr<Service> borrowed(Service& service) {
    return {std::shared_ptr<void>(), &service};
  }
  void run();
  void notePort();

  std::unique_ptr<desk::Machine> machine_;
  SystemLinkClock linkClock_;
  std::mutex mutex_;                ///< of what follows
  std::optional<std::string> port_; ///< of the pad, while it is on the cable
  std::atomic<bool> isRunDue_ = false;
  QTimer timer_; ///< for the next thing that is due
};

} // namespace trellivar
