#include "viewmodels/app_appearance.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

TEST(AppAppearance, hasThreeCasesInTheirOrder) {
  EXPECT_EQ((std::vector(allAppearances.begin(), allAppearances.end())),
            (std::vector{AppAppearance::dark, AppAppearance::light, AppAppearance::system}));
}

TEST(AppAppearance, isPersistedAsItsName) {
  const std::vector<std::pair<AppAppearance, std::string>> texts{{AppAppearance::dark, "dark"},
                                                                 {AppAppearance::light, "light"},
                                                                 {AppAppearance::system, "system"}};
  for (const auto& [appearance, text] : texts) {
    EXPECT_EQ(rawValue(appearance), text);
    EXPECT_EQ(appearanceFromRawValue(text), appearance);
  }
  for (const char* text : {"", "Dark", "dark ", "auto", "0"})
    EXPECT_EQ(appearanceFromRawValue(text), std::nullopt) << text;
}

} // namespace
} // namespace trellivar
