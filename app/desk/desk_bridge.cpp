#include "app/desk/desk_bridge.h"

#include "app/bridge/text.h"
#include "app/desk/desk_session.h"
#include "engine/darwin/event_posting.h"
#include "simulator/desk/key_codes.h"

#include <QJSEngine>

namespace trellivar {

namespace {

DeskBridge* existing = nullptr;

using Link = desk::Pad::Link;

QString linkName(Link link) {
  if (link == Link::usb) return "usb";
  return link == Link::bluetooth ? "bluetooth" : "away";
}

} // namespace

DeskBridge::DeskBridge(DeskSession& session, QObject* parent)
    : QObject(parent),
      session_(session),
      keys_({"keyId", "isDown"}),
      received_({"text", "isFromEngine"}) {
  existing = this;
  showKeys();
  session_.machine().desk.events().setReceiver(
      [this](const desk::Received& received) { hear(received); });
}

DeskBridge* DeskBridge::create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/) {
  QJSEngine::setObjectOwnership(existing, QJSEngine::CppOwnership);
  return existing;
}

QString DeskBridge::mode() const { return qtText(session_.machine().pad.mode()); }
QString DeskBridge::link() const { return linkName(session_.machine().pad.link()); }
bool DeskBridge::isAccessibilityGranted() const { return session_.machine().desk.isTrusted(); }
bool DeskBridge::isInputMonitoringGranted() const {
  return session_.machine().desk.inputMonitoring() == desk::Access::granted;
}

void DeskBridge::press(int keyId) {
  if (!pressed_.insert(keyId).second) return;
  session_.act([keyId](desk::Machine& machine) { machine.pad.press(keyId); });
  showKeys();
}

void DeskBridge::release(int keyId) {
  if (pressed_.erase(keyId) == 0) return;
  session_.act([keyId](desk::Machine& machine) { machine.pad.release(keyId); });
  showKeys();
}

void DeskBridge::releaseAll() {
  while (!pressed_.empty())
    release(*pressed_.begin());
}

void DeskBridge::showKeys() {
  QList<RowModel::Row> rows;
  for (const int keyId : desk::Pad::keyIds)
    rows.append({keyId, pressed_.contains(keyId)});
  keys_.setRows(rows);
}

void DeskBridge::setMode(const QString& mode) {
  session_.act([&mode](desk::Machine& machine) { machine.pad.setMode(mode.toStdString()); });
  Q_EMIT padChanged();
}

void DeskBridge::setLink(const QString& link) {
  const Link to = link == "usb" ? Link::usb : link == "bluetooth" ? Link::bluetooth : Link::away;
  session_.act([to](desk::Machine& machine) { machine.pad.connect(to); });
  Q_EMIT padChanged();
}

void DeskBridge::setAccessibilityGranted(bool granted) {
  session_.act([granted](desk::Machine& machine) { machine.desk.setTrusted(granted); });
  Q_EMIT permissionsChanged();
}

void DeskBridge::setInputMonitoringGranted(bool granted) {
  const auto access = granted ? desk::Access::granted : desk::Access::denied;
  session_.act([access](desk::Machine& machine) { machine.desk.setInputMonitoring(access); });
  Q_EMIT permissionsChanged();
}

void DeskBridge::keyDown(const QString& name) {
  session_.act([&name](desk::Machine& machine) {
    machine.desk.press(machine.keyboard, KeyName(name.toStdString()));
  });
}

void DeskBridge::keyUp(const QString& name) {
  session_.act([&name](desk::Machine& machine) {
    machine.desk.release(machine.keyboard, KeyName(name.toStdString()));
  });
}

void DeskBridge::clear() { received_.setRows({}); }

void DeskBridge::hear(const desk::Received& received) {
  const auto named = desk::named(received.event);
  if (!named) return;
  const bool isFromEngine =
      received.event.field(desk::InputEvent::sourceUserData) == darwin::marker;
  auto rows = received_.rows();
  rows.append({qtText(named->name.text()) + (isDown(named->kind) ? " ↓" : " ↑"), isFromEngine});
  constexpr qsizetype most = 200;
  if (rows.size() > most) rows.remove(0, rows.size() - most);
  received_.setRows(rows);
}

} // namespace trellivar
