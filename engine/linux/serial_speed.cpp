#include "engine/serial_speed.h"

namespace trellivar::serialspeed {

void put(termios& attributes) { ::cfsetspeed(&attributes, B460800); }

void request(int) {} // the attributes say it all

} // namespace trellivar::serialspeed
