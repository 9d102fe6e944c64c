#include "app/desk/desk_computer.h"

#include "app/desk/desk_bridge.h"
#include "app/desk/desk_session.h"

#include <QQmlApplicationEngine>

namespace trellivar {

namespace {

class DeskComputer final : public Computer {
public:
  AppRoot::Setup setup(MainQueue& queue, BackgroundQueue& background,
                       std::shared_ptr<SignaturePersisting> signatures,
                       std::shared_ptr<SettingsStore> settings) override {
    return {.queue = queue,
            .background = background,
            .engine = desk_.engine(),
            .startTap = [this] { desk_.machine().engine.startTap(); },
            .capturer = desk_.capturer(),
            .enumerator = desk_.enumerator(),
            .hotplug = desk_.hotplug(),
            .link = desk_.link(),
            .signatures = std::move(signatures),
            .settings = std::move(settings)};
  }
  void show(QQmlApplicationEngine& qml) override {
    qml.load(QUrl("qrc:/Trellivar/qml/DeskWindow.qml"));
  }

private:
  DeskSession desk_;
  DeskBridge bridge_{desk_};
};

} // namespace

std::unique_ptr<Computer> deskComputer() { return std::make_unique<DeskComputer>(); }

} // namespace trellivar
