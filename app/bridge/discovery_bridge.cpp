#include "app/bridge/discovery_bridge.h"

#include "app/bridge/text.h"
#include "core/l10n.h"

#include <array>
#include <chrono>
#include <utility>

namespace trellivar {

namespace {

using Text = L10n::Key;
using Step = DiscoveryViewModel::Step;

QString stepName(const Step& step) {
  constexpr std::array names{"flipSwitch", "pressKey", "review", "done"};
  static_assert(names.size() == std::variant_size_v<decltype(Step::value)>);
  return names.at(step.value.index());
}

int askedKey(const Step& step) {
  const auto* press = std::get_if<Step::PressKey>(&step.value);
  return press ? press->keyId : 0;
}

} // namespace

DiscoveryBridge::DiscoveryBridge(std::shared_ptr<DiscoveryViewModel> model,
                                 const SettingsStore& settings, QObject* parent)
    : Refreshing(parent),
      model_(std::move(model)),
      keys_({"keyId", "name", "isCaptured", "isAsked"}) {
  watch(model_->step());
  watch(model_->captured());
  watch(model_->isCapturing());
  watch(model_->lastError());
  watch(settings.language());
  refresh();
}

QString DiscoveryBridge::mode() const { return qtText(model_->modeId()); }

int DiscoveryBridge::listeningMilliseconds() const {
  using std::chrono::milliseconds;
  return static_cast<int>(
      std::chrono::duration_cast<milliseconds>(DiscoveryViewModel::capturePeriod).count());
}

void DiscoveryBridge::checkPresence() { model_->checkPresence(); }

void DiscoveryBridge::capture() {
  if (keyId_ != 0) model_->captureKey(keyId_, [] {});
}

void DiscoveryBridge::save() { model_->save(); }

DiscoveryBridge::Texts DiscoveryBridge::texts() const {
  const std::string& mode = model_->modeId();
  const Step& step = *model_->step();
  if (std::holds_alternative<Step::FlipSwitch>(step.value))
    return {qtText(L10n::t(Text::flipTitle, mode)), qtText(L10n::t(Text::flipDetail, mode)),
            qtText(L10n::t(Text::checkConnection))};
  if (const int key = askedKey(step))
    return {qtText(L10n::t(Text::pressKeyTitle, key)), qtText(L10n::t(Text::pressKeyDetail, key)),
            qtText(L10n::t(Text::captureKeyN, key))};
  if (std::holds_alternative<Step::Review>(step.value))
    return {qtText(L10n::t(Text::captured)), {}, qtText(L10n::t(Text::saveMode, mode))};
  return {qtText(L10n::t(Text::modeDiscovered, mode)), {}, qtText(L10n::t(Text::done))};
}

void DiscoveryBridge::refresh() {
  QList<RowModel::Row> keys;
  const Step& step = *model_->step();
  for (const int key : model_->keyIds())
    keys.append({key, qtText(model_->label(key)), model_->captured()->contains(key),
                 askedKey(step) == key});
  keys_.setRows(keys);

  Texts next = texts();
  bool differs = take(sheetTitle_, qtText(L10n::t(Text::discoverTitle, model_->modeId())));
  differs |= take(title_, std::move(next.title));
  differs |= take(detail_, std::move(next.detail));
  differs |= take(action_, std::move(next.action));
  if (differs) Q_EMIT textsChanged();
  const bool isOtherKey = take(keyId_, askedKey(step));
  if (take(step_, stepName(step)) || isOtherKey) Q_EMIT stepChanged();
  if (take(isCapturing_, *model_->isCapturing())) Q_EMIT isCapturingChanged();
  if (take(error_, qtText(model_->lastError()->value_or("")))) Q_EMIT errorChanged();
}

} // namespace trellivar
