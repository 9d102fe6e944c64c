#pragma once

#include "app/bridge/app_bridge.h"
#include "core/profile_store.h"
#include "core/signature_store.h"
#include "simulator/machine/machine.h"
#include "tests/app/recording_platform.h"
#include "tests/app/stage.h"
#include "tests/app/warning_log.h"
#include "tests/support/held_background.h"
#include "tests/support/hurried_clock.h"
#include "tests/support/temporary_folder.h"
#include "viewmodels/app_root.h"
#include "viewmodels/user_defaults.h"

#include <QQmlEngine>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellivar {

/// What is on a stage: a computer, its user's folder and preferences, the application, its window.
struct Stage::World {
  WarningLog warnings; ///< first, so that it hears how everything else goes
  TemporaryFolder folder{quickFolder()};
  desk::Machine machine;
  HurriedClock clock{std::chrono::milliseconds(1)};
  HeldBackground background;
  RecordingPlatform platform;
  std::shared_ptr<SettingsStore> settings = std::make_shared<SettingsStore>(
      std::make_shared<MemoryUserDefaults>(std::vector<std::string>{"en"}));
  FileTroubles troubles;
  AppRoot root{{.queue = machine.desk.queue(),
                .background = background,
                .engine = shared<RemapEngine>(machine.engine),
                .startTap = [this] { machine.engine.startTap(); },
                .capturer = shared<KeyCapturing>(machine.capturer),
                .enumerator = shared<DeviceEnumerating>(machine.enumerator),
                .hotplug = machine.hotplug,
                .link = std::shared_ptr<Orlo3Linking>(new Orlo3SerialLink(machine.link(clock))),
                .signatures = std::make_shared<SignatureStore>(folder.path(), report()),
                .settings = settings},
               std::make_shared<ProfileListViewModel>(ProfileStore(folder.path()), report())};
  std::optional<AppBridge> bridge{std::in_place, root, platform, troubles, true};
  QQmlEngine qml;
  std::unique_ptr<QObject> content;
  QQuickWindow* window = nullptr; ///< owned by `content`

  explicit World(QStringList& heard) : warnings(heard) {
    machine.desk.events().setRecording(false);
    settings->setAppearance(AppAppearance::dark);
    settings->onStartAtLoginChanged([this](bool isOn) { platform.setLoginItem(isOn); });
    qml.addImportPath("qrc:/");
  }

private:
  Report report() {
    return [this](std::string_view what) { troubles.report(what); };
  }
  /// A service of the machine, which ends with it.
  template <class Service> static std::shared_ptr<Service> shared(Service& service) {
    return {std::shared_ptr<void>(), &service};
  }
};

} // namespace trellivar
