#include "bench/decision_scenarios.h"
#include "bench/table_reporter.h"

using namespace trellivar::bench;

int main(int argc, char** argv) {
  for (const DecisionScenario& scenario : decisionScenarios()) {
    const auto events = static_cast<double>(scenario.events.size());
    addRow(scenario.name, Unit::nanoseconds, scenario.limit, events / scenario.limitEvents,
           [&scenario](benchmark::State& state) {
             const auto processor = scenario.makeProcessor();
             for (auto _ : state)
               play(*processor, scenario.events);
           });
  }
  return runAndPrintTable(argc, argv);
}
