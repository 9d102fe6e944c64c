#include "simulator/firmware/set_command.h"

#include "core/json/json_reader.h"
#include "core/mode_profiles.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace trellivar {

template <> MacroEvent decode<MacroEvent>(const JsonReader& reader) {
  const std::string& type = reader.object().member("t").text();
  if (type == "wait") return {MacroEvent::Wait{reader.member("ms").integer()}};
  std::string name = reader.member("k").text();
  const int code = reader.member("c").integer();
  if (type == "down") return {MacroEvent::Down{std::move(name), code}};
  if (type == "up") return {MacroEvent::Up{std::move(name), code}};
  reader.member("t").fail("unknown step");
}

namespace firmware {

namespace {

const std::string& oneOf(std::span<const std::string_view> known, const JsonReader& reader) {
  const std::string& text = reader.text();
  if (std::ranges::find(known, text) == known.end()) reader.fail("unknown to the pad");
  return text;
}

constexpr std::array<std::string_view, 1> operations{"set"};
constexpr std::array<std::string_view, 1> macroKinds{"keyboard"};
constexpr std::array<std::string_view, 1> triggers{"click"};

} // namespace

SetCommand readSetCommand(const Json& command) {
  const JsonReader reader(command);
  oneOf(operations, reader.object().member("o"));
  oneOf(macroKinds, reader.member("m"));
  oneOf(triggers, reader.member("e"));
  return {reader.member("k").integer(),
          oneOf(modeNames, reader.member("s")),
          {reader.member("v").list<MacroEvent>(), reader.member("r").integer()}};
}

} // namespace firmware
} // namespace trellivar
