#include "tests/cli/simulation_fixture.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <utility>

namespace trellivar::cli {
namespace {

using SimulateTour = SimulationTest;

/// What is told of one step of the tour in words: its line, and the lines below it.
struct Chapter {
  std::string step;
  std::string told;
};

std::vector<Chapter> chaptersOf(const std::string& words) {
  std::vector<Chapter> chapters;
  std::istringstream lines(words);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("      "))
      chapters.back().told += line + "\n";
    else
      chapters.push_back({line.substr(6), ""});
  }
  return chapters;
}

TEST_F(SimulateTour, everyPressHasItsRelease) {
  const Simulation tour = understood(run({"simulate", "--json"}));
  EXPECT_FALSE(tour.arrivals().empty());
  EXPECT_EQ(tour.heldInTheEnd(), std::vector<std::string>{});
  EXPECT_EQ(tour.arrivals().back()["flags"], Json::array());
}

TEST_F(SimulateTour, everythingThatItTriesSucceeds) {
  const Simulation tour = understood(run({"simulate", "--json"}));
  std::set<int> steps;
  for (const Json& report : tour.reports()) {
    EXPECT_TRUE(steps.insert(report["step"].get<int>()).second) << report;
    EXPECT_FALSE(report["result"].contains("error")) << report;
    EXPECT_FALSE(report["result"].contains("needPad")) << report;
  }
}

TEST_F(SimulateTour, pressesEveryKeyInEveryModeOverBothLinksAndEachIsRemapped) {
  std::map<std::string, int> pressed;
  std::string where;
  std::string link;
  bool isLearning = false;
  for (const Chapter& chapter : chaptersOf(run({"simulate"}).out)) {
    const std::string& step = chapter.step;
    if (step == "write the bindings into the pad") break;
    if (step.starts_with("the pad's switch moves to ")) where = step.substr(26);
    if (step == "the pad is plugged in by cable") link = "cable";
    if (step == "the pad connects over Bluetooth") link = "Bluetooth";
    if (step.starts_with("learn key")) isLearning = true;
    if (!step.starts_with("press key")) continue;
    if (std::exchange(isLearning, false)) continue;
    EXPECT_NE(chapter.told.find("  engine  "), std::string::npos) << step << chapter.told;
    ++pressed[where + " " + link + " " + step];
  }
  EXPECT_EQ(pressed.size(), 18U);
  for (const std::string id : {"P", "M", "R"}) {
    for (const std::string over : {"cable", "Bluetooth"}) {
      for (const std::string key : {"1", "2", "3"})
        EXPECT_EQ(pressed.count(id + " " + over + " press key " + key), 1U) << id << over << key;
    }
  }
}

TEST_F(SimulateTour, theWrittenPadPlaysByItself) {
  const auto chapters = chaptersOf(run({"simulate"}).out);
  auto chapter = std::ranges::find(chapters, "write the bindings into the pad", &Chapter::step);
  ASSERT_NE(chapter, chapters.end());
  EXPECT_NE(chapter->told.find("Written P, M, R"), std::string::npos) << chapter->told;
  int presses = 0;
  std::string arrived;
  for (++chapter; chapter != chapters.end(); ++chapter) {
    presses += chapter->step.starts_with("press key");
    arrived += chapter->told;
  }
  EXPECT_EQ(presses, 9);
  EXPECT_NE(arrived.find("  pad  "), std::string::npos);
  EXPECT_NE(arrived.find("h ↓"), std::string::npos);
  EXPECT_NE(arrived.find("link wireless"), std::string::npos);
}

TEST_F(SimulateTour, isTheSameEachTimeAndWritesNothing) {
  const auto before = tree();
  for (const Arguments& command : {Arguments{"simulate"}, {"simulate", "--json"}}) {
    const Answer first = run(command);
    EXPECT_EQ(first.code, 0);
    EXPECT_EQ(run(command), first);
  }
  EXPECT_EQ(tree(), before);
}

TEST_F(SimulateTour, runsOnADataFolder) {
  EXPECT_EQ(on("data", {"simulate", "--json"}), run({"simulate", "--json"}));
  EXPECT_EQ(stored().size(), 3U);
  EXPECT_EQ(mappings().size(), 3U);
}

} // namespace
} // namespace trellivar::cli
