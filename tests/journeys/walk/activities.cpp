#include "tests/journeys/walk/actions.h"

#include <functional>
#include <variant>

namespace trellivar::walk {

namespace {

using Step = DiscoveryViewModel::Step;

bool isBusy(Walker& walker) {
  return *walker.user.mapping().isLearning() || *walker.user.mapping().isRecording() ||
         (walker.now.sheet && *walker.now.sheet->isCapturing());
}

/// Of something that tells of its end.
std::function<void()> beginning(Walker& walker) {
  walker.now.isMixedUp = walker.now.isMixedUp || isBusy(walker);
  ++walker.now.begun;
  return [&user = walker.user] { ++user.completed; };
}

void cancel(Walker& walker) {
  walker.user.mapping().endActiveCapture();
  closeSheet(walker);
}

/// Mostly people end one thing before they begin another.
void cancelMostly(Walker& walker) {
  if ((isBusy(walker) || walker.now.sheet) && walker.dice.chance(90)) cancel(walker);
}

void record(Walker& walker) {
  cancelMostly(walker);
  walker.user.select(walker.anyKey());
  walker.user.mapping().record(beginning(walker));
}

/// All of it, from the beginning to the end.
void teach(Walker& walker) {
  cancel(walker);
  learn(walker);
  walker.user.pass(0.15);
  press(walker);
  walker.user.pass(0.6);
}

void openSheet(Walker& walker) {
  cancelMostly(walker);
  closeSheet(walker);
  const bool isAtThePad = walker.dice.chance(60);
  walker.now.sheet =
      walker.user.root().discover(std::string(isAtThePad ? walker.pad().mode() : walker.anyMode()));
  walker.now.sheet->checkPresence();
}

void checkAgain(Walker& walker) {
  if (walker.now.sheet) walker.now.sheet->checkPresence();
}

/// The key that is asked for.
void capture(Walker& walker) {
  const auto& sheet = walker.now.sheet;
  if (!sheet || !*sheet->deviceIdentity()) return walker.say("not");
  const auto* asked = std::get_if<Step::PressKey>(&sheet->step()->value);
  if (!asked) return walker.say("not");
  walker.now.identityOfCapture = **sheet->deviceIdentity();
  walker.now.captureOfSheet = walker.user.app().capturer->begun + 1;
  sheet->captureKey(asked->keyId, beginning(walker));
}

/// The pad turns out to be another one, in the middle of it.
void checkAnother(Walker& walker) {
  openSheet(walker);
  capture(walker);
  connect(walker);
  checkAgain(walker);
  capture(walker);
}

void save(Walker& walker) {
  const auto& sheet = walker.now.sheet;
  if (!sheet || !std::holds_alternative<Step::Review>(sheet->step()->value))
    return walker.say("not");
  sheet->save();
  walker.see(invariants::deviceCarriesWhatWasCaptured(walker.user, *sheet));
  closeSheet(walker);
}

/// From the first key to the last, as far as the pad is heard.
void discover(Walker& walker) {
  cancel(walker);
  openSheet(walker);
  for (const int key : walker.now.sheet->keyIds()) {
    capture(walker);
    walker.user.press(key);
    walker.user.pass(0.6);
  }
  save(walker);
}

void write(Walker& walker) { walker.user.root().writeToPad(); }

void writeTwice(Walker& walker) {
  write(walker);
  write(walker);
  while (!walker.user.background.isEmpty())
    walker.user.background.runNext();
}

void runInBackground(Walker& walker) {
  if (!walker.user.background.isEmpty()) walker.user.background.runNext();
}

constexpr std::array activityTable{
    Action{6, "learn", learn},
    Action{6, "record", record},
    Action{4, "cancel", cancel},
    Action{4, "teach", teach},
    Action{3, "open sheet", openSheet},
    Action{1, "check again", checkAgain},
    Action{1, "check another", checkAnother},
    Action{5, "capture", capture},
    Action{2, "discover", discover},
    Action{1, "save", save},
    Action{2, "close sheet", closeSheet},
    Action{2, "write", write},
    Action{1, "write twice", writeTwice},
    Action{3, "run in background", runInBackground},
};

} // namespace

std::span<const Action> activities() { return activityTable; }

void learn(Walker& walker) {
  cancelMostly(walker);
  walker.user.select(walker.anyKey());
  walker.now.isMixedUp = walker.now.isMixedUp || walker.now.sheet;
  walker.user.mapping().learnKey(beginning(walker));
  walker.user.pass(walker.dice.oneOf(std::array{0.0, 0.15}));
}

void closeSheet(Walker& walker) {
  walker.now.sheet.reset();
  walker.now.captureOfSheet = 0;
}

} // namespace trellivar::walk
