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
      rows_({"title", "detail", "action"}) {
  watch(troubles_.last());
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
  if (*troubles_.last()) return Kind::files;
  if (!hasEngine_) return Kind::noEngine;
  if (*root_.isOnboarding()) return std::nullopt; // which asks for the permissions itself
  const OnboardingSteps& steps = *root_.onboarding().steps();
  if (steps.accessibility != OnboardingStepState::done) return Kind::accessibility;
  if (steps.inputMonitoring != OnboardingStepState::done) return Kind::inputMonitoring;
  return std::nullopt;
}

RowModel::Row NotesBridge::row(Kind kind) const {
  switch (kind) {
  case Kind::files:
    return {own(OwnTexts::filesTitle), qtText(troubles_.last()->value_or("")), shared(Text::close)};
  case Kind::noEngine:
    return {own(OwnTexts::noEngineTitle), own(OwnTexts::noEngineDetail), QString()};
  case Kind::accessibility:
    return {shared(Text::step1Title), shared(Text::step1Why), shared(Text::openAccessibility)};
  case Kind::inputMonitoring:
    return {shared(Text::step2Title), shared(Text::step2Why), shared(Text::openInputMonitoring)};
  case Kind::undiscovered:
    break;
  }
  const Profile* active = root_.profiles().active();
  return {qtText(L10n::t(Text::undiscoveredTitle, active ? active->name : "")),
          shared(Text::undiscoveredDetail), shared(Text::discoverThisMode)};
}

void NotesBridge::refresh() {
  kinds_.clear();
  if (const auto kind = problem()) kinds_.push_back(*kind);
  if (!*root_.isOnboarding() && root_.isUndiscovered()) kinds_.push_back(Kind::undiscovered);
  QList<RowModel::Row> rows;
  for (const Kind kind : kinds_)
    rows.append(row(kind));
  rows_.setRows(rows);
}

} // namespace trellivar
