// Measures the application in its window: each run is a process of its own, and each figure the
// median of several; of turns it is the longest in any.

#include "bench/window/figures.h"
#include "bench/window/roles.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <string_view>

namespace trellivar {

namespace {

/// How often each role is run.
struct Runs {
  int starts;
  int stays;
};

constexpr Runs thorough{15, 3};
constexpr Runs brief{1, 1};            // that it runs, not how fast
constexpr double mostFirstFrame = 600; // milliseconds
constexpr double mostResident = 120;   // MiB
constexpr double mostIdle = 0.5;       // percent of a core
constexpr double mostTurn = 32;        // milliseconds

struct Measured {
  std::string name;
  std::vector<double> values; ///< one for each run
};

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.at(values.size() / 2);
}

/// What several runs told under each place in their order.
std::vector<Measured> measured(const std::string& role, int runs) {
  std::vector<Measured> result;
  for (int run = 0; run < runs; ++run) {
    const std::vector<Figure> figures = figuresOf(role);
    result.resize(figures.size());
    for (std::size_t i = 0; i < figures.size(); ++i) {
      result[i].name = figures[i].name;
      result[i].values.push_back(figures[i].value);
    }
  }
  return result;
}

void print(const std::string& what, double value, const char* unit, double most) {
  std::printf("%-40s %9.2f %-4s %9.2f%s\n", what.c_str(), value, unit, most,
              value > most ? "  over" : "");
}

int measure(Runs runs) {
  figuresOf("first frame"); // warms the files
  const double empty = median(measured("empty window", runs.starts).at(0).values);
  const double frame = median(measured("first frame", runs.starts).at(0).values);
  std::printf("%-40s %9s %-4s %9s\n", "", "", "", "at most");
  print("start to the first frame", frame, "ms", mostFirstFrame);
  std::printf("%-40s %9.2f ms\n", "the same of an empty window", empty);
  std::printf("%-40s %9.2f\n", "as a multiple", frame / empty);
  for (const auto& [name, values] : measured("mapping screen", runs.stays)) {
    if (name == "resident")
      print("resident, mapping screen open", median(values), "MiB", mostResident);
    else if (name == "idle")
      print("processor when idle", median(values), "%", mostIdle);
    else
      print("longest turn: " + name, std::ranges::max(values), "ms", mostTurn);
  }
  return 0;
}

} // namespace

} // namespace trellivar

int main(int argc, char* argv[]) {
  for (const trellivar::Role& role : trellivar::allRoles) {
    if (trellivar::role() == role.name) return role.run(argc, argv);
  }
  const QCoreApplication application(argc, argv);
  const bool isBrief = argc == 2 && std::string_view(argv[1]) == "--brief";
  return trellivar::measure(isBrief ? trellivar::brief : trellivar::thorough);
}
