#pragma once

#include "core/app_language.h"
#include "viewmodels/app_appearance.h"
#include "viewmodels/published.h"
#include "viewmodels/user_defaults.h"

#include <functional>
#include <memory>

namespace trellivar {

/// The user's settings, kept in the user defaults from the moment they change. Main thread.
class SettingsStore {
public:
  /// Reads what is kept; what is missing or makes no sense gets its default: the language that the
  /// user prefers elsewhere, the appearance of the system, no start at login. The language becomes
  /// that of the whole process.
  explicit SettingsStore(std::shared_ptr<UserDefaults> defaults);
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  const Published<AppLanguage>& language() const noexcept { return language_; }
  const Published<AppAppearance>& appearance() const noexcept { return appearance_; }
  const Published<bool>& startAtLogin() const noexcept { return startAtLogin_; }

  /// Also makes it the language of the whole process.
  void setLanguage(AppLanguage language);
  void setAppearance(AppAppearance appearance);
  void setStartAtLogin(bool startAtLogin);

  /// Receives each value that `setStartAtLogin` is given, equal ones included, after it is stored.
  void onStartAtLoginChanged(std::function<void(bool)> callback);

  /// The user has gone through the first start, in this run or an earlier one.
  bool hasFinishedOnboarding() const;
  void finishOnboarding();

  /// Switches start at login on, the first time ever that it is called for these defaults; whoever
  /// switches it off later is not overridden.
  void autoEnableLoginItemIfFirstTime();

private:
  std::shared_ptr<UserDefaults> defaults_;
  Published<AppLanguage> language_;
  Published<AppAppearance> appearance_;
  Published<bool> startAtLogin_;
  std::function<void(bool)> onStartAtLoginChanged_;
};

} // namespace trellivar
