#include "app/local_services.h"
#include "engine/link_clock.h"
#include "engine/linux/serial_ports.h"
#include "engine/orlo3_serial_link.h"

namespace trellivar {

AppRoot::Setup localSetup(MainQueue& queue, BackgroundQueue& background,
                          std::shared_ptr<SignaturePersisting> signatures,
                          std::shared_ptr<SettingsStore> settings) {
  static SystemLinkClock clock;
  return {.queue = queue,
          .background = background,
          .engine = std::make_shared<StubRemapEngine>(),
          .startTap = [] {},
          .capturer = std::make_shared<StubKeyCapturer>(),
          .enumerator = std::make_shared<StubDeviceEnumerator>(),
          .hotplug = nullptr,
          .link = std::make_shared<Orlo3SerialLink>([] { return discoverPadPort(); }, clock),
          .signatures = std::move(signatures),
          .settings = std::move(settings)};
}

} // namespace trellivar
