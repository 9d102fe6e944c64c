#pragma once

#include <filesystem>
#include <string_view>

namespace trellivar {

/// Appends `bytes` with one write to the regular file at `path`, creating it, readable by everyone,
/// if nothing is there. Never waits, and never writes through a symbolic link, to a file that has
/// further hard links, or to anything but a regular file. False if the bytes were not written
/// whole. Any thread.
bool appendToFile(const std::filesystem::path& path, std::string_view bytes) noexcept;

} // namespace trellivar
