#include "tests/app/stage.h"

#include "app/bridge/text.h"
#include "core/l10n.h"
#include "tests/app/stage_world.h"
#include "tests/app/still_animations.h"
#include "viewmodels/output_label.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QStyleHints>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace trellivar {

namespace {

desk::Pad::Link linkNamed(const QString& name) {
  if (name == "usb") return desk::Pad::Link::usb;
  if (name == "bluetooth") return desk::Pad::Link::bluetooth;
  if (name == "away") return desk::Pad::Link::away;
  throw std::invalid_argument(name.toStdString());
}

} // namespace

Stage::Stage(QObject* parent) : QObject(parent) {
  StillAnimations::ofTheProcess();
  QGuiApplication::styleHints()->setCursorFlashTime(0);
  QAccessible::setActive(true);
}

Stage::~Stage() = default;

void Stage::begin() {
  end();
  world_ = std::make_unique<World>(warnings_);
  settle();
}

void Stage::end() { world_.reset(); }

void Stage::permit(bool accessibility, bool inputMonitoring) {
  machine().desk.setTrusted(accessibility);
  machine().desk.setInputMonitoring(inputMonitoring ? desk::Access::granted : desk::Access::denied);
  pass(AppRoot::pollInterval.count());
}

void Stage::beginToConnectPad(const QString& by) {
  machine().pad.connect(linkNamed(by));
  settle();
}

void Stage::connectPad(const QString& by) {
  beginToConnectPad(by);
  pass(2 * desk::Machine::hotplugDebounce.count());
}

void Stage::turnTo(const QString& mode) {
  machine().pad.setMode(mode.toStdString());
  pass(2 * desk::Machine::hotplugDebounce.count());
}

void Stage::hold(int padKey) {
  machine().pad.press(padKey);
  pass(0.05);
}

void Stage::letGo(int padKey) {
  machine().pad.release(padKey);
  pass(0.05);
}

void Stage::press(int padKey) {
  hold(padKey);
  letGo(padKey);
  pass(0.6); // a chord may wait for its second key
}

void Stage::strike(const QStringList& keys) {
  for (const QString& key : keys) {
    machine().desk.press(machine().keyboard, KeyName(key.toStdString()));
    pass(0.02);
  }
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
    machine().desk.release(machine().keyboard, KeyName(key->toStdString()));
    pass(0.02);
  }
  pass(0.6);
}

void Stage::silencePadAfter(int commands) {
  machine().port.emplace(machine().firmware, firmware::Faults{.silentAfter = commands});
}

void Stage::finishWriting() {
  world_->background.runNext();
  settle();
}

void Stage::setSystemDark(bool dark) {
  world_->platform.setSystemDark(dark);
  settle();
}

void Stage::setMotionReduced(bool reduced) {
  world_->platform.setMotionReduced(reduced);
  settle();
}

void Stage::takeEngineAway() {
  world_->bridge.emplace(root(), world_->platform, world_->troubles, false);
}

void Stage::reportOfFile(const QString& what) {
  world_->troubles.report(what.toStdString());
  settle();
}

void Stage::pass(double seconds) {
  machine().desk.queue().advance(Seconds(seconds));
  StillAnimations::ofTheProcess().pass(std::llround(seconds * 1000));
  settle();
}

/// What one happening leads to takes turns between the computer's queue, Qt's and the window.
void Stage::settle() {
  constexpr int turns = 4;
  for (int turn = 0; turn < turns; ++turn) {
    machine().desk.queue().run();
    StillAnimations::ofTheProcess().pass(0);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    layOut();
  }
}

void Stage::setLanguage(const QString& language) {
  world_->settings->setLanguage(AppLanguage::fromRawValue(language.toStdString()).value());
  settle();
}

void Stage::setAppearance(const QString& appearance) {
  world_->settings->setAppearance(appearanceFromRawValue(appearance.toStdString()).value());
  settle();
}

QString Stage::text(const QString& key, const QStringList& arguments) const {
  const auto found = std::ranges::find(L10n::allKeys, key.toStdString(), L10n::rawValue);
  if (found == L10n::allKeys.end()) throw std::invalid_argument(key.toStdString());
  std::vector<L10n::Argument> values;
  for (const QString& argument : arguments)
    values.emplace_back(argument.toStdString());
  return qtText(L10n::t(*found, values));
}

QString Stage::stored(const QString& mode, int padKey) const {
  for (const Profile& profile : ProfileStore(world_->folder.path()).load()) {
    if (profile.name != mode.toStdString()) continue;
    for (const KeyMapping& mapping : profile.mappings) {
      if (mapping.fromKeyId == padKey)
        return qtText(outputLabel(mapping.output) + (mapping.label ? ": " + *mapping.label : ""));
    }
  }
  return {};
}

QString Stage::learned(int padKey) const {
  QStringList codes;
  for (const auto& record : SignatureStore(world_->folder.path()).load()) {
    for (const auto& key : record.keySignatures) {
      if (key.keyId != padKey) continue;
      for (const Key& code : key.signature.codes)
        codes += qtText(code.keyCode.text());
    }
  }
  return codes.join(' ');
}

QStringList Stage::written() const {
  QStringList slots;
  for (const auto& [slot, macro] : machine().firmware.macros())
    slots += qtText(slot.first) + QString::number(slot.second);
  return slots;
}

AppBridge& Stage::app() const { return *world_->bridge; }
AppRoot& Stage::root() const { return world_->root; }
desk::Machine& Stage::machine() const { return world_->machine; }
QObject* Stage::appObject() const { return &app(); }
QStringList Stage::calls() const { return world_->platform.calls; }

} // namespace trellivar
