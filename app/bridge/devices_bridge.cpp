#include "app/bridge/devices_bridge.h"

#include "app/bridge/text.h"
#include "core/known_devices.h"
#include "viewmodels/status_texts.h"

namespace trellivar {

namespace {

QString linkName(const PadLink& link) {
  if (link.is<PadLink::Usb>()) return "usb";
  return link.is<PadLink::Wireless>() ? "wireless" : "none";
}

QString modeOf(const std::optional<ConnectedDevice>& pad) {
  if (!pad) return {};
  const auto found = KnownDevices::resolve(pad->vendorId, pad->productId, pad->name);
  return found ? qtText(found->modeId) : QString();
}

} // namespace

DevicesBridge::DevicesBridge(AppRoot& root, QObject* parent) : Refreshing(parent), root_(root) {
  watch(root_.devices().padLink());
  watch(root_.devices().selected());
  watch(root_.settings().language());
  refresh();
}

void DevicesBridge::lookAgain() { root_.devices().refresh(); }

void DevicesBridge::refresh() {
  const PadLink& link = *root_.devices().padLink();
  if (take(link_, linkName(link))) Q_EMIT linkChanged();
  if (take(chipText_, qtText(StatusTexts::chip(link)))) Q_EMIT chipTextChanged();
  if (take(explanation_, qtText(StatusTexts::explanation(link)))) Q_EMIT explanationChanged();
  if (take(stageHint_, qtText(StatusTexts::stageHint(link)))) Q_EMIT stageHintChanged();
  if (take(padMode_, modeOf(*root_.devices().selected()))) Q_EMIT padModeChanged();
}

} // namespace trellivar
