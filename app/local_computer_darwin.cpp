#include "app/local_computer.h"
#include "engine/darwin/iokit_device_enumerator.h"
#include "engine/darwin/iokit_hotplug_watcher.h"
#include "engine/darwin/iokit_key_capturer.h"
#include "engine/darwin/iokit_port_discovery.h"
#include "engine/darwin/iokit_sender_resolver.h"
#include "engine/darwin/permissions.h"
#include "engine/darwin/tap_engine.h"
#include "engine/link_clock.h"
#include "engine/orlo3_serial_link.h"

namespace trellivar {

namespace {

/// How long the watcher waits for the end of a burst of changes.
constexpr Seconds hotplugDebounce{0.3};

class Mac final : public Computer {
public:
  AppRoot::Setup setup(MainQueue& queue, BackgroundQueue& background,
                       std::shared_ptr<SignaturePersisting> signatures,
                       std::shared_ptr<SettingsStore> settings) override {
    auto hotplug = std::make_shared<IOKitHotplugWatcher>(queue, hotplugDebounce);
    auto engine = std::make_shared<TapEngine>(queue, std::make_shared<IOKitSenderResolver>(),
                                              hotplug, darwin::isAccessibilityGranted,
                                              darwin::isInputMonitoringGranted);
    return {.queue = queue,
            .background = background,
            .engine = engine,
            .startTap = [engine] { engine->startTap(); },
            .capturer = std::make_shared<IOKitKeyCapturer>(queue),
            .enumerator = std::make_shared<IOKitDeviceEnumerator>(),
            .hotplug = hotplug,
            .link =
                std::make_shared<Orlo3SerialLink>([] { return darwin::discoverPadPort(); }, clock_),
            .signatures = std::move(signatures),
            .settings = std::move(settings)};
  }

private:
  SystemLinkClock clock_;
};

} // namespace

std::unique_ptr<Computer> localComputer() { return std::make_unique<Mac>(); }

} // namespace trellivar
