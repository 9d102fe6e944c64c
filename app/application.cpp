#include "app/application.h"

#include "app/desk/desk_bridge.h"
#include "app/desk/desk_session.h"
#include "app/local_services.h"
#include "app/qt_user_defaults.h"
#include "app/status_menu.h"

#include <QGuiApplication>
#include <QQuickWindow>

namespace trellivar {

Application::Application(const Options& options)
    : platform_(platformServices()),
      desk_(options.simulate ? std::make_unique<DeskSession>() : nullptr),
      root_(setup(options),
            std::make_shared<ProfileListViewModel>(ProfileStore(options.dataFolder))),
      bridge_(root_, *platform_) {
  SettingsStore& settings = root_.settings();
  settings.onStartAtLoginChanged([this](bool enabled) { platform_->setLoginItem(enabled); });
  if (*settings.startAtLogin()) platform_->setLoginItem(true);
  menu_ = std::make_unique<StatusMenu>(settings, [this] { openMainWindow(); });
  if (desk_) deskBridge_ = std::make_unique<DeskBridge>(*desk_);
}

Application::~Application() = default;

std::shared_ptr<SettingsStore> Application::settingsFor(const Options& options) const {
  const auto defaults = options.isDataFolderGiven
                            ? std::make_shared<QtUserDefaults>(QString::fromStdString(
                                  (options.dataFolder / "settings.ini").string()))
                            : std::make_shared<QtUserDefaults>();
  auto settings = std::make_shared<SettingsStore>(defaults);
  if (options.language) settings->setLanguage(*options.language);
  return settings;
}

AppRoot::Setup Application::setup(const Options& options) {
  auto signatures = std::make_shared<SignatureStore>(options.dataFolder, debugLog);
  auto settings = settingsFor(options);
  if (desk_)
    return {.queue = queue_,
            .background = background_,
            .engine = desk_->engine(),
            .startTap = [this] { desk_->machine().engine.startTap(); },
            .capturer = desk_->capturer(),
            .enumerator = desk_->enumerator(),
            .hotplug = desk_->hotplug(),
            .link = desk_->link(),
            .signatures = std::move(signatures),
            .settings = std::move(settings)};
  return localSetup(queue_, background_, std::move(signatures), std::move(settings));
}

void Application::openMainWindow() {
  platform_->activate();
  for (QObject* root : qml_.rootObjects()) {
    if (auto* window = qobject_cast<QQuickWindow*>(root)) {
      window->show();
      window->raise();
      window->requestActivate();
      return;
    }
  }
}

int Application::run() {
  qml_.addImportPath("qrc:/"); // or a copy of the program elsewhere lacks its own types
  qml_.load(QUrl("qrc:/Trellivar/qml/Main.qml"));
  if (desk_) qml_.load(QUrl("qrc:/Trellivar/qml/DeskWindow.qml"));
  if (qml_.rootObjects().isEmpty()) return 1;
  platform_->activate();
  root_.start();
  return QGuiApplication::exec();
}

} // namespace trellivar
