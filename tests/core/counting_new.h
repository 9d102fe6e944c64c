#pragma once

#include <cstddef>

namespace trellivar {

/// How often the program has allocated so far. A program that links counting_new.cpp has every
/// form of operator new replaced by one that counts.
std::size_t allocationCount() noexcept;

} // namespace trellivar
