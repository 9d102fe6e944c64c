#include "app/bridge/onboarding_bridge.h"

#include "app/bridge/text.h"
#include "core/l10n.h"
#include "viewmodels/status_texts.h"

#include <array>

namespace trellivar {

namespace {

using Text = L10n::Key;

QString stateName(OnboardingStepState state) {
  constexpr std::array names{"done", "active", "pending"};
  return names.at(static_cast<std::size_t>(state));
}

RowModel::Row row(Text title, Text why, OnboardingStepState state, std::string_view action) {
  return {qtText(L10n::t(title)), qtText(L10n::t(why)), qtText(StatusTexts::badge(state)),
          stateName(state), qtText(action)};
}

} // namespace

OnboardingBridge::OnboardingBridge(AppRoot& root, QObject* parent)
    : Refreshing(parent), root_(root), steps_({"title", "why", "badge", "state", "action"}) {
  watch(root_.onboarding().steps());
  watch(root_.settings().language());
  refresh();
}

void OnboardingBridge::refresh() {
  const OnboardingSteps& steps = *root_.onboarding().steps();
  steps_.setRows({
      row(Text::step1Title, Text::step1Why, steps.accessibility, L10n::t(Text::openAccessibility)),
      row(Text::step2Title, Text::step2Why, steps.inputMonitoring,
          L10n::t(Text::openInputMonitoring)),
      row(Text::step3Title, Text::step3Why, steps.device, ""),
  });
  if (take(canContinue_, steps.canContinue)) Q_EMIT canContinueChanged();
}

} // namespace trellivar
