#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

/// Our benchmarks print one table: the median of several repetitions beside the most that a row may
/// take, and as a multiple of one hot look-up in a `std::unordered_map<std::uint64_t, …>` measured
/// in the same run. Times drift with the machine; the multiples carry over.
namespace trellivar::bench {

enum class Unit { nanoseconds, microseconds, milliseconds };

/// Registers a row. `work` runs the benchmark's loop; one iteration does `perIteration` units of
/// work, and one unit may take `limit` (0: no limit).
void addRow(const std::string& name, Unit unit, double limit, double perIteration,
            const std::function<void(benchmark::State&)>& work);

/// Runs the look-up and every row, prints the table and marks rows over their limit. Options of the
/// benchmark library apply, such as --benchmark_repetitions. Returns the program's exit code.
int runAndPrintTable(int argc, char** argv);

} // namespace trellivar::bench
