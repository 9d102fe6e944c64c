#include "cli/write_report.h"

#include "core/l10n.h"

namespace trellivar::cli {

namespace {

template <class List, class Text> std::string joined(const List& items, const Text& textOf) {
  std::string text;
  for (const auto& item : items) {
    if (!text.empty()) text += ", ";
    text += textOf(item);
  }
  return text;
}

} // namespace

OrderedJson jsonReport(const std::string& firmware, const PortableCommands& commands) {
  OrderedJson skipped = OrderedJson::object();
  for (const std::string& mode : commands.modes) {
    const auto keys = commands.skippedByMode.find(mode);
    if (keys != commands.skippedByMode.end()) skipped[mode] = keys->second;
  }
  return {{"firmware", firmware}, {"modes", commands.modes}, {"skippedByMode", skipped}};
}

std::string wordedReport(const std::string& firmware, const PortableCommands& commands) {
  const std::string modes = joined(commands.modes, [](const std::string& mode) { return mode; });
  std::string text = L10n::t(L10n::Key::writtenFmt, modes, firmware) + '\n';
  for (const std::string& mode : commands.modes) {
    const auto skipped = commands.skippedByMode.find(mode);
    if (skipped == commands.skippedByMode.end()) {
      text += L10n::t(L10n::Key::modeOKFmt, mode) + '\n';
      continue;
    }
    const std::string keys = joined(skipped->second, [](int key) { return std::to_string(key); });
    text += L10n::t(L10n::Key::modeSkippedFmt, mode, keys) + '\n';
  }
  return text;
}

} // namespace trellivar::cli
