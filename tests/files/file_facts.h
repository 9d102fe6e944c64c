#pragma once

#include "files/durable_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

/// What the tests ask about files, answered without the code under test.
namespace trellivar {

inline void put(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file << content << std::flush;
}

inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot open " + path.string());
  std::ostringstream content;
  if (file.peek() != std::ifstream::traits_type::eof()) content << file.rdbuf();
  return std::move(content).str();
}

inline unsigned modeOf(const std::filesystem::path& path) {
  return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

/// The names in a folder, sorted.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// Distinct letters make distinct contents whose every byte tells to which one it belongs.
inline std::string filled(char letter, std::size_t size) { return std::string(size, letter); }

/// The error that `action` fails with; none when it does not fail.
template <typename Action> std::optional<FileError> fileErrorOf(const Action& action) {
  try {
    action();
  } catch (const FileError& error) {
    return error;
  }
  return std::nullopt;
}

/// The reason that `action` fails with; no error when it does not fail.
template <typename Action> std::error_code failureOf(const Action& action) {
  const auto error = fileErrorOf(action);
  return error ? error->code() : std::error_code{};
}

/// The umask of the program, put back at the end.
class UmaskChange {
public:
  explicit UmaskChange(mode_t mask) : before_(::umask(mask)) {}
  UmaskChange(const UmaskChange&) = delete;
  UmaskChange& operator=(const UmaskChange&) = delete;
  ~UmaskChange() { ::umask(before_); }

private:
  mode_t before_;
};

} // namespace trellivar
