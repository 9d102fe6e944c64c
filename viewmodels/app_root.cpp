#include "viewmodels/app_root.h"

#include "core/known_devices.h"
#include "core/mode_sets.h"
#include "engine/portable_commands.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

namespace trellivar {

namespace {

std::vector<int> padKeyIds() {
  std::vector<int> ids;
  for (const PhysicalKey& key : initialDevice().layout.keys)
    ids.push_back(key.id);
  return ids;
}

/// With the registry's layout if there is one.
TrellivarDevice deviceOf(const ConnectedDevice& connected) {
  TrellivarDevice device = connected.asTrellivarDevice(static_cast<int>(padKeyIds().size()));
  if (auto layout = KnownDevices::layout(device.vendorId, device.productId, device.name))
    device.layout = *std::move(layout);
  return device;
}

} // namespace

AppRoot::AppRoot(Setup setup, std::shared_ptr<ProfileListViewModel> profiles)
    : setup_(std::move(setup)),
      profiles_(std::move(profiles)),
      portableWrite_(PortableWriteViewModel::make(
          {setup_.queue, setup_.background, setup_.link, setup_.report})),
      mapping_(MappingViewModel::make({
          .queue = setup_.queue,
          .device = initialDevice(),
          .profile = *profiles_->active(),
          .engine = setup_.engine,
          .capturer = setup_.capturer,
          .signatures = setup_.signatures,
          .allProfiles = [list = profiles_] { return *list->profiles(); },
          .portableModes = [write = portableWrite_] { return write->portableModes(); },
          .onProfileEdited = [list = profiles_](const Profile& edited) { list->update(edited); },
          .report = setup_.report,
      })),
      pressedKeys_(*setup_.engine, mapping_->device()),
      devices_(DeviceListViewModel::make(setup_.enumerator, setup_.hotplug)) {
  observe();
}

void AppRoot::observe() {
  subscriptions_ = {
      devices_->selected().willChange([this](const std::optional<ConnectedDevice>& next) {
        if (next) use(*next);
      }),
      devices_->padLink().willChange([this](const PadLink& next) {
        if (next.is<PadLink::Usb>()) portableWrite_->clearNeedPad();
      }),
      profiles_->activeId().willChange([this](const std::optional<UUID>& next) {
        const auto& all = *profiles_->profiles();
        const auto profile = std::ranges::find(all, next, &Profile::id);
        if (profile != all.end()) switchTo(*profile);
      }),
      portableWrite_->status().willChange([this](const WriteStatus& next) {
        // Also after a failure: an earlier write, whose end was not shown, may have succeeded.
        if (!next.is<WriteStatus::Writing>()) mapping_->reapply();
      }),
  };
}

void AppRoot::start() {
  if (setup_.hotplug) setup_.hotplug->start();
  devices_->refresh();
  if (const auto& selected = *devices_->selected()) use(*selected);
  mapping_->reapply();
  poll();
  if (setup_.settings->hasFinishedOnboarding()) finishOnboarding();
}

void AppRoot::finishOnboarding() {
  if (!onboarding_.steps()->canContinue || !*isOnboarding_) return;
  isOnboarding_.set(false);
  setup_.settings->finishOnboarding();
}

void AppRoot::stop() {
  pollWork_ = setup_.queue.asyncAfter(pollInterval, [this] {
    setup_.startTap();
    stop();
  });
}

void AppRoot::poll() {
  pollWork_ = setup_.queue.asyncAfter(pollInterval, [this] { poll(); });
  setup_.startTap();
  try {
    const EngineStatus status = setup_.engine->status(KnownDevices::padModel);
    onboarding_.update(status);
    if (!status.accessibilityGranted || !status.inputMonitoringGranted || hasTriedLoginItem_)
      return;
    hasTriedLoginItem_ = true;
    setup_.settings->autoEnableLoginItemIfFirstTime();
  } catch (const std::exception& error) {
    setup_.report(error.what());
  }
}

/// The device that is worked with already stays, with what is being learned on it.
void AppRoot::use(const ConnectedDevice& connected) {
  const TrellivarDevice& current = *mapping_->device();
  if (connected.id() == current.identity() && connected.name == current.name) return;
  mapping_->switchDevice(deviceOf(connected));
  mapping_->reapply();
}

void AppRoot::switchTo(const Profile& profile) {
  mapping_->switchProfile(profile);
  mapping_->reapply();
}

void AppRoot::edit(const Profile& profile) {
  profiles_->update(profile);
  if (profile.id == mapping_->profile()->id) mapping_->switchProfile(profile);
  mapping_->reapply();
}

std::shared_ptr<DiscoveryViewModel> AppRoot::discover(std::string modeId) {
  mapping_->endActiveCapture();
  auto discovery = DiscoveryViewModel::make({
      .modeId = std::move(modeId),
      .engine = setup_.engine,
      .capturer = setup_.capturer,
      .enumerator = setup_.enumerator,
      .signatures = setup_.signatures,
      .keyIds = padKeyIds(),
      .report = setup_.report,
  });
  discovery_ = discovery->step().willChange([this](const DiscoveryViewModel::Step& next) {
    if (!std::holds_alternative<DiscoveryViewModel::Step::Done>(next.value)) return;
    mapping_->switchDevice(*mapping_->device());
    mapping_->reapply();
  });
  return discovery;
}

bool AppRoot::isUndiscovered() const {
  const Profile* profile = profiles_->active();
  const KnownMode* mode = profile ? KnownDevices::all().front().mode(profile->name) : nullptr;
  if (!mode) return false;
  const auto isKnownToSend = [](const PhysicalKey& key) { return !key.signature.codes.empty(); };
  const auto isKnownByDefault = [&](const KnownTransport& transport) {
    return std::ranges::any_of(transport.layout.keys, isKnownToSend);
  };
  if (std::ranges::any_of(mode->transports, isKnownByDefault)) return false;
  const auto stored = setup_.signatures->load();
  return std::ranges::none_of(stored, [&](const StoredDeviceSignatures& record) {
    const bool isOfMode = record.modeId
                              ? *record.modeId == mode->id
                              : mode->transport(record.vendorId, record.productId) != nullptr;
    return isOfMode && !record.keySignatures.empty();
  });
}

void AppRoot::writeToPad() { portableWrite_->writeAll(portableModes(*profiles_->profiles())); }

} // namespace trellivar
