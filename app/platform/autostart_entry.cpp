#include "app/platform/autostart_entry.h"

#include "files/durable_file.h"

#include <string_view>

namespace trellivar {

namespace {

/// As a quoted argument of an Exec line, where these characters keep their meaning unless escaped.
std::string execArgument(std::string_view program) {
  std::string text = "\"";
  for (const char c : program) {
    if (c == '\\') text += "\\\\"; // once for the string, once for the argument
    if (c == '"' || c == '`' || c == '$' || c == '\\') text += "\\\\";
    text += c == '%' ? "%%" : std::string(1, c);
  }
  return text + '"';
}

} // namespace

void AutostartEntry::set(bool enabled, const std::string& program) const {
  if (enabled)
    replaceFile(file(), "[Desktop Entry]\nType=Application\nName=Trellivar\nExec=" +
                            execArgument(program) + "\nX-GNOME-Autostart-enabled=true\n");
  else
    std::filesystem::remove(file());
}

} // namespace trellivar
