#pragma once

#include <sys/ioctl.h>
#include <termios.h>

// Only for reading the sources: no port of the desk takes it.

/// Sets a speed that termios does not list; the argument points to a speed_t.
#define IOSSIOSPEED _IOW('T', 2, speed_t)
