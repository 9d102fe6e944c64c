#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trellivar {

/// Names the temporary file that becomes FILE once it is complete: `.FILE.PROCESS-COUNTER.tmp`. The
/// process tells whoever finds the file whether somebody is still writing it.
struct TemporaryName {
  int process = 0; ///< a pid_t
  std::uint64_t counter = 0;

  /// A name that no other call in this process, nor another running process, returns for the file.
  static TemporaryName next();

  /// None unless `text` is exactly what `text(fileName)` returns for some positive process.
  static std::optional<TemporaryName> parse(std::string_view text, std::string_view fileName);

  std::string text(std::string_view fileName) const;

  bool operator==(const TemporaryName&) const = default;
};

} // namespace trellivar
