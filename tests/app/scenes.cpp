#include "tests/app/scenes.h"

#include "app/bridge/app_bridge.h"
#include "simulator/machine/machine.h"
#include "tests/app/stage.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace trellivar {

namespace {

/// Works what has this name.
void work(Stage& stage, const QString& control) {
  QQuickItem* item = stage.control(control);
  if (!item) throw std::logic_error("nothing is called " + control.toStdString());
  stage.click(item);
  stage.pointAway();
}

void begin(Stage& stage, bool accessibility, bool inputMonitoring) {
  stage.permit(accessibility, inputMonitoring);
  stage.open();
}

void onboardingStart(Stage& stage) { begin(stage, false, false); }
void onboardingHalfway(Stage& stage) { begin(stage, true, false); }
void onboardingPermitted(Stage& stage) { begin(stage, true, true); }
void onboardingNoEngine(Stage& stage) {
  stage.takeEngineAway();
  onboardingPermitted(stage);
}
void noPad(Stage& stage) {
  stage.open();
  stage.goOn();
}

void bind(Stage& stage, int key, std::vector<Modifier> modifiers, std::string_view name,
          Key::Kind kind = Key::Kind::keyCode) {
  stage.root().mapping().select(key);
  stage.root().mapping().assign({Output::Chord{std::move(modifiers), {KeyName(name), kind}}});
}

/// A later start: the engine takes the pad because something is bound.
void onboardingPad(Stage& stage) {
  begin(stage, true, true);
  bind(stage, 1, {Modifier::command}, "c");
  stage.connectPad("usb");
  stage.pass(AppRoot::pollInterval.count());
}

/// Two keys of mode P are bound, one under a name of its own; no key is selected.
void bound(Stage& stage) {
  noPad(stage);
  bind(stage, 1, {Modifier::command}, "c");
  bind(stage, 2, {}, "volume_increment", Key::Kind::consumerKeyCode);
  stage.root().mapping().rename(1, "Copy");
  stage.root().mapping().select(std::nullopt);
  stage.settle();
}

void usb(Stage& stage) {
  bound(stage);
  stage.connectPad("usb");
}
void wireless(Stage& stage) {
  bound(stage);
  stage.connectPad("bluetooth");
}

void select(Stage& stage, int key) {
  stage.root().mapping().select(key);
  stage.settle();
}
void selected(Stage& stage) {
  usb(stage);
  select(stage, 1);
}
void selectedFromLibrary(Stage& stage) {
  usb(stage);
  select(stage, 2);
}
void selectedEmpty(Stage& stage) {
  usb(stage);
  select(stage, 3);
}

void pressed(Stage& stage) {
  usb(stage);
  stage.hold(2);
}
/// As long as shortcuts get, and names that are meant to be read at a glance.
void longTexts(Stage& stage) {
  noPad(stage);
  bind(stage, 1, {Modifier::control, Modifier::option, Modifier::shift, Modifier::command},
       "page_down");
  stage.root().mapping().select(2);
  stage.root().mapping().assign({Output::Sequence{{{KeyName("t"), Key::Kind::keyCode},
                                                   {KeyName("e"), Key::Kind::keyCode},
                                                   {KeyName("x"), Key::Kind::keyCode},
                                                   {KeyName("t"), Key::Kind::keyCode}}}});
  bind(stage, 3, {Modifier::command, Modifier::shift}, "keypad_enter");
  stage.root().mapping().rename(3, "Copy window to clipboard");
  stage.connectPad("usb");
  select(stage, 1);
}
void lostAccessibility(Stage& stage) {
  usb(stage);
  stage.permit(false, true);
}
void lostInputMonitoring(Stage& stage) {
  usb(stage);
  stage.permit(true, false);
}
void noEngine(Stage& stage) {
  stage.takeEngineAway();
  selected(stage);
}

void reportUnreadableFile(Stage& stage) {
  stage.reportOfFile(
      "the profiles cannot be read: /Users/lin/Library/Application Support/Trellivar/profiles.json:"
      "12:5: expected ',' or '}'; the file counts as empty and is kept as "
      "/Users/lin/Library/Application Support/Trellivar/profiles.json.unreadable");
}
void unreadableFile(Stage& stage) {
  selected(stage);
  reportUnreadableFile(stage);
}

void renaming(Stage& stage) {
  usb(stage);
  stage.doubleClick(stage.part("ActionPill", 0));
  stage.pointAway();
}

constexpr double aWhile = 2;

void recording(Stage& stage) {
  selectedEmpty(stage);
  work(stage, stage.text("recordCustom"));
  stage.pass(aWhile);
}
void error(Stage& stage) {
  selectedEmpty(stage);
  work(stage, stage.text("recordCustom"));
  stage.pass(MappingViewModel::capturePeriods * MappingViewModel::recordPeriod.count());
}

/// Mode M, of which nobody knows what the pad sends.
void undiscovered(Stage& stage) {
  noPad(stage);
  stage.turnTo("M");
  stage.connectPad("bluetooth");
  work(stage, "M");
}
void twoNotes(Stage& stage) {
  stage.takeEngineAway();
  undiscovered(stage);
  reportUnreadableFile(stage);
}
void unlearned(Stage& stage) {
  undiscovered(stage);
  select(stage, 2);
}
void learning(Stage& stage) {
  unlearned(stage);
  work(stage, stage.text("captureKeyN", {"2"}));
  stage.pass(aWhile);
}

void devicePopover(Stage& stage) {
  usb(stage);
  work(stage, stage.text("chipUSBReady"));
}

void picker(Stage& stage) {
  selectedEmpty(stage);
  work(stage, stage.text("chooseOnKeyboard"));
}
void pickerComposed(Stage& stage) {
  picker(stage);
  for (const char* key : {"left command", "left shift", "k"})
    work(stage, key);
}

void discovery(Stage& stage) {
  undiscovered(stage);
  work(stage, stage.text("discoverThisMode"));
}
/// Without another keyboard, which might be the pad under a name that nobody knows.
void discoveryNotSeen(Stage& stage) {
  discovery(stage);
  stage.connectPad("away");
  stage.machine().desk.detach(stage.machine().keyboard);
  work(stage, stage.text("checkConnection"));
}
void discoveryListening(Stage& stage) {
  discovery(stage);
  work(stage, stage.text("checkConnection"));
}
void discoverySecondKey(Stage& stage) {
  discoveryListening(stage);
  stage.press(1);
}
void discoveryMissed(Stage& stage) {
  discoverySecondKey(stage);
  stage.pass(DiscoveryViewModel::capturePeriod.count());
}
void discoveryReview(Stage& stage) {
  discoverySecondKey(stage);
  stage.press(2);
  stage.press(3);
}
void discoveryDone(Stage& stage) {
  discoveryReview(stage);
  work(stage, stage.text("saveMode", {"M"}));
}

void settings(Stage& stage) {
  usb(stage);
  work(stage, stage.text("settingsLabel"));
}

void write(Stage& stage) { work(stage, stage.text("writeToPad")); }
void writing(Stage& stage) {
  usb(stage);
  write(stage);
}
void written(Stage& stage) {
  usb(stage);
  bind(stage, 2, {Modifier::command}, "v"); // the firmware has no keys for the volume
  stage.root().mapping().select(std::nullopt);
  write(stage);
  stage.finishWriting();
}
void partlySkipped(Stage& stage) {
  usb(stage);
  bind(stage, 2, {}, "f1"); // the firmware has no such key
  bind(stage, 3, {}, "f2");
  stage.root().mapping().select(std::nullopt);
  write(stage);
  stage.finishWriting();
}
void needPad(Stage& stage) {
  wireless(stage);
  write(stage);
  stage.finishWriting();
}
void writeError(Stage& stage) {
  stage.silencePadAfter(2);
  written(stage);
}
void nothingToWrite(Stage& stage) {
  noPad(stage);
  stage.connectPad("usb");
  write(stage);
  stage.finishWriting();
}

constexpr std::array all{
    Scene{"onboarding-start", onboardingStart},
    Scene{"onboarding-halfway", onboardingHalfway},
    Scene{"onboarding-permitted", onboardingPermitted},
    Scene{"onboarding-pad", onboardingPad},
    Scene{"onboarding-no-engine", onboardingNoEngine},
    Scene{"no-pad", noPad},
    Scene{"wireless", wireless},
    Scene{"usb", usb},
    Scene{"selected", selected},
    Scene{"selected-from-library", selectedFromLibrary},
    Scene{"selected-empty", selectedEmpty},
    Scene{"pressed", pressed},
    Scene{"long-texts", longTexts},
    Scene{"lost-accessibility", lostAccessibility},
    Scene{"lost-input-monitoring", lostInputMonitoring},
    Scene{"no-engine", noEngine},
    Scene{"unreadable-file", unreadableFile},
    Scene{"renaming", renaming},
    Scene{"recording", recording},
    Scene{"error", error},
    Scene{"undiscovered", undiscovered},
    Scene{"two-notes", twoNotes},
    Scene{"unlearned", unlearned},
    Scene{"learning", learning},
    Scene{"device", devicePopover},
    Scene{"picker", picker},
    Scene{"picker-composed", pickerComposed},
    Scene{"discovery-switch", discovery},
    Scene{"discovery-not-seen", discoveryNotSeen},
    Scene{"discovery-listening", discoveryListening},
    Scene{"discovery-second-key", discoverySecondKey},
    Scene{"discovery-missed", discoveryMissed},
    Scene{"discovery-review", discoveryReview},
    Scene{"discovery-done", discoveryDone},
    Scene{"settings", settings},
    Scene{"writing", writing},
    Scene{"written", written},
    Scene{"partly-skipped", partlySkipped},
    Scene{"need-pad", needPad},
    Scene{"write-error", writeError},
    Scene{"nothing-to-write", nothingToWrite},
};

} // namespace

std::span<const Scene> scenes() { return all; }

const Scene& scene(std::string_view name) {
  const auto found = std::ranges::find(all, name, &Scene::name);
  if (found == all.end()) throw std::invalid_argument(std::string(name));
  return *found;
}

} // namespace trellivar
