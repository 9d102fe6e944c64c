#pragma once

#include "core/instant.h"
#include "core/profile_store.h"
#include "core/signature_store.h"
#include "engine/device_enumerating.h"
#include "engine/hotplug_watching.h"
#include "engine/key_capturing.h"
#include "engine/log.h"
#include "engine/main_queue.h"
#include "engine/orlo3_link.h"
#include "engine/remap_engine.h"
#include "viewmodels/device_list_view_model.h"
#include "viewmodels/discovery_view_model.h"
#include "viewmodels/mapping_view_model.h"
#include "viewmodels/onboarding_view_model.h"
#include "viewmodels/portable_write_view_model.h"
#include "viewmodels/profile_list_view_model.h"
#include "viewmodels/report.h"
#include "viewmodels/settings_store.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trellivar {

/// The models that live as long as the main window, and what keeps them in step with one another,
/// with the engine and with the permissions. Main thread.
class AppRoot {
public:
  /// How often the permissions are looked at, since nothing tells when they change.
  static constexpr Seconds pollInterval{1.5};

  struct Setup {
    MainQueue& queue;            ///< must outlive everything here
    BackgroundQueue& background; ///< the same
    std::shared_ptr<RemapEngine> engine;
    /// Installs the engine's tap as soon as it is permitted; called again and again.
    std::function<void()> startTap;
    std::shared_ptr<KeyCapturing> capturer;
    std::shared_ptr<DeviceEnumerating> enumerator;
    std::shared_ptr<HotplugWatching> hotplug; ///< may be null
    std::shared_ptr<Orlo3Linking> link;
    std::shared_ptr<SignaturePersisting> signatures;
    std::shared_ptr<SettingsStore> settings;
    Report report = debugLog;
  };

  /// `profiles` is not null.
  AppRoot(Setup setup, std::shared_ptr<ProfileListViewModel> profiles);
  AppRoot(const AppRoot&) = delete;
  AppRoot& operator=(const AppRoot&) = delete;

  SettingsStore& settings() const noexcept { return *setup_.settings; }
  ProfileListViewModel& profiles() const noexcept { return *profiles_; }
  DeviceListViewModel& devices() const noexcept { return *devices_; }
  MappingViewModel& mapping() const noexcept { return *mapping_; }
  PortableWriteViewModel& portableWrite() const noexcept { return *portableWrite_; }
  OnboardingViewModel& onboarding() noexcept { return onboarding_; }

  /// The first steps are to be shown, instead of the pad. Whoever has been through them before goes
  /// straight to the pad, provided that everything is permitted when the window is shown.
  const Published<bool>& isOnboarding() const noexcept { return isOnboarding_; }
  /// The user goes on to the pad; ignored until everything is permitted.
  void finishOnboarding();

  /// The main window is shown: looks for devices, gives the engine the profiles, and polls from now
  /// on.
  void start();
  /// The main window has gone: nothing is looked at any more. Remapping goes on, so the tap is
  /// still kept: what its system does to it while nobody looks would otherwise last until the
  /// window opens.
  void stop();

  /// Teaches the system a mode; once that is saved, it is in force.
  std::shared_ptr<DiscoveryViewModel> discover(std::string modeId);
  /// Writes the profile of every mode into the pad.
  void writeToPad();
  /// Nobody knows what the pad sends in the mode of the active profile.
  bool isUndiscovered() const;
  /// Takes in a profile that was edited elsewhere than in the mapping model. If it is the one that
  /// is worked on there, what is being learned or recorded ends.
  void edit(const Profile& profile);

private:
  void observe();
  void poll();
  void use(const ConnectedDevice& connected);
  void switchTo(const Profile& profile);

  Setup setup_;
  std::shared_ptr<ProfileListViewModel> profiles_;
  std::shared_ptr<PortableWriteViewModel> portableWrite_;
  std::shared_ptr<MappingViewModel> mapping_;
  std::shared_ptr<DeviceListViewModel> devices_;
  OnboardingViewModel onboarding_;
  Published<bool> isOnboarding_{true};
  bool hasTriedLoginItem_ = false; ///< in this run
  std::vector<Subscription> subscriptions_;
  Subscription discovery_;
  WorkItem pollWork_;
};

} // namespace trellivar
