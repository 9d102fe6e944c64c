#include "app/platform/autostart_entry.h"

#include "files/durable_file.h"

#include <string_view>

namespace trellivar {

namespace {

/// In quotes, as desktops take the words of a command apart.
std::string asWord(std::string_view argument) {
  std::string word = "\"";
  for (const char c : argument) {
    if (c == '"' || c == '`' || c == '$' || c == '\\') word += '\\';
    if (c == '%') word += '%'; // or it begins a code for files
    word += c;
  }
  return word + '"';
}

/// As the value of a key, whatever it is for.
std::string asValue(std::string_view text) {
  std::string value;
  for (const char c : text) {
    if (c == '\\') value += '\\';
    value += c == '\n' ? std::string("\\n") : std::string(1, c);
  }
  return value;
}

} // namespace

void AutostartEntry::install(std::span<const std::string> command) const {
  std::string words;
  for (const std::string& argument : command)
    words.append(words.empty() ? "" : " ").append(asWord(argument));
  replaceFile(file(), "[Desktop Entry]\nType=Application\nName=Trellivar\nExec=" + asValue(words) +
                          "\nX-GNOME-Autostart-enabled=true\n");
}

} // namespace trellivar
