#include "engine/macro_event.h"

#include "core/json/quoted.h"

namespace trellivar {

namespace {

std::string keyStep(const char* type, const std::string& k, int c) {
  return std::string(R"({"t":")") + type + R"(","k":)" + quotedJson(k) + R"(,"c":)" +
         std::to_string(c) + "}";
}

} // namespace

std::string MacroEvent::json() const {
  struct Text {
    std::string operator()(const Down& down) const { return keyStep("down", down.k, down.c); }
    std::string operator()(const Up& up) const { return keyStep("up", up.k, up.c); }
    std::string operator()(const Wait& wait) const {
      return R"({"t":"wait","ms":)" + std::to_string(wait.ms) + "}";
    }
  };
  return std::visit(Text{}, value);
}

} // namespace trellivar
