#include "core/trimmed.h"

#include <gtest/gtest.h>

#include <string>

namespace trellivar {
namespace {

TEST(Trimmed, takesWhiteSpaceOffBothEndsOnly) {
  EXPECT_EQ(trimmed(" \t\r\n a b \v\f"), "a b");
  EXPECT_EQ(trimmed("a b"), "a b");
  EXPECT_EQ(trimmed(""), "");
  EXPECT_EQ(trimmed(" \n "), "");
}

TEST(Trimmed, knowsTheSpacesOfUnicode) {
  for (const char* space : {"\u0085", "\u00A0", "\u1680", "\u2000", "\u200A", "\u2028", "\u2029",
                            "\u202F", "\u205F", "\u3000"})
    EXPECT_EQ(trimmed(std::string(space) + "a" + space), "a") << space;
}

TEST(Trimmed, leavesCharactersThatOnlyLookLikeSpace) {
  EXPECT_EQ(trimmed("\u200Ba\u200B"), "\u200Ba\u200B"); // zero width space is no white space
}

} // namespace
} // namespace trellivar
