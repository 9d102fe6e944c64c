// Measures the application in its window: each run is a process of its own, and each figure the
// median of several.

#include "bench/window/figures.h"
#include "bench/window/roles.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <map>
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

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.at(values.size() / 2);
}

/// The medians of several runs, in the order in which they were told.
std::vector<Figure> medians(const std::string& role, int runs) {
  std::vector<std::string> names;
  std::map<std::string, std::vector<double>> values;
  for (int run = 0; run < runs; ++run) {
    for (const Figure& figure : figuresOf(role)) {
      if (values[figure.name].empty()) names.push_back(figure.name);
      values[figure.name].push_back(figure.value);
    }
  }
  std::vector<Figure> result;
  for (const std::string& name : names)
    result.push_back({name, median(values[name])});
  return result;
}

void print(const std::string& what, double value, const char* unit, double most) {
  std::printf("%-40s %9.2f %-4s %9.2f%s\n", what.c_str(), value, unit, most,
              value > most ? "  over" : "");
}

int measure(Runs runs) {
  figuresOf("first frame"); // warms the files
  const double empty = medians("empty window", runs.starts).at(0).value;
  const double frame = medians("first frame", runs.starts).at(0).value;
  std::printf("%-40s %9s %-4s %9s\n", "", "median", "", "at most");
  print("start to the first frame", frame, "ms", mostFirstFrame);
  std::printf("%-40s %9.2f ms\n", "the same of an empty window", empty);
  std::printf("%-40s %9.2f\n", "as a multiple", frame / empty);
  for (const Figure& figure : medians("mapping screen", runs.stays)) {
    if (figure.name == "resident")
      print("resident, mapping screen open", figure.value, "MiB", mostResident);
    else if (figure.name == "idle")
      print("processor when idle", figure.value, "%", mostIdle);
    else
      print("longest turn: " + figure.name, figure.value, "ms", mostTurn);
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
