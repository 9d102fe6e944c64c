#include "tests/app/stage.h"

#include "app/bridge/app_bridge.h"
#include "app/bridge/text.h"
#include "core/l10n.h"
#include "core/profile_store.h"
#include "core/signature_store.h"
#include "simulator/machine/machine.h"
#include "tests/app/recording_platform.h"
#include "tests/app/still_animations.h"
#include "tests/app/warning_log.h"
#include "tests/app/window_items.h"
#include "tests/support/held_background.h"
#include "tests/support/hurried_clock.h"
#include "tests/support/temporary_folder.h"
#include "viewmodels/app_root.h"
#include "viewmodels/output_label.h"
#include "viewmodels/user_defaults.h"

#include <QAccessibleInterface>
#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QScreen>
#include <QStyleHints>
#include <QtTest>
#include <cmath>
#include <stdexcept>

namespace trellivar {

namespace {

template <class Service> std::shared_ptr<Service> borrowed(Service& service) {
  return {std::shared_ptr<void>(), &service};
}

desk::Pad::Link linkNamed(const QString& name) {
  if (name == "usb") return desk::Pad::Link::usb;
  if (name == "bluetooth") return desk::Pad::Link::bluetooth;
  if (name == "away") return desk::Pad::Link::away;
  throw std::invalid_argument(name.toStdString());
}

} // namespace

struct Stage::World {
  WarningLog warnings; ///< first, so that it hears how everything else goes
  TemporaryFolder folder{quickFolder()};
  desk::Machine machine;
  HurriedClock clock{std::chrono::milliseconds(1)};
  HeldBackground background;
  RecordingPlatform platform;
  std::shared_ptr<SettingsStore> settings = std::make_shared<SettingsStore>(
      std::make_shared<MemoryUserDefaults>(std::vector<std::string>{"en"}));
  AppRoot root{{.queue = machine.desk.queue(),
                .background = background,
                .engine = borrowed<RemapEngine>(machine.engine),
                .startTap = [this] { machine.engine.startTap(); },
                .capturer = borrowed<KeyCapturing>(machine.capturer),
                .enumerator = borrowed<DeviceEnumerating>(machine.enumerator),
                .hotplug = machine.hotplug,
                .link = std::shared_ptr<Orlo3Linking>(new Orlo3SerialLink(machine.link(clock))),
                .signatures = std::make_shared<SignatureStore>(folder.path()),
                .settings = settings},
               std::make_shared<ProfileListViewModel>(ProfileStore(folder.path()))};
  AppBridge bridge{root, platform};
  QQmlEngine qml;
  std::unique_ptr<QObject> content;
  QQuickWindow* window = nullptr; ///< owned by `content`

