#include "app/bridge/note_bridge.h"

#include "app/bridge/own_texts.h"
#include "app/bridge/text.h"
#include "core/l10n.h"

#include <string>

namespace trellivar {

namespace {

using Kind = NoteBridge::Kind;
using Text = L10n::Key;

struct Note {
  std::string title;
  std::string_view detail;
  std::string_view action;
};

Note noteOf(Kind kind, const std::string& mode) {
  switch (kind) {
  case Kind::noEngine:
    return {std::string(OwnTexts::noEngineTitle.in(L10n::current())),
            OwnTexts::noEngineDetail.in(L10n::current()),
            {}};
  case Kind::accessibility:
    return {std::string(L10n::t(Text::step1Title)), L10n::t(Text::step1Why),
            L10n::t(Text::openAccessibility)};
  case Kind::inputMonitoring:
    return {std::string(L10n::t(Text::step2Title)), L10n::t(Text::step2Why),
            L10n::t(Text::openInputMonitoring)};
  case Kind::undiscovered:
    return {L10n::t(Text::undiscoveredTitle, mode), L10n::t(Text::undiscoveredDetail),
            L10n::t(Text::discoverThisMode)};
  case Kind::none:
    break;
  }
  return {};
}

} // namespace

NoteBridge::NoteBridge(AppRoot& root, bool hasEngine, QObject* parent)
    : Refreshing(parent), root_(root), hasEngine_(hasEngine) {
  watch(root_.isOnboarding());
  watch(root_.onboarding().steps());
  watch(root_.mapping().device());
  watch(root_.profiles().activeId());
  watch(root_.profiles().profiles());
  watch(root_.settings().language());
  refresh();
}

NoteBridge::Kind NoteBridge::kind() const {
  if (!hasEngine_) return Kind::noEngine;
  if (*root_.isOnboarding()) return Kind::none; // which asks for the permissions itself
  const OnboardingSteps& steps = *root_.onboarding().steps();
  if (steps.accessibility != OnboardingStepState::done) return Kind::accessibility;
  if (steps.inputMonitoring != OnboardingStepState::done) return Kind::inputMonitoring;
  return root_.isUndiscovered() ? Kind::undiscovered : Kind::none;
}

void NoteBridge::refresh() {
  const Profile* active = root_.profiles().active();
  const Note note = noteOf(kind(), active ? active->name : "");
  bool differs = take(title_, qtText(note.title));
  differs |= take(detail_, qtText(note.detail));
  differs |= take(action_, qtText(note.action));
  if (differs) Q_EMIT changed();
}

} // namespace trellivar
