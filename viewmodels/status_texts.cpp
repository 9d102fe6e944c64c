#include "viewmodels/status_texts.h"

#include "core/l10n.h"

#include <string_view>

namespace trellivar {

namespace {

using Text = L10n::Key;

std::string text(Text key) { return std::string(L10n::t(key)); }

void append(std::string& list, std::string_view item) {
  (list += list.empty() ? "" : ", ") += item;
}

struct WriteText {
  std::string operator()(WriteStatus::Idle) const { return {}; }
  std::string operator()(WriteStatus::Writing) const { return text(Text::writing); }
  std::string operator()(WriteStatus::NeedPad) const { return text(Text::needPad); }
  std::string operator()(const WriteStatus::Error& error) const { return error.message; }
  std::string operator()(const WriteStatus::Done& done) const {
    std::string modes;
    for (const std::string& mode : done.modes)
      append(modes, mode);
    return L10n::t(Text::writtenFmt, modes, done.firmware);
  }
};

} // namespace

std::string StatusTexts::chip(const PadLink& link) {
  if (const auto* wireless = std::get_if<PadLink::Wireless>(&link.value))
    return L10n::t(Text::chipWireless, wireless->name);
  return text(link.is<PadLink::Usb>() ? Text::chipUSBReady : Text::chipNone);
}

std::string StatusTexts::explanation(const PadLink& link) {
  if (link.is<PadLink::Usb>()) return text(Text::popUSB);
  return text(link.is<PadLink::Wireless>() ? Text::popWireless : Text::popNone);
}

std::string StatusTexts::stageHint(const PadLink& link) {
  return text(link.is<PadLink::Disconnected>() ? Text::stageHintOffline : Text::stageHintConnected);
}

std::string StatusTexts::write(const WriteStatus& status) {
  return std::visit(WriteText{}, status.value);
}

std::vector<std::string> StatusTexts::modeLines(const WriteStatus::Done& done) {
  std::vector<std::string> lines;
  for (const std::string& mode : done.modes) {
    const auto skipped = done.skippedByMode.find(mode);
    if (skipped == done.skippedByMode.end()) {
      lines.push_back(L10n::t(Text::modeOKFmt, mode));
      continue;
    }
    std::string keys;
    for (const int key : skipped->second)
      append(keys, std::to_string(key));
    lines.push_back(L10n::t(Text::modeSkippedFmt, mode, keys));
  }
  return lines;
}

std::string StatusTexts::badge(OnboardingStepState state) {
  switch (state) {
  case OnboardingStepState::done:
    return text(Text::badgeDone);
  case OnboardingStepState::active:
    return text(Text::badgeWaiting);
  case OnboardingStepState::pending:
    break;
  }
  return text(Text::badgeAutomatic);
}

} // namespace trellivar
