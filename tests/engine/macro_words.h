#pragma once

#include "core/key.h"
#include "engine/macro_event.h"

#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The words in which tests speak about firmware macros, and how failed checks show them.
namespace trellivar {

inline std::ostream& operator<<(std::ostream& out, const MacroEvent& step) {
  if (const auto* down = std::get_if<MacroEvent::Down>(&step.value))
    return out << "down " << down->k << ' ' << down->c;
  if (const auto* up = std::get_if<MacroEvent::Up>(&step.value))
    return out << "up " << up->k << ' ' << up->c;
  return out << "wait " << std::get<MacroEvent::Wait>(step.value).ms;
}

namespace words {

using Macro = std::vector<MacroEvent>;

inline MacroEvent down(std::string name, int code) {
  return {MacroEvent::Down{std::move(name), code}};
}
inline MacroEvent up(std::string name, int code) { return {MacroEvent::Up{std::move(name), code}}; }
inline MacroEvent wait(int ms = 30) { return {MacroEvent::Wait{ms}}; }

inline Key key(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }

} // namespace words
} // namespace trellivar
