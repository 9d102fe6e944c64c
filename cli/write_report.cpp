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

OrderedJson jsonReport(const WriteStatus::Done& done) {
  OrderedJson skipped = OrderedJson::object();
  for (const std::string& mode : done.modes) {
    const auto keys = done.skippedByMode.find(mode);
    if (keys != done.skippedByMode.end()) skipped[mode] = keys->second;
  }
  return {{"firmware", done.firmware}, {"modes", done.modes}, {"skippedByMode", skipped}};
}

std::string wordedReport(const WriteStatus::Done& done) {
  const std::string modes = joined(done.modes, [](const std::string& mode) { return mode; });
  std::string text = L10n::t(L10n::Key::writtenFmt, modes, done.firmware) + '\n';
  for (const std::string& mode : done.modes) {
    const auto skipped = done.skippedByMode.find(mode);
    if (skipped == done.skippedByMode.end()) {
      text += L10n::t(L10n::Key::modeOKFmt, mode) + '\n';
      continue;
    }
    const std::string keys = joined(skipped->second, [](int key) { return std::to_string(key); });
    text += L10n::t(L10n::Key::modeSkippedFmt, mode, keys) + '\n';
  }
  return text;
}

} // namespace trellivar::cli
