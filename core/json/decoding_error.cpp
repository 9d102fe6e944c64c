#include "core/json/decoding_error.h"

#include <utility>

namespace trellivar {

DecodingError::DecodingError(std::string where, std::string reason, bool isAtPath)
    : std::runtime_error(where + ": " + reason),
      where_(std::move(where)),
      reason_(std::move(reason)),
      isAtPath_(isAtPath) {}

DecodingError DecodingError::atLine(std::size_t line, const std::string& reason) {
  return {std::to_string(line), reason, false};
}

DecodingError DecodingError::atPath(const std::string& path, const std::string& reason) {
  if (path.empty()) return atLine(1, reason);
  return {path, reason, true};
}

} // namespace trellivar
