#include "files/set_aside.h"

#include "files/durable_file.h"

#include <string>

namespace trellivar {

namespace fs = std::filesystem;

std::filesystem::path setAside(const fs::path& path) {
  fs::path aside = path;
  aside += ".unreadable";
  std::error_code error;
  for (int number = 2; fs::symlink_status(aside, error).type() != fs::file_type::not_found;
       ++number) {
    if (error) throw FileError(aside, error);
    aside = path;
    aside += ".unreadable-" + std::to_string(number);
  }
  fs::rename(path, aside, error);
  if (error) throw FileError(path, error);
  return aside;
}

} // namespace trellivar
