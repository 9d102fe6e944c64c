#include "core/l10n.h"
#include "tests/cli/cli_fixture.h"

namespace trellivar::cli {
namespace {

class StringsCommand : public CliTest {
protected:
  void expectTexts(const Arguments& arguments, AppLanguage language) const {
    const Json texts = json(arguments);
    std::size_t row = 0;
    for (const auto& [key, text] : texts.items()) {
      ASSERT_LT(row, L10n::allKeys.size());
      EXPECT_EQ(key, L10n::rawValue(L10n::allKeys[row]));
      EXPECT_EQ(text, L10n::text(L10n::allKeys[row], language));
      ++row;
    }
    EXPECT_EQ(row, 91u);
  }
};

TEST_F(StringsCommand, printsEveryTextInEnglishInDeclarationOrder) {
  expectTexts({"strings"}, AppLanguage::en);
  expectTexts({"strings", "--language", "en"}, AppLanguage::en);
}

TEST_F(StringsCommand, printsTheChineseTexts) {
  expectTexts({"strings", "--language", "zh-Hans"}, AppLanguage::zhHans);
  EXPECT_NE(json({"strings", "--language", "zh-Hans"})["errNothingToWrite"],
            json({"strings"})["errNothingToWrite"]);
}

TEST_F(StringsCommand, printsCharactersAsTheyAre) {
  EXPECT_EQ(run({"strings"}).out.find("\\u"), std::string::npos);
  EXPECT_NE(run({"strings"}).out.find("—"), std::string::npos);
}

TEST_F(StringsCommand, refusesOtherLanguages) {
  for (const char* language : {"de", "EN", "zh", ""})
    EXPECT_EQ(run({"strings", "--language", language}),
              badInput("--language: expected en or zh-Hans"));
}

} // namespace
} // namespace trellivar::cli
