#include "engine/macro_event.h"
#include "tests/engine/macro_words.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <climits>
#include <string>

namespace trellivar {
namespace {

using namespace words;

TEST(MacroEvent, isWrittenCompactlyWithItsMembersInAFixedOrder) {
  EXPECT_EQ(down("A", 65).json(), R"({"t":"down","k":"A","c":65})");
  EXPECT_EQ(up("ArrowLeft", 37).json(), R"({"t":"up","k":"ArrowLeft","c":37})");
  EXPECT_EQ(wait(30).json(), R"({"t":"wait","ms":30})");
}

TEST(MacroEvent, writesNumbersInPlainDecimal) {
  EXPECT_EQ(down("", 0).json(), R"({"t":"down","k":"","c":0})");
  EXPECT_EQ(up("X", -5).json(), R"({"t":"up","k":"X","c":-5})");
  EXPECT_EQ(wait(1'000'000).json(), R"({"t":"wait","ms":1000000})");
  EXPECT_EQ(wait(INT_MIN).json(), R"({"t":"wait","ms":-2147483648})");
  EXPECT_EQ(down("X", INT_MAX).json(), R"({"t":"down","k":"X","c":2147483647})");
}

TEST(MacroEvent, staysReadableWhateverItsName) {
  for (const std::string name : {"\"", "\\", "\n", "a\"b", "键", "\x01"}) {
    const auto json = nlohmann::json::parse(down(name, 1).json());
    EXPECT_EQ(json, (nlohmann::json{{"t", "down"}, {"k", name}, {"c", 1}}));
  }
}

TEST(MacroEvent, isEqualWhenItsCaseAndAllItsValuesAre) {
  EXPECT_EQ(down("A", 65), down("A", 65));
  EXPECT_NE(down("A", 65), down("B", 65));
  EXPECT_NE(down("A", 65), down("A", 66));
  EXPECT_NE(down("A", 65), up("A", 65));
  EXPECT_EQ(up("A", 65), up("A", 65));
  EXPECT_NE(up("A", 65), up("A", 66));
  EXPECT_EQ(wait(30), wait(30));
  EXPECT_NE(wait(30), wait(31));
}

} // namespace
} // namespace trellivar
