#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

/// Reading whole files, and replacing them so that a crash at any moment leaves the old or the new
/// content, never a mixture. The only place of the product's lower layers that calls the system.
namespace trellivar {

/// A file operation that failed. `what()` reads "PATH: reason" with the system's own reason.
class FileError : public std::runtime_error {
public:
  FileError(const std::filesystem::path& path, std::error_code code);

  const std::filesystem::path& path() const noexcept { return path_; }
  std::error_code code() const noexcept { return code_; }

private:
  std::filesystem::path path_;
  std::error_code code_;
};

/// The whole content of a file; none when there is no such file (a dangling symbolic link
/// included). Throws FileError when it exists but cannot be read (no permission, a directory, an
/// I/O error).
std::optional<std::string> readFile(const std::filesystem::path& path);

/// Replaces the content of `path` atomically and durably: a temporary file in the same folder,
/// flushed to disk, renamed over the old one, the folder flushed. The file gets mode 0600; missing
/// folders are created, the last of them with mode 0700. Where `path` is a symbolic link it stays
/// one and the file that it leads to is replaced (created, if missing). On failure the old content
/// is untouched, no temporary file remains, and FileError is thrown. Temporary files that a killed
/// process left beside the file are removed.
void replaceFile(const std::filesystem::path& path, std::string_view content);

} // namespace trellivar
