#pragma once

#include <chrono>
#include <thread>

namespace trellivar {

/// Whether the condition, asked again and again, holds within ten seconds.
template <typename Condition> bool eventually(const Condition& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::yield();
  }
  return true;
}

} // namespace trellivar
