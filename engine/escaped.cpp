#include "engine/escaped.h"

#include <nlohmann/json.hpp>

namespace trellivar {

std::string escaped(std::string_view text) {
  const std::string quoted =
      nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return quoted.substr(1, quoted.size() - 2);
}

} // namespace trellivar
