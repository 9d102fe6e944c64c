#include "app/platform/autostart_entry.h"
#include "app/platform/desktop_settings.h"
#include "app/platform/platform_services.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QStandardPaths>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {

namespace {

class LinuxServices final : public PlatformServices {
public:
  explicit LinuxServices(std::optional<QStringList> loginArguments)
      : loginArguments_(std::move(loginArguments)) {
    QGuiApplication::setDesktopFileName("trellivar");
    QGuiApplication::setWindowIcon(QIcon::fromTheme("trellivar"));
  }

  void activate() override {} // the window manager decides
  void setLoginItem(bool enabled) override {
    if (!loginArguments_) return;
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/autostart";
    const AutostartEntry entry(folder.toStdString());
    if (!enabled) return entry.remove();
    std::vector<std::string> command{QCoreApplication::applicationFilePath().toStdString()};
    for (const QString& argument : *loginArguments_)
      command.push_back(argument.toStdString());
    entry.install(command);
  }
  void setAppearance(AppAppearance appearance) override {
    appearance_ = appearance;
    if (changed_) changed_();
  }
  bool isDark() const override {
    return appearance_ == AppAppearance::system ? desktop_.isDark()
                                                : appearance_ == AppAppearance::dark;
  }
  void onAppearanceChanged(std::function<void()> callback) override {
    changed_ = std::move(callback);
  }
  bool isMotionReduced() const override { return desktop_.isMotionReduced(); }
  void promptForAccessibility() override {} // nothing to permit here
  void openSettings(Page /*page*/) override {}

private:
  std::optional<QStringList> loginArguments_;
  AppAppearance appearance_ = AppAppearance::system;
  std::function<void()> changed_;
  DesktopSettings desktop_{QDBusConnection::sessionBus(), [this] {
                             if (changed_) changed_();
                           }};
};

} // namespace

std::unique_ptr<PlatformServices> platformServices(std::optional<QStringList> loginArguments) {
  return std::make_unique<LinuxServices>(std::move(loginArguments));
}

} // namespace trellivar
