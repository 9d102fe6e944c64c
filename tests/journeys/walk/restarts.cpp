#include "tests/journeys/walk/actions.h"

namespace trellivar::walk {

namespace {

void restart(Walker& walker) {
  closeSheet(walker);
  walker.user.restart();
  // What the process was waiting for went with it.
  walker.now.begun = walker.user.completed = 0;
  walker.now.isMixedUp = false;
}

void showWindowAgain(Walker& walker) {
  walker.user.root().stop();
  walker.user.root().start();
}

constexpr std::array restartTable{
    Action{1, "restart", restart},
    Action{1, "show window again", showWindowAgain},
};

} // namespace

std::span<const Action> restarts() { return restartTable; }

} // namespace trellivar::walk
