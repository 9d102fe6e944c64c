#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

/// Reading whole files, and replacing them so that a crash at any moment leaves the old or the new
/// content, never a mixture. The only place of the product's lower layers that calls the system.
/// Every function may be called from any thread, and by several processes on the same file.
namespace trellivar {

/// A file operation that failed. `what()` reads "PATH: reason" with the system's own reason.
class FileError : public std::runtime_error {
public:
  FileError(const std::filesystem::path& path, std::error_code code);

  /// Where it failed: the file (the one a symbolic link leads to) or one of its folders.
  const std::filesystem::path& path() const noexcept { return path_; }
  std::error_code code() const noexcept { return code_; }

private:
  std::filesystem::path path_;
  std::error_code code_;
};

/// The whole content of a file; none when there is no such file (a dangling symbolic link
/// included). Throws FileError when it exists but cannot be read: no permission, an I/O error, a
/// folder (`is_a_directory`), or anything else that is no regular file (`operation_not_supported`).
/// Never waits for the other end of a pipe.
std::optional<std::string> readFile(const std::filesystem::path& path);

/// Replaces the content of `path` atomically and durably: a temporary file in the same folder,
/// flushed to disk, renamed over the old one, the folder flushed.
///
/// The file gets mode 0600 whatever the umask and the old mode. Missing folders are created, the
/// last of them with mode 0700; folders that exist keep their mode. Where `path` is a symbolic link
/// it stays one and the file that it leads to is replaced (created, if missing). Only regular files
/// are replaced. Temporary files that a killed process left beside the file are removed.
///
/// On failure FileError is thrown, the old content is untouched, and no temporary file remains. One
/// failure comes later than that: if the disk refuses to flush the folder, the new content is in
/// place but may not survive a loss of power.
void replaceFile(const std::filesystem::path& path, std::string_view content);

} // namespace trellivar
