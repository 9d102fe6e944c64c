#include "app/qt_user_defaults.h"

#include "app/bridge/text.h"

#include <QLocale>

namespace trellivar {

std::optional<std::string> QtUserDefaults::string(std::string_view key) const {
  const QVariant value = settings_.value(qtText(key));
  if (!value.isValid() || !value.canConvert<QString>()) return std::nullopt;
  return value.toString().toStdString();
}

bool QtUserDefaults::boolean(std::string_view key) const {
  return settings_.value(qtText(key), false).toBool();
}

void QtUserDefaults::setString(std::string_view key, std::string_view value) {
  settings_.setValue(qtText(key), qtText(value));
}

void QtUserDefaults::setBoolean(std::string_view key, bool value) {
  settings_.setValue(qtText(key), value);
}

std::vector<std::string> QtUserDefaults::preferredLanguages() const {
  std::vector<std::string> languages;
  for (const QString& language : QLocale::system().uiLanguages())
    languages.push_back(language.toStdString());
  return languages;
}

} // namespace trellivar
