#include "simulator/machine/machine.h"

#include "engine/darwin/permissions.h"

namespace trellivar::desk {

Machine::Machine()
    : hotplug(std::make_shared<IOKitHotplugWatcher>(desk.queue(), hotplugDebounce)),
      engine(desk.queue(), std::make_shared<IOKitSenderResolver>(), hotplug,
             darwin::isAccessibilityGranted, darwin::isInputMonitoringGranted) {
  keyboard = desk.attach({.product = "Keyboard",
                          .identity = keyboardIdentity,
                          .interfaces = {{DeviceDescription::keyboard},
                                         {DeviceDescription::consumerControl},
                                         {DeviceDescription::mouse}}});
}

} // namespace trellivar::desk
