#include "core/json/quoted.h"

#include <nlohmann/json.hpp>

namespace trellivar {

std::string quotedJson(std::string_view text) {
  using nlohmann::json;
  return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace trellivar
