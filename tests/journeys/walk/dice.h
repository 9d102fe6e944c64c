#pragma once

#include <cstddef>
#include <iterator>
#include <random>

namespace trellivar::walk {

class Dice {
public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  /// From 0 on.
  int below(int end) { return std::uniform_int_distribution(0, end - 1)(engine_); }
  bool chance(int percent) { return below(100) < percent; }
  template <class Range> const auto& oneOf(const Range& range) {
    return range[static_cast<std::size_t>(below(static_cast<int>(std::size(range))))];
  }

private:
  std::mt19937 engine_;
};

} // namespace trellivar::walk
