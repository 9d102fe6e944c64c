#include "app/trellivar_app.h"

#include "app/bridge/own_texts.h"
#include "app/desk/desk_bridge.h"
#include "app/desk/desk_session.h"
#include "app/local_services.h"
#include "app/qt_user_defaults.h"

#include <QQuickWindow>
#include <cstdio>
#include <string>

namespace trellivar {

TrellivarApp::TrellivarApp(const Options& options)
    : platform_(platformServices(options.loginArguments())),
      desk_(options.simulate ? std::make_unique<DeskSession>() : nullptr),
      root_(setup(options),
            std::make_shared<ProfileListViewModel>(ProfileStore(options.dataFolder))),
      bridge_(root_, *platform_, hasEngine_),
      delegate_(root_.settings(), *platform_) {
  if (desk_) deskBridge_ = std::make_unique<DeskBridge>(*desk_);
}

TrellivarApp::~TrellivarApp() = default;

std::shared_ptr<SettingsStore> TrellivarApp::settingsFor(const Options& options) const {
  const auto defaults = options.isDataFolderGiven
                            ? std::make_shared<QtUserDefaults>(QString::fromStdString(
                                  (options.dataFolder / "settings.ini").string()))
                            : std::make_shared<QtUserDefaults>();
  auto settings = std::make_shared<SettingsStore>(defaults);
  if (options.language) settings->setLanguage(*options.language);
  return settings;
}

AppRoot::Setup TrellivarApp::services(const Options& options) {
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

AppRoot::Setup TrellivarApp::setup(const Options& options) {
  AppRoot::Setup services = this->services(options);
  hasEngine_ = !dynamic_cast<const StubRemapEngine*>(services.engine.get());
  if (!hasEngine_) {
    const std::string title(OwnTexts::noEngineTitle.english);
    const std::string detail(OwnTexts::noEngineDetail.english);
    std::fprintf(stderr, "trellivar: %s. %s\n", title.c_str(), detail.c_str());
  }
  return services;
}

bool TrellivarApp::launch() {
  delegate_.applicationDidFinishLaunching();
  qml_.addImportPath("qrc:/"); // or a copy of the program elsewhere lacks its own types
  root_.start();
  bridge_.refresh(); // so that the window opens with the screen that is called for
  qml_.load(QUrl("qrc:/Trellivar/qml/Main.qml"));
  if (qml_.rootObjects().isEmpty()) return false;
  auto* const window = qobject_cast<QQuickWindow*>(qml_.rootObjects().first());
  if (!window) return false;
  delegate_.setMainWindow(window);
  QObject::connect(window, &QWindow::visibleChanged, window,
                   [this](bool isVisible) { isVisible ? root_.start() : root_.stop(); });
  if (desk_) qml_.load(QUrl("qrc:/Trellivar/qml/DeskWindow.qml"));
  return true;
}

} // namespace trellivar
