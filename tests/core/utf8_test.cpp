#include "core/utf8.h"
#include "tests/support/generators.h"
#include "tests/support/plain_utf8.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using namespace std::string_view_literals;

constexpr auto replacement = "\xEF\xBF\xBD"sv;

TEST(Utf8, acceptsEveryScalarValueAndNoSurrogate) {
  for (std::uint32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
    if (!plain::isScalar(scalar)) continue;
    const std::string text = plain::utf8(scalar);
    ASSERT_TRUE(utf8::isValid(text)) << std::hex << scalar;
    ASSERT_EQ(utf8::validPrefix(text), text.size()) << std::hex << scalar;
  }
}

TEST(Utf8, agreesWithThePlainReadingOnAllShortByteStrings) {
  std::string text;
  for (int first = 0; first < 256; ++first) {
    text.assign(1, static_cast<char>(first));
    ASSERT_EQ(utf8::isValid(text), plain::isUtf8(text)) << first;
    for (int second = 0; second < 256; ++second) {
      text.resize(1);
      text += static_cast<char>(second);
      ASSERT_EQ(utf8::isValid(text), plain::isUtf8(text)) << first << ' ' << second;
    }
  }
}

TEST(Utf8, agreesWithThePlainReadingAtTheEdgesOfEveryByteRange) {
  const std::vector<unsigned char> edges{0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                         0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE,
                                         0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xF8, 0xFE, 0xFF};
  for (const unsigned char a : edges) {
    for (const unsigned char b : edges) {
      for (const unsigned char c : edges) {
        std::string text{static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)};
        ASSERT_EQ(utf8::isValid(text), plain::isUtf8(text)) << testing::PrintToString(text);
        for (const unsigned char d : edges) {
          text.resize(3);
          text += static_cast<char>(d);
          ASSERT_EQ(utf8::isValid(text), plain::isUtf8(text)) << testing::PrintToString(text);
        }
      }
    }
  }
}

TEST(Utf8, refusesOverlongFormsSurrogatesAndWhatLiesBeyondUnicode) {
  for (const std::string_view text :
       {"\xC0\x80"sv, "\xC1\xBF"sv, "\xE0\x9F\xBF"sv, "\xF0\x8F\xBF\xBF"sv, "\xED\xA0\x80"sv,
        "\xED\xBF\xBF"sv, "\xF4\x90\x80\x80"sv, "\xF5\x80\x80\x80"sv, "\x80"sv, "\xBF"sv, "\xC3"sv,
        "\xE2\x8C"sv, "\xF0\x9F\x98"sv, "\xFE"sv, "\xFF"sv}) {
    EXPECT_FALSE(utf8::isValid(text)) << testing::PrintToString(std::string(text));
  }
}

TEST(Utf8, takesNothingForValid) {
  EXPECT_TRUE(utf8::isValid(""));
  EXPECT_EQ(utf8::validPrefix(""), 0U);
  EXPECT_EQ(utf8::replacingInvalid(""), "");
}

TEST(Utf8, endsTheValidPrefixBeforeTheFirstBadByte) {
  EXPECT_EQ(utf8::validPrefix("ab\xFFzz"), 2U);
  EXPECT_EQ(utf8::validPrefix("\xFFzz"), 0U);
  EXPECT_EQ(utf8::validPrefix("⌘\xE2\x8C"), 3U);
  EXPECT_EQ(utf8::validPrefix("a\xED\xA0\x80"), 1U);
  EXPECT_EQ(utf8::validPrefix("⌘⇧"), 6U);
  EXPECT_EQ(utf8::validPrefix("a\0b"sv), 3U);
}

TEST(Utf8, replacesEachMaximalBadPartOnce) {
  const std::string r(replacement);
  EXPECT_EQ(utf8::replacingInvalid("a\xFF"
                                   "b"),
            "a" + r + "b");
  EXPECT_EQ(utf8::replacingInvalid("\xFF\xFF"), r + r);
  EXPECT_EQ(utf8::replacingInvalid("\xE2\x8C"), r); // a character cut off
  EXPECT_EQ(utf8::replacingInvalid("\xE2\x8Cz"), r + "z");
  EXPECT_EQ(utf8::replacingInvalid("\xF0\x9F\x98\xE2\x8C\x98"), r + "⌘");
  EXPECT_EQ(utf8::replacingInvalid("\xED\xA0\x80"), r + r + r); // a surrogate: no byte fits
  EXPECT_EQ(utf8::replacingInvalid("\xC0\x80"), r + r);
  // The example of the Unicode standard, section 3.9, "U+FFFD substitution of maximal subparts".
  EXPECT_EQ(utf8::replacingInvalid("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"),
            "a" + r + r + r + "b" + r + "c" + r + r + "d");
}

RC_GTEST_PROP(Utf8, agreesWithThePlainReadingOnAnyBytes, ()) {
  const std::string text = *rc::gen::oneOf(generate::bytes(), generate::text());
  RC_ASSERT(utf8::isValid(text) == plain::isUtf8(text));
}

RC_GTEST_PROP(Utf8, measuresTheLongestValidPrefix, ()) {
  const std::string head = *generate::text();
  const std::string text = head + *generate::bytes();
  const std::size_t length = utf8::validPrefix(text);
  RC_ASSERT(length >= head.size());
  RC_ASSERT(plain::isUtf8(std::string_view(text).substr(0, length)));
  for (std::size_t longer = length + 1; longer <= std::min(length + 4, text.size()); ++longer)
    RC_ASSERT(!plain::isUtf8(std::string_view(text).substr(0, longer)));
}

RC_GTEST_PROP(Utf8, replacesOnlyWhatIsBad, ()) {
  const std::string before = *generate::text();
  const std::string after = *generate::text();
  RC_ASSERT(utf8::replacingInvalid(before) == before);
  RC_ASSERT(utf8::replacingInvalid(before + "\xFF" + after) ==
            before + std::string(replacement) + after);
  RC_ASSERT(plain::isUtf8(utf8::replacingInvalid(*generate::bytes())));
}

} // namespace
} // namespace trellivar
