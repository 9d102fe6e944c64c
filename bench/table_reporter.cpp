#include "bench/table_reporter.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <unordered_map>
#include <vector>

namespace trellivar::bench {

namespace {

constexpr const char* lookUpName = "hot unordered_map look-up";

struct Row {
  std::string name;
  Unit unit;
  double limit;
  double perIteration;
};

std::vector<Row>& rows() {
  static std::vector<Row> all;
  return all;
}

struct UnitText {
  const char* text;
  double nanoseconds;
};

UnitText textOf(Unit unit) {
  switch (unit) {
  case Unit::nanoseconds:
    return {"ns", 1};
  case Unit::microseconds:
    return {"µs", 1e3};
  case Unit::milliseconds:
    return {"ms", 1e6};
  }
  return {"", 1};
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

/// Keeps the CPU nanoseconds of each repetition.
class Collector : public benchmark::BenchmarkReporter {
public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration && run.iterations > 0)
        nanoseconds_[run.run_name.function_name].push_back(
            run.cpu_accumulated_time / static_cast<double>(run.iterations) * 1e9);
    }
  }

  double medianOf(const std::string& name) const {
    const auto found = nanoseconds_.find(name);
    return found == nanoseconds_.end() ? 0 : median(found->second);
  }

private:
  std::map<std::string, std::vector<double>> nanoseconds_;
};

void lookUp(benchmark::State& state) {
  std::unordered_map<std::uint64_t, int> map;
  for (std::uint64_t i = 0; i < 100; ++i)
    map[i * 7919] = static_cast<int>(i);
  std::uint64_t key = std::uint64_t{7919} * 50;
  for (auto _ :
       state) { // NOLINT(clang-analyzer-deadcode.DeadStores): the loop variable of the library
    benchmark::DoNotOptimize(key);
    benchmark::DoNotOptimize(map.find(key)->second);
  }
}

void print(const Row& row, double nanoseconds, double lookUpNanoseconds) {
  const UnitText unit = textOf(row.unit);
  const double each = nanoseconds / row.perIteration;
  std::printf("| %-58s | %8.2f %s | ", row.name.c_str(), each / unit.nanoseconds, unit.text);
  if (row.limit > 0)
    std::printf("%6.0f %s | ", row.limit, unit.text);
  else
    std::printf("          | ");
  std::printf("%9.1f |%s\n", each / lookUpNanoseconds,
              row.limit > 0 && each / unit.nanoseconds > row.limit ? " OVER THE LIMIT" : "");
}

} // namespace

void addRow(const std::string& name, Unit unit, double limit, double perIteration,
            const std::function<void(benchmark::State&)>& work) {
  rows().push_back({name, unit, limit, perIteration});
  benchmark::RegisterBenchmark(name.c_str(), work);
}

int runAndPrintTable(int argc, char** argv) {
  benchmark::RegisterBenchmark(lookUpName, lookUp);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  const double lookUpNanoseconds = collector.medianOf(lookUpName);
  std::printf("| %-58s | median      | at most   | look-ups  |\n", "");
  std::printf("|%s|-------------|-----------|-----------|\n", std::string(60, '-').c_str());
  for (const Row& row : rows())
    print(row, collector.medianOf(row.name), lookUpNanoseconds);
  print({lookUpName, Unit::nanoseconds, 0, 1}, lookUpNanoseconds, lookUpNanoseconds);
  return 0;
}

} // namespace trellivar::bench
