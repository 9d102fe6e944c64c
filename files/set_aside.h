#pragma once

#include <filesystem>

namespace trellivar {

/// Renames `path`, whatever it is, to a name beside it that is free: "FILE.unreadable", then
/// "FILE.unreadable-2" and so on. Returns the new path. Throws FileError; the file then keeps its
/// name.
std::filesystem::path setAside(const std::filesystem::path& path);

} // namespace trellivar
