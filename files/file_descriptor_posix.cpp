#include "files/file_descriptor.h"

#include <unistd.h>

namespace trellivar {

FileDescriptor::~FileDescriptor() {
  if (isOpen()) ::close(number_);
}

} // namespace trellivar
