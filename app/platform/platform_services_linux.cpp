#include "app/platform/autostart_entry.h"
#include "app/platform/platform_services.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
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
      : loginArguments_(std::move(loginArguments)), systemIsDark_(looksDark()) {
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
    return appearance_ == AppAppearance::system ? systemIsDark_
                                                : appearance_ == AppAppearance::dark;
  }
  void onAppearanceChanged(std::function<void()> callback) override {
    changed_ = std::move(callback);
  }
  bool isMotionReduced() const override { return false; }
  void promptForAccessibility() override {} // nothing to permit here
  void openSettings(Page /*page*/) override {}

private:
  /// As the palette that the desktop gave to the application.
  static bool looksDark() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
  }

  std::optional<QStringList> loginArguments_;
  AppAppearance appearance_ = AppAppearance::system;
  bool systemIsDark_;
  std::function<void()> changed_;
};

} // namespace

std::unique_ptr<PlatformServices> platformServices(std::optional<QStringList> loginArguments) {
  return std::make_unique<LinuxServices>(std::move(loginArguments));
}

} // namespace trellivar
