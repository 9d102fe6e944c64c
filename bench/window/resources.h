#pragma once

#include <chrono>

namespace trellivar {

/// What this process holds in memory now, in MiB. Negative where the system does not tell.
double residentMebibytes();

/// The processor's time that this process has used so far.
std::chrono::duration<double> processorTime();

} // namespace trellivar
