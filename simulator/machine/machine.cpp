#include "simulator/machine/machine.h"

#include "engine/darwin/iokit_port_discovery.h"
#include "engine/darwin/permissions.h"

#include <utility>

namespace trellivar::desk {

namespace {

constexpr std::string_view calloutDevice = "/dev/cu.usbmodem1101";

} // namespace

Machine::Machine()
    : hotplug(std::make_shared<IOKitHotplugWatcher>(desk.queue(), hotplugDebounce)),
      engine(desk.queue(), std::make_shared<IOKitSenderResolver>(), hotplug,
             darwin::isAccessibilityGranted, darwin::isInputMonitoringGranted) {
  keyboard = desk.attach({.product = "Keyboard",
                          .identity = keyboardIdentity,
                          .interfaces = {{DeviceDescription::keyboard},
                                         {DeviceDescription::consumerControl},
                                         {DeviceDescription::mouse}}});
  pad.setCalloutPath([this] { return calloutPath(); });
  pad.setMacros([this](std::string_view mode, int key) { return macro(mode, key); });
}

std::optional<std::vector<MacroEvent>> Machine::macro(std::string_view mode, int key) const {
  const auto stored = firmware.macro(mode, key);
  if (!stored) return std::nullopt;
  std::vector<MacroEvent> steps;
  for (int i = 0; i < stored->repeatCount; ++i)
    steps.insert(steps.end(), stored->steps.begin(), stored->steps.end());
  return steps;
}

std::string Machine::calloutPath() {
  if (!port) port.emplace(firmware);
  return std::string(calloutDevice);
}

Orlo3SerialLink Machine::link(LinkClock& clock) {
  return {[] { return darwin::discoverPadPort(); }, clock,
          [this, &clock](const std::string& path) { return open(path, clock); }};
}

/// Behind the device file that the desk names stands a pseudo-terminal of another name.
std::unique_ptr<SerialPort> Machine::open(const std::string& path, LinkClock& clock) const {
  return openSerialPort(path == calloutDevice && port ? port->path() : path, clock);
}

} // namespace trellivar::desk
