#include "cli/context.h"
#include "cli/local_machine.h"
#include "engine/darwin/dispatch_main_queue.h"
#include "engine/darwin/iokit_device_enumerator.h"
#include "engine/darwin/iokit_sender_resolver.h"
#include "engine/darwin/key_monitor.h"
#include "engine/darwin/permissions.h"
#include "engine/darwin/tap_engine.h"

namespace trellivar::cli {

namespace {

DispatchMainQueue& mainQueue() {
  static DispatchMainQueue queue;
  return queue;
}

void monitorKeys(const LocalMachine::OnKeyEvent& onKeyEvent, const std::function<void()>& turn) {
  constexpr Seconds turnLength{0.1};
  const KeyMonitor monitor(mainQueue(), onKeyEvent);
  if (!darwin::isInputMonitoringGranted() && !monitor.isOpen())
    throw Failure("keyboards cannot be opened: permit Input Monitoring for the program that runs "
                  "this command, in the system's privacy settings, then start it anew");
  for (;;) {
    darwin::runMainLoop(turnLength);
    turn();
  }
}

} // namespace

LocalMachine localMachine() {
  return {.missing = {},
          .enumerator = std::make_unique<IOKitDeviceEnumerator>(),
          .engine = std::make_unique<TapEngine>(
              mainQueue(), std::make_shared<IOKitSenderResolver>(), nullptr,
              darwin::isAccessibilityGranted, darwin::isInputMonitoringGranted),
          .monitor = monitorKeys};
}

} // namespace trellivar::cli
