#pragma once

#include "viewmodels/app_appearance.h"

#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace trellivar {

/// What the application asks of the system around its window. Main thread.
class PlatformServices {
public:
  /// Pages of the system's settings.
  enum class Page : std::uint8_t { accessibility, inputMonitoring };

  virtual ~PlatformServices() = default;

  /// Makes it an application with windows and a place in the Dock, and brings it in front of all
  /// others.
  virtual void activate() = 0;
  /// Registers the application to be started at login, or no longer. Throws what the system objects
  /// to; to repeat what is so already is no mistake.
  virtual void setLoginItem(bool enabled) = 0;
  /// Forces an appearance, or follows the system's.
  virtual void setAppearance(AppAppearance appearance) = 0;
  /// What the appearance comes to now.
  virtual bool isDark() const = 0;
  /// Called after the system's appearance, or its wish for less motion, has changed.
  virtual void onAppearanceChanged(std::function<void()> callback) = 0;
  virtual bool isMotionReduced() const = 0;
  /// Has the system ask the user for it.
  virtual void promptForAccessibility() = 0;
  virtual void openSettings(Page page) = 0;

protected:
  PlatformServices() = default;
  PlatformServices(const PlatformServices&) = default;
  PlatformServices& operator=(const PlatformServices&) = default;
};

/// Those of the system that the process runs on. At login the application is started with
/// `loginArguments`; without them it cannot be registered, which is then no mistake.
std::unique_ptr<PlatformServices> platformServices(std::optional<QStringList> loginArguments);

} // namespace trellivar
