#pragma once

#include <termios.h>

/// 460800 bit/s, in the way of the system. A port that knows no such speed keeps its own.
namespace trellivar::serialspeed {

/// Puts the speed into attributes that are about to be applied, where attributes can hold it.
void put(termios& attributes);

/// Asks the driver for the speed where that is the way. Applying attributes resets it, so this
/// comes after.
void request(int port);

} // namespace trellivar::serialspeed
