#pragma once

#include "engine/log.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace trellivar {

/// What the log of the machine, which other programs write to as well, gets from now on.
class LogSince {
public:
  std::string text() const {
    std::ifstream file{std::string(logPath), std::ios::binary};
    file.seekg(before_);
    return {std::istreambuf_iterator<char>(file), {}};
  }

private:
  static std::streamoff size() {
    std::error_code none; // no log yet
    const auto size = std::filesystem::file_size(logPath, none);
    return none ? 0 : static_cast<std::streamoff>(size);
  }

  std::streamoff before_ = size();
};

} // namespace trellivar
