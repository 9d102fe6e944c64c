#include "core/json/json_path.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace trellivar {

namespace {

constexpr bool isWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '-';
}

std::string quotedAscii(std::string_view key) {
  using nlohmann::json;
  constexpr bool escapesNonAscii = true;
  return json(key).dump(-1, ' ', escapesNonAscii, json::error_handler_t::replace);
}

} // namespace

void appendKey(std::string& path, std::string_view key) {
  if (key.empty() || !std::ranges::all_of(key, isWordCharacter)) {
    path += '[' + quotedAscii(key) + ']';
    return;
  }
  if (!path.empty()) path += '.';
  path += key;
}

void appendIndex(std::string& path, std::size_t index) {
  path += '[' + std::to_string(index) + ']';
}

} // namespace trellivar
