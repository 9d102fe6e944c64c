#include "simulator/firmware/json_scanner.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace trellivar::firmware {
namespace {

TEST(JsonScanner, findsTheEndOfTheObjectWhateverItHolds) {
  for (const std::string object :
       {"{}", R"({"o":"get"})", R"({"a":{"b":[{},{}]}})", R"({"a":"}"})", R"({"a":"{"})",
        R"({"a":"\"}"})", R"({"a":"\\"})", R"({"a":"\\\"}"})", "{\"a\":\"\xFF\"}"}) {
    JsonScanner scanner;
    EXPECT_EQ(scanner.scan(object + "}{rest"), object.size()) << object;
    EXPECT_TRUE(scanner.isComplete()) << object;
  }
}

TEST(JsonScanner, goesOnWhereItStopped) {
  const std::string object = R"({"a":"\"}","b":{"c":"\\"}})";
  for (std::size_t cut = 0; cut < object.size(); ++cut) {
    JsonScanner scanner;
    EXPECT_EQ(scanner.scan(object.substr(0, cut)), cut);
    EXPECT_FALSE(scanner.isComplete()) << cut;
    EXPECT_EQ(scanner.scan(object.substr(cut) + "}"), object.size() - cut);
    EXPECT_TRUE(scanner.isComplete()) << cut;
  }
}

TEST(JsonScanner, isNotCompleteBeforeAnObjectHasBegun) {
  JsonScanner scanner;
  EXPECT_EQ(scanner.scan("}} x"), 4U);
  EXPECT_FALSE(scanner.isComplete());
}

} // namespace
} // namespace trellivar::firmware
