#include "simulator/firmware/json_scanner.h"

namespace trellivar::firmware {

std::size_t JsonScanner::scan(std::string_view bytes) {
  std::size_t count = 0;
  while (count < bytes.size() && !isComplete())
    scan(bytes[count++]);
  return count;
}

void JsonScanner::scan(char byte) {
  if (isInString_) {
    if (isEscaped_)
      isEscaped_ = false;
    else if (byte == '\\')
      isEscaped_ = true;
    else if (byte == '"')
      isInString_ = false;
    return;
  }
  if (byte == '"') isInString_ = true;
  if (byte == '{') {
    hasBegun_ = true;
    ++depth_;
  }
  if (byte == '}' && depth_ > 0) --depth_;
}

} // namespace trellivar::firmware
