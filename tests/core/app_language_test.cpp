#include "core/app_language.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar {
namespace {

using namespace std::string_view_literals;

AppLanguage systemDefault(const std::vector<std::string>& preferredLanguages) {
  return AppLanguage::systemDefault(preferredLanguages);
}

TEST(AppLanguage, listsEnglishBeforeChinese) {
  ASSERT_EQ(AppLanguage::allCases.size(), 2U);
  EXPECT_EQ(AppLanguage::allCases[0], AppLanguage::en);
  EXPECT_EQ(AppLanguage::allCases[1], AppLanguage::zhHans);
}

TEST(AppLanguage, isPersistedAsALanguageTag) {
  EXPECT_EQ(AppLanguage(AppLanguage::en).rawValue(), "en");
  EXPECT_EQ(AppLanguage(AppLanguage::zhHans).rawValue(), "zh-Hans");
}

TEST(AppLanguage, isFoundByItsRawValue) {
  EXPECT_EQ(AppLanguage::fromRawValue("en"), AppLanguage(AppLanguage::en));
  EXPECT_EQ(AppLanguage::fromRawValue("zh-Hans"), AppLanguage(AppLanguage::zhHans));
}

TEST(AppLanguage, isNotFoundByAnythingElse) {
  for (const std::string_view text :
       {""sv, "EN"sv, "En"sv, " en"sv, "en "sv, "en\0"sv, "en-US"sv, "e"sv, "zh"sv, "zhHans"sv,
        "zh-hans"sv, "zh-Hans-CN"sv, "zh-Hant"sv, "zh_Hans"sv, "ja"sv}) {
    EXPECT_EQ(AppLanguage::fromRawValue(text), std::nullopt) << '"' << text << '"';
  }
}

TEST(AppLanguage, isChineseForPeopleWhoPreferAnyVariantOfChinese) {
  for (const char* preferred : {"zh", "zh-Hans", "zh-Hans-CN", "zh-Hant", "zh-Hant-TW", "zh_CN"}) {
    EXPECT_EQ(systemDefault({preferred}), AppLanguage::zhHans) << preferred;
  }
  EXPECT_EQ(systemDefault({"zh-Hant", "en"}), AppLanguage::zhHans);
}

TEST(AppLanguage, isEnglishForPeopleWhoPreferAnyOtherLanguage) {
  for (const char* preferred : {"en", "en-GB", "ja", "ja-JP", "de", "z", "za", "", "-zh", "azh"}) {
    EXPECT_EQ(systemDefault({preferred}), AppLanguage::en) << '"' << preferred << '"';
  }
}

TEST(AppLanguage, isDecidedByTheFirstPreferenceAlone) {
  EXPECT_EQ(systemDefault({"ja", "zh-Hans"}), AppLanguage::en);
  EXPECT_EQ(systemDefault({"", "zh-Hans"}), AppLanguage::en);
  EXPECT_EQ(systemDefault({"zh-Hans", "ja", "en"}), AppLanguage::zhHans);
}

TEST(AppLanguage, isEnglishWithoutAnyPreference) { EXPECT_EQ(systemDefault({}), AppLanguage::en); }

} // namespace
} // namespace trellivar
