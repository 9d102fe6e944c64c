#include "bench/decision_scenarios.h"

#include <cstdlib>
#include <iostream>

/// play_decisions: lists the scenarios with the number of their events.
/// play_decisions INDEX TIMES: plays one of them. Counting the instructions of two runs of
/// different length and taking the difference leaves what the decisions cost.
int main(int argc, char** argv) {
  const auto& scenarios = trellivar::bench::decisionScenarios();
  if (argc != 3) {
    for (std::size_t i = 0; i < scenarios.size(); ++i)
      std::cout << i << '\t' << scenarios[i].events.size() << '\t' << scenarios[i].name << '\n';
    return 0;
  }
  const auto& scenario = scenarios.at(static_cast<std::size_t>(std::atol(argv[1])));
  const auto processor = scenario.makeProcessor();
  for (long times = std::atol(argv[2]); times > 0; --times)
    trellivar::bench::play(*processor, scenario.events);
  return 0;
}
