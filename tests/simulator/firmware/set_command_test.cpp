#include "core/json/decoding_error.h"
#include "engine/orlo3_protocol.h"
#include "simulator/firmware/set_command.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace trellivar::firmware {
namespace {

const std::vector<MacroEvent> steps{
    {MacroEvent::Down{"Meta", 91}}, {MacroEvent::Wait{30}}, {MacroEvent::Up{"Meta", 91}}};
const std::string command = Orlo3Protocol::writeKeyMacro(2, "M", "click", steps, 1);

TEST(SetCommand, isReadBackAsItWasWritten) {
  EXPECT_EQ(readSetCommand(parseJson(command)), (SetCommand{2, "M", {steps, 1}}));
  EXPECT_EQ(readSetCommand(parseJson(Orlo3Protocol::writeKeyMacro(-7, "R", "click", {}, 3))),
            (SetCommand{-7, "R", {{}, 3}}));
}

/// The command with one member replaced, or without it where there is no replacement.
Json with(const std::string& member, const Json& value) {
  Json json = parseJson(command);
  if (value.is_discarded())
    json.erase(member);
  else
    json[member] = value;
  return json;
}

TEST(SetCommand, isRefusedUnlessEveryMemberIsKnown) {
  const Json missing(Json::value_t::discarded);
  const std::pair<const char*, Json> wrong[] = {
      {"o", missing},
      {"o", "get"},
      {"o", 1},
      {"k", missing},
      {"k", "2"},
      {"k", 2.5},
      {"k", 1e300},
      {"m", missing},
      {"m", "mouse"},
      {"e", "hold"},
      {"e", missing},
      {"s", missing},
      {"s", "X"},
      {"s", "p"},
      {"s", ""},
      {"r", missing},
      {"r", "1"},
      {"v", missing},
      {"v", "x"},
      {"v", {{{"t", "down"}}}},
      {"v", {1}},
      {"v", {{{"t", "press"}, {"k", "A"}, {"c", 1}}}},
      {"v", {{{"t", "wait"}}}},
      {"v", {{{"t", "up"}, {"k", "A"}, {"c", "1"}}}},
      {"v", {{{"k", "A"}, {"c", 1}}}},
  };
  for (const auto& [member, value] : wrong)
    EXPECT_THROW(readSetCommand(with(member, value)), DecodingError)
        << member << " " << (value.is_discarded() ? "missing" : value.dump());
  EXPECT_THROW(readSetCommand(parseJson("[]")), DecodingError);
  EXPECT_THROW(readSetCommand(parseJson("7")), DecodingError);
}

} // namespace
} // namespace trellivar::firmware
