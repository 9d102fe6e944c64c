#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string_view>

namespace trellivar {

using Json = nlohmann::json;

/// Nesting that no document of ours comes near; deeper input is refused before it is built.
inline constexpr int maxJsonDepth = 256;

/// Reads one JSON document. Stricter than the grammar asks for: an object that names a key twice,
/// nesting deeper than `maxJsonDepth`, and invalid UTF-8 are errors too. Throws DecodingError; for
/// a document that is cut off its line is the last one.
Json parseJson(std::string_view text);

} // namespace trellivar
