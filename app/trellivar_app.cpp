#include "app/trellivar_app.h"

#include "app/bridge/own_texts.h"
#include "app/qt_user_defaults.h"

#include <QQuickWindow>
#include <QSurfaceFormat>
#include <cstdio>
#include <string>

namespace trellivar {

namespace {

void sayThatKeysAreNotRemapped() {
  const std::string title(OwnTexts::noEngineTitle.english);
  const std::string detail(OwnTexts::noEngineDetail.english);
  std::fprintf(stderr, "trellivar: %s. %s\n", title.c_str(), detail.c_str());
}

} // namespace

TrellivarApp::TrellivarApp(const Options& options)
    : platform_(platformServices(options.loginArguments())),
      computer_(computer(options.simulate)),
      root_(computer_->setup(queue_, background_,
                             std::make_shared<SignatureStore>(options.dataFolder, report()),
                             settingsFor(options)),
            std::make_shared<ProfileListViewModel>(ProfileStore(options.dataFolder), report())),
      bridge_(root_, *platform_, troubles_, computer_->hasEngine()),
      delegate_(root_.settings(), *platform_) {
  if (!computer_->hasEngine()) sayThatKeysAreNotRemapped();
}

Report TrellivarApp::report() {
  return [this](std::string_view what) {
    debugLog(what);
    troubles_.report(what);
  };
}

std::shared_ptr<SettingsStore> TrellivarApp::settingsFor(const Options& options) const {
  const auto defaults = options.areSettingsInDataFolder()
                            ? std::make_shared<QtUserDefaults>(QString::fromStdString(
                                  (options.dataFolder / "settings.ini").string()))
                            : std::make_shared<QtUserDefaults>();
  auto settings = std::make_shared<SettingsStore>(defaults);
  if (options.language) settings->setLanguage(*options.language);
  return settings;
}

bool TrellivarApp::launch() {
  delegate_.applicationDidFinishLaunching();
  QSurfaceFormat smooth = QSurfaceFormat::defaultFormat();
  smooth.setSamples(4); // for the curves of what is drawn
  QSurfaceFormat::setDefaultFormat(smooth);
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
  computer_->show(qml_);
  return true;
}

} // namespace trellivar
