#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace trellivar {

/// A document that is not what it should be. It knows where: by the line for text that is not JSON
/// at all, by the path of the member ("[0].mappings[2].output") for JSON of the wrong shape.
class DecodingError : public std::runtime_error {
public:
  static DecodingError atLine(std::size_t line, const std::string& reason);
  /// The root of a document has no path; it counts as line 1.
  static DecodingError atPath(const std::string& path, const std::string& reason);

  /// "3" or "[0].mappings[2].output".
  const std::string& where() const noexcept { return where_; }
  const std::string& reason() const noexcept { return reason_; }
  /// False when `where` is a line.
  bool isAtPath() const noexcept { return isAtPath_; }

private:
  DecodingError(std::string where, std::string reason, bool isAtPath);

  std::string where_;
  std::string reason_;
  bool isAtPath_;
};

} // namespace trellivar
