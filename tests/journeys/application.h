#pragma once

#include "core/profile_store.h"
#include "core/signature_store.h"
#include "simulator/machine/machine.h"
#include "viewmodels/app_root.h"
#include "viewmodels/user_defaults.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {

/// Passes everything on, and remembers what the engine was told.
class WatchedEngine final : public RemapEngine {
public:
  explicit WatchedEngine(std::shared_ptr<RemapEngine> engine) : engine_(std::move(engine)) {}

  std::set<DeviceIdentity> exempted;
  std::vector<MappingSet> applied; ///< what is in force

  void apply(const MappingSet& set) override { applyAll({&set, 1}); }
  void applyAll(std::span<const MappingSet> sets) override {
    engine_->applyAll(sets);
    applied.assign(sets.begin(), sets.end());
  }
  EngineStatus status(std::string_view name) override { return engine_->status(name); }
  using RemapEngine::setDeviceIgnored;
  void setDeviceIgnored(bool ignored, int vendorId, int productId) override {
    engine_->setDeviceIgnored(ignored, vendorId, productId);
    if (ignored)
      exempted.insert({vendorId, productId});
    else
      exempted.erase({vendorId, productId});
  }
  bool isDeviceReleased(std::string_view name) override { return engine_->isDeviceReleased(name); }
  std::shared_ptr<void> onPadKeysChanged(PadKeyObserver observer) override {
    return engine_->onPadKeysChanged(std::move(observer));
  }

private:
  std::shared_ptr<RemapEngine> engine_;
};

/// Passes everything on, and counts. A capture has a number, from 1.
class WatchedCapturer final : public KeyCapturing {
public:
  explicit WatchedCapturer(std::shared_ptr<KeyCapturing> capturer)
      : capturer_(std::move(capturer)) {}

  std::size_t begun = 0;
  std::set<std::size_t> unanswered; ///< whose completions have not been called

  /// Whether the last one, which ends all others, is under way.
  bool isRunning() const { return unanswered.contains(begun); }

  void capture(Seconds maxDuration, Completion completion) override {
    unanswered.insert(++begun);
    capturer_->capture(maxDuration, [this, number = begun, completion = std::move(completion)](
                                        std::vector<DeviceKeyEvent> events) {
      unanswered.erase(number);
      completion(std::move(events));
    });
  }

private:
  std::shared_ptr<KeyCapturing> capturer_;
};

/// One run of the application on the machine: what its process builds at its start, and what goes
/// with the process. The machine's own services stand idle, since they would survive a restart.
class Application {
public:
  struct Surroundings {
    desk::Machine& machine;
    BackgroundQueue& background;
    std::filesystem::path folder;
    std::shared_ptr<Orlo3Linking> link;
    std::shared_ptr<UserDefaults> defaults;
    Report report;
  };

  explicit Application(const Surroundings& around)
      : hotplug(std::make_shared<IOKitHotplugWatcher>(around.machine.desk.queue(),
                                                      desk::Machine::hotplugDebounce)),
        tap(std::make_shared<TapEngine>(
            around.machine.desk.queue(), std::make_shared<IOKitSenderResolver>(), hotplug,
            darwin::isAccessibilityGranted, darwin::isInputMonitoringGranted)),
        engine(std::make_shared<WatchedEngine>(tap)),
        capturer(std::make_shared<WatchedCapturer>(
            std::make_shared<IOKitKeyCapturer>(around.machine.desk.queue()))),
        signatures(std::make_shared<SignatureStore>(around.folder, around.report)),
        settings(std::make_shared<SettingsStore>(around.defaults)),
        root(std::make_unique<AppRoot>(
            AppRoot::Setup{.queue = around.machine.desk.queue(),
                           .background = around.background,
                           .engine = engine,
                           .startTap = [engine = tap] { engine->startTap(); },
                           .capturer = capturer,
                           .enumerator = std::make_shared<IOKitDeviceEnumerator>(),
                           .hotplug = hotplug,
                           .link = around.link,
                           .signatures = signatures,
                           .settings = settings,
                           .report = around.report},
            std::make_shared<ProfileListViewModel>(ProfileStore(around.folder), around.report))) {}

  std::shared_ptr<IOKitHotplugWatcher> hotplug;
  std::shared_ptr<TapEngine> tap;
  std::shared_ptr<WatchedEngine> engine;
  std::shared_ptr<WatchedCapturer> capturer;
  std::shared_ptr<SignatureStore> signatures;
  std::shared_ptr<SettingsStore> settings;
  std::unique_ptr<AppRoot> root;
};

} // namespace trellivar