  explicit World(QStringList& heard) : warnings(heard) {
    machine.desk.events().setRecording(false);
    settings->setAppearance(AppAppearance::dark);
    settings->onStartAtLoginChanged([this](bool isOn) { platform.setLoginItem(isOn); });
    qml.addImportPath("qrc:/");
  }
};

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

void Stage::setMotionReduced(bool reduced) { world_->platform.isMotionReducedNow = reduced; }

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

/// Items take their places with the next frame, so it is painted now.
void Stage::layOut() {
  if (!window() || !window()->isExposed()) return;
  QEvent frame(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(window(), &frame);
}

void Stage::open() {
  root().start();
  app().refresh();
  QQmlComponent main(&world_->qml, QUrl("qrc:/Trellivar/qml/Main.qml"));
  openWindow(std::unique_ptr<QObject>(main.create()));
}

void Stage::goOn() {
  pass(AppRoot::pollInterval.count());
  app().finishOnboarding();
  settle();
}

QQuickItem* Stage::show(const QString& qml) {
  QQmlComponent component(&world_->qml);
  component.setData("import QtQuick\n"
                    "import QtQuick.Controls.Basic\n"
                    "import QtQuick.Layouts\n"
                    "import Trellivar\n"
                    "ApplicationWindow {\n"
                    "visible: true; width: 880; height: 600; color: Theme.window\n" +
                        qml.toUtf8() + "\n}\n",
                    QUrl("stage.qml"));
  openWindow(std::unique_ptr<QObject>(component.create()));
  const auto items = window()->property("contentItem").value<QQuickItem*>()->childItems();
  QQuickItem* first = items.isEmpty() ? nullptr : items.first();
  if (first) QJSEngine::setObjectOwnership(first, QJSEngine::CppOwnership);
  return first;
}

void Stage::openWindow(std::unique_ptr<QObject> window) {
  world_->content = std::move(window);
  world_->window = qobject_cast<QQuickWindow*>(world_->content.get());
  if (!world_->window) throw std::runtime_error("the window cannot be made");
  // Out of the way, or the window begins with something hovered.
  QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
  world_->window->setPosition(0, 0);
  world_->window->requestActivate();
  if (!QTest::qWaitForWindowActive(world_->window))
    throw std::runtime_error("the window does not become active");
  settle();
}

void Stage::resize(int width, int height) {
  window()->resize(width, height);
  if (!QTest::qWaitFor([&] { return window()->size() == QSize(width, height); }))
    throw std::runtime_error("the window keeps its size");
  settle();
}

QQuickItem* Stage::control(const QString& name) const {
  for (QQuickItem* item : seenItems(*window())) {
    if (!isControl(*item) || accessibleName(*item) != name) continue;
    QJSEngine::setObjectOwnership(item, QJSEngine::CppOwnership);
    return item;
  }
  return nullptr;
}

QQuickItem* Stage::part(const QString& component, int number) const {
  for (QQuickItem* item : seenItems(*window())) {
    if (componentOf(*item) != component || number-- > 0) continue;
    QJSEngine::setObjectOwnership(item, QJSEngine::CppOwnership);
    return item;
  }
  return nullptr;
}

int Stage::count(const QString& component) const {
  const auto items = seenItems(*window());
  return static_cast<int>(std::ranges::count(
      items, component, [](const QQuickItem* item) { return componentOf(*item); }));
}

QStringList Stage::texts() const {
  QStringList texts;
  for (const QQuickItem* item : seenItems(*window())) {
    if (isText(*item)) texts += item->property("text").toString();
  }
  return texts;
}

QStringList Stage::names() const {
  QStringList names;
  for (QQuickItem* item : seenItems(*window())) {
    if (isControl(*item) && componentOf(*item) != "PickerKey") names += accessibleName(*item);
  }
  return names;
}

QString Stage::focused() const {
  QQuickItem* item = window()->activeFocusItem();
  return item ? accessibleName(*item) : QString();
}

int Stage::role(QQuickItem* item) const { return accessibleRole(*item); }

QString Stage::name(QQuickItem* item) const { return accessibleName(*item); }

QString Stage::description(QQuickItem* item) const {
  return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Description);
}

bool Stage::isChecked(QQuickItem* item) const {
  return QAccessible::queryAccessibleInterface(item)->state().checked;
}

QStringList Stage::alerts() const {
  QStringList alerts;
  for (QQuickItem* item : seenItems(*window())) {
    if (accessibleRole(*item) == QAccessible::AlertMessage) alerts += accessibleName(*item);
  }
  return alerts;
}

qreal Stage::opacityOf(QQuickItem* item) const {
  qreal opacity = 1;
  for (; item; item = item->parentItem())
    opacity *= item->opacity();
  return opacity;
}

bool Stage::movesIn(double seconds) {
  const QImage before = window()->grabWindow();
  StillAnimations::ofTheProcess().pass(std::llround(seconds * 1000));
  settle();
  return window()->grabWindow() != before;
}

QPoint Stage::middleOf(const QQuickItem& item) const { return placeOf(item).center().toPoint(); }

void Stage::click(QQuickItem* item) {
  QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(*item));
  settle();
}

void Stage::doubleClick(QQuickItem* item) {
  QTest::mouseDClick(window(), Qt::LeftButton, {}, middleOf(*item));
  settle();
}

void Stage::hover(QQuickItem* item) {
  QTest::mouseMove(window(), middleOf(*item));
  settle();
}

void Stage::pointAway() {
  QTest::mouseMove(window(), QPoint(1, 1));
  settle();
}

void Stage::key(int key, int modifiers) {
  QTest::keyClick(window(), static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
  settle();
}

void Stage::type(const QString& text) {
  for (const QChar character : text)
    QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, character, {});
  settle();
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

AppBridge& Stage::app() const { return world_->bridge; }
AppRoot& Stage::root() const { return world_->root; }
desk::Machine& Stage::machine() const { return world_->machine; }
QQuickWindow* Stage::window() const { return world_->window; }
QObject* Stage::appObject() const { return &world_->bridge; }
QStringList Stage::calls() const { return world_->platform.calls; }

} // namespace trellivar
