#pragma once

#include "viewmodels/user_defaults.h"

#include <QSettings>

namespace trellivar {

/// The preferences as the system keeps them: on a Mac in the user defaults, elsewhere in a file of
/// the user's configuration.
class QtUserDefaults final : public UserDefaults {
public:
  /// Those of the application.
  QtUserDefaults() = default;
  /// Those in a file.
  explicit QtUserDefaults(const QString& file) : settings_(file, QSettings::IniFormat) {}

  std::optional<std::string> string(std::string_view key) const override;
  bool boolean(std::string_view key) const override;
  void setString(std::string_view key, std::string_view value) override;
  void setBoolean(std::string_view key, bool value) override;
  std::vector<std::string> preferredLanguages() const override;

private:
  QSettings settings_;
};

} // namespace trellivar
