#pragma once

#include <stdint.h>

// Only declared: nothing that runs on the desk asks where its program lies.

extern "C" {
/// The path of the program, maybe through symbolic links. -1 when `size` bytes are too few.
int _NSGetExecutablePath(char* buffer, uint32_t* size);
}
