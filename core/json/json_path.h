#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trellivar {

/// Appends an object key to the path of a member: "device" + "name" gives "device.name". A key that
/// is not a plain word is quoted, so that the path is unambiguous and stays on one line.
void appendKey(std::string& path, std::string_view key);
/// "mappings" + 2 gives "mappings[2]".
void appendIndex(std::string& path, std::size_t index);

} // namespace trellivar
