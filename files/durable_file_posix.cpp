#include "files/durable_file.h"

namespace trellivar {

FileError::FileError(const std::filesystem::path& path, std::error_code code)
    : std::runtime_error(path.string() + ": " + code.message()), path_(path), code_(code) {}

} // namespace trellivar
