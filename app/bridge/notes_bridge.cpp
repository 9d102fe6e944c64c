#include "app/bridge/notes_bridge.h"

#include "app/bridge/own_texts.h"
#include "app/bridge/text.h"
#include "core/l10n.h"

namespace trellivar {

namespace {

using Text = L10n::Key;

QString own(const OwnTexts::Text& text) { return qtText(text.in(L10n::current())); }
QString shared(Text text) { return qtText(L10n::t(text)); }

} // namespace

NotesBridge::NotesBridge(AppRoot& root, const FileTroubles& troubles, bool hasEngine,
                         QObject* parent)
    : Refreshing(parent),
      root_(root),
      troubles_(troubles),
      hasEngine_(hasEngine),
      rows_({"isShown", "mayBeBrief", "title", "detail", "action"}) {
  watch(troubles_.all());
  watch(root_.isOnboarding());
  watch(root_.onboarding().steps());
  watch(root_.mapping().device());
  watch(root_.profiles().activeId());
  watch(root_.profiles().profiles());
  watch(root_.settings().language());
  refresh();
}

/// What to see to first; the pad would lose its room to more than one.
std::optional<NotesBridge::Kind> NotesBridge::problem() const {
  if (!troubles_.all()->empty()) return Kind::files;
  if (!hasEngine_) return Kind::noEngine;
  if (*root_.isOnboarding()) return std::nullopt; // which asks for the permissions itself
  const OnboardingSteps& steps = *root_.onboarding().steps();
  if (steps.accessibility != OnboardingStepState::done) return Kind::accessibility;
  if (steps.inputMonitoring != OnboardingStepState::done) return Kind::inputMonitoring;
  return std::nullopt;
}

void NotesBridge::refresh() {
  const auto problem = this->problem();
  const bool isUndiscovered = !*root_.isOnboarding() && root_.isUndiscovered();
  const bool areTwo = problem && isUndiscovered;
  // What happened to a file must be read where it stands.
  const auto brief = problem == Kind::files ? Kind::undiscovered : problem;
  const auto row = [&](Kind kind, const QString& title, const QString& detail,
                       const QString& action) -> RowModel::Row {
    const bool isShown = kind == Kind::undiscovered ? isUndiscovered : kind == problem;
    return {isShown, areTwo && kind == brief, title, detail, action};
  };
  const auto& troubles = *troubles_.all();
  const Profile* active = root_.profiles().active();
  rows_.setRows({
      row(Kind::files, own(OwnTexts::filesTitle), qtText(troubles.empty() ? "" : troubles.front()),
          shared(Text::close)),
      row(Kind::noEngine, own(OwnTexts::noEngineTitle), own(OwnTexts::noEngineDetail), {}),
      row(Kind::accessibility, shared(Text::step1Title), shared(Text::step1Why),
          shared(Text::openAccessibility)),
      row(Kind::inputMonitoring, shared(Text::step2Title), shared(Text::step2Why),
          shared(Text::openInputMonitoring)),
      row(Kind::undiscovered, qtText(L10n::t(Text::undiscoveredTitle, active ? active->name : "")),
          shared(Text::undiscoveredDetail), shared(Text::discoverThisMode)),
  });
  if (take(count_, int(problem.has_value()) + int(isUndiscovered))) Q_EMIT countChanged();
}

} // namespace trellivar
