#include "app/local_computer.h"
#include "engine/link_clock.h"
#include "engine/linux/serial_ports.h"
#include "engine/orlo3_serial_link.h"

namespace trellivar {

namespace {

class LinuxComputer final : public Computer {
public:
  AppRoot::Setup setup(MainQueue& queue, BackgroundQueue& background,
                       std::shared_ptr<SignaturePersisting> signatures,
                       std::shared_ptr<SettingsStore> settings) override {
    return {.queue = queue,
            .background = background,
            .engine = std::make_shared<StubRemapEngine>(),
            .startTap = [] {},
            .capturer = std::make_shared<StubKeyCapturer>(),
            .enumerator = std::make_shared<StubDeviceEnumerator>(),
            .hotplug = nullptr,
            .link = std::make_shared<Orlo3SerialLink>([] { return discoverPadPort(); }, clock_),
            .signatures = std::move(signatures),
            .settings = std::move(settings)};
  }
  bool hasEngine() const override { return false; }

private:
  SystemLinkClock clock_;
};

} // namespace

std::unique_ptr<Computer> localComputer() { return std::make_unique<LinuxComputer>(); }

} // namespace trellivar
