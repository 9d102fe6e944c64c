#include "viewmodels/user_defaults.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellivar {
namespace {

TEST(MemoryUserDefaults, holdNothingAtFirst) {
  const MemoryUserDefaults defaults;
  EXPECT_EQ(defaults.string("key"), std::nullopt);
  EXPECT_FALSE(defaults.boolean("key"));
  EXPECT_EQ(defaults.preferredLanguages(), std::vector<std::string>{});
  EXPECT_TRUE(defaults.values().empty());
}

TEST(MemoryUserDefaults, holdWhatWasSetLast) {
  MemoryUserDefaults defaults;
  defaults.setString("text", "a");
  defaults.setString("text", "b");
  defaults.setBoolean("flag", false);
  defaults.setBoolean("flag", true);
  EXPECT_EQ(defaults.string("text"), "b");
  EXPECT_TRUE(defaults.boolean("flag"));
  defaults.setBoolean("flag", false);
  EXPECT_FALSE(defaults.boolean("flag"));
  EXPECT_EQ(defaults.string("Text"), std::nullopt) << "keys are told apart exactly";
}

TEST(MemoryUserDefaults, tellAnEmptyTextFromNone) {
  MemoryUserDefaults defaults;
  defaults.setString("", "");
  EXPECT_EQ(defaults.string(""), "");
}

TEST(MemoryUserDefaults, takeAValueOfTheOtherKindForNone) {
  MemoryUserDefaults defaults;
  defaults.setString("text", "true");
  defaults.setBoolean("flag", true);
  EXPECT_FALSE(defaults.boolean("text"));
  EXPECT_EQ(defaults.string("flag"), std::nullopt);
  defaults.setString("flag", "now a text");
  EXPECT_FALSE(defaults.boolean("flag"));
  EXPECT_EQ(defaults.string("flag"), "now a text");
}

TEST(MemoryUserDefaults, showEverythingThatWasSet) {
  MemoryUserDefaults defaults;
  defaults.setString("text", "a");
  defaults.setBoolean("flag", true);
  const std::map<std::string, MemoryUserDefaults::Value, std::less<>> expected{
      {"flag", true}, {"text", std::string("a")}};
  EXPECT_EQ(defaults.values(), expected);
}

TEST(MemoryUserDefaults, knowTheLanguagesThatTheUserPrefers) {
  const std::vector<std::string> languages{"zh-Hant-TW", "en"};
  const std::shared_ptr<UserDefaults> defaults = std::make_shared<MemoryUserDefaults>(languages);
  EXPECT_EQ(defaults->preferredLanguages(), languages);
}

} // namespace
} // namespace trellivar
