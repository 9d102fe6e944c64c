#pragma once

#include <cstddef>
#include <string_view>

namespace trellivar::firmware {

/// Finds the end of a JSON object in bytes that arrive piece by piece. It counts braces outside of
/// strings and nothing else; whether the object makes sense is for others to say.
class JsonScanner {
public:
  /// How many of the bytes belong to the object that begins with the first byte ever scanned: all
  /// of them, unless the object ends sooner. Requires: !isComplete().
  std::size_t scan(std::string_view bytes);
  bool isComplete() const noexcept { return hasBegun_ && depth_ == 0; }

private:
  void scan(char byte);

  std::size_t depth_ = 0;
  bool hasBegun_ = false;
  bool isInString_ = false;
  bool isEscaped_ = false;
};

} // namespace trellivar::firmware
