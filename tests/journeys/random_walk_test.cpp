#include "tests/journeys/walk/actions.h"
#include "tests/support/effort.h"

#include <string>
#include <vector>

/// People do anything in any order. After each thing that they do, everything has to fit together.
namespace trellivar::walk {
namespace {

constexpr std::size_t rememberedActions = 40;

const std::vector<Action>& allActions() {
  static const std::vector<Action> all = [] {
    std::vector<Action> joined;
    for (const auto& group : {edits(), activities(), deskEvents(), restarts()})
      joined.insert(joined.end(), group.begin(), group.end());
    return joined;
  }();
  return all;
}

const Action& anyAction(Dice& dice) {
  static const int total = [] {
    int sum = 0;
    for (const Action& each : allActions())
      sum += each.weight;
    return sum;
  }();
  int left = dice.below(total);
  auto chosen = allActions().begin();
  for (; left >= chosen->weight; ++chosen)
    left -= chosen->weight;
  return *chosen;
}

/// Does one thing; what is wrong then. Empty: nothing.
std::string step(Walker& walker) {
  const Action& action = anyAction(walker.dice);
  walker.done.emplace_back(action.name);
  if (walker.done.size() > rememberedActions) walker.done.pop_front();
  action.act(walker);
  walker.user.machine.desk.queue().run();
  walker.say(walker.user.heard());
  walker.user.reports.clear();
  if (walker.user.completed == walker.now.begun) walker.now.isMixedUp = false;
  return walker.problem.empty() ? invariants::broken(walker.user, walker.now) : walker.problem;
}

/// Lets everything come to its end; what is wrong then.
std::string finish(Walker& walker) {
  User& user = walker.user;
  letGoOfEverything(walker);
  closeSheet(walker);
  while (!user.background.isEmpty())
    user.background.runNext();
  user.pass(60);
  if (std::string problem = invariants::broken(user, walker.now); !problem.empty()) return problem;
  if (*user.mapping().isLearning() || *user.mapping().isRecording()) return "it never ends";
  if (user.app().capturer->isRunning()) return "a capture never ends";
  if (!user.app().engine->exempted.empty()) return "a pad stays exempted";
  if (user.completed != walker.now.begun) return "not everybody was told of the end";
  return invariants::nothingIsDown(user);
}

std::string lastActions(const Walker& walker) {
  std::string text;
  for (const std::string& each : walker.done)
    text += each + "\n";
  return text;
}

class RandomWalk : public testing::TestWithParam<unsigned> {};

TEST_P(RandomWalk, everythingFitsTogetherAfterEachStep) {
  constexpr int steps = effort(5'000); // of 20 walks, together 100,000
  Walker walker(GetParam());
  for (int i = 1; i <= steps; ++i) {
    const std::string problem = i == steps ? finish(walker) : step(walker);
    ASSERT_EQ(problem, "") << "seed " << GetParam() << ", step " << i << " after\n"
                           << lastActions(walker);
  }
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomWalk, testing::Range(1U, 21U));

} // namespace
} // namespace trellivar::walk
