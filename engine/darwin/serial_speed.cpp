#include "engine/serial_speed.h"

#include <IOKit/serial/ioss.h>
#include <sys/ioctl.h>

namespace trellivar::serialspeed {

void put(termios&) {} // speeds above 230400 are refused there

void request(int port) {
  speed_t speed = 460800;
  ::ioctl(port, IOSSIOSPEED, &speed);
}

} // namespace trellivar::serialspeed
