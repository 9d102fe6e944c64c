#include "core/uuid.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace trellivar {
namespace {

using namespace std::string_view_literals;

TEST(UUID, isNilByDefault) { EXPECT_EQ(UUID().text(), "00000000-0000-0000-0000-000000000000"); }

TEST(UUID, isWrittenInUpperCase) {
  const auto uuid = UUID::fromText("01234567-89ab-cdef-fedc-ba9876543210");
  ASSERT_TRUE(uuid);
  EXPECT_EQ(uuid->text(), "01234567-89AB-CDEF-FEDC-BA9876543210");
}

TEST(UUID, isReadInEitherCase) {
  const auto upper = UUID::fromText("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
  const auto lower = UUID::fromText("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
  const auto mixed = UUID::fromText("e621E1f8-C36c-495a-93FC-0c247A3e6e5F");
  ASSERT_TRUE(upper);
  EXPECT_EQ(upper->text(), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
  EXPECT_EQ(lower, upper);
  EXPECT_EQ(mixed, upper);
}

TEST(UUID, isNotReadFromAnythingElse) {
  for (const std::string_view text : {
           ""sv,
           "P"sv,
           "E621E1F8-C36C-495A-93FC-0C247A3E6E5"sv,   // a digit short
           "E621E1F8-C36C-495A-93FC-0C247A3E6E5FF"sv, // a digit more
           "E621E1F8C36C495A93FC0C247A3E6E5F"sv,      // no dashes
           "E621E1F8C36C495A93FC0C247A3E6E5F0000"sv,  // as long as with dashes
           "E621E1F-8C36C-495A-93FC-0C247A3E6E5F"sv,  // a dash too early
           "E621E1F8-C36C-495A-93FC0-C247A3E6E5F"sv,  // a dash too late
           "E621E1F8_C36C_495A_93FC_0C247A3E6E5F"sv,
           "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}"sv,
           "{621E1F8-C36C-495A-93FC-0C247A3E6E5}"sv, // as long as without braces
           " E621E1F8-C36C-495A-93FC-0C247A3E6E5F"sv,
           "E621E1F8-C36C-495A-93FC-0C247A3E6E5F\n"sv,
           " 621E1F8-C36C-495A-93FC-0C247A3E6E5F"sv,
           "+621E1F8-C36C-495A-93FC-0C247A3E6E5F"sv,
           "0x21E1F8-C36C-495A-93FC-0C247A3E6E5F"sv,
           "G621E1F8-C36C-495A-93FC-0C247A3E6E5F"sv,
           "E621E1F8-C36C-495A-93FC-0C247A3E6E5g"sv,
           "E621E1F8-C36C-495A-93FC-0C247A3E6E5\0"sv,
           "E621E1F8-C36C-495A-93FC-0C247A3E6Eé"sv,
           "not-a-uuid-but-36-characters-long-xx"sv,
       }) {
    EXPECT_EQ(UUID::fromText(text), std::nullopt) << '"' << text << '"';
  }
}

RC_GTEST_PROP(UUID, isNotReadWithAnyOneCharacterReplaced, (const UUID& uuid)) {
  std::string text = uuid.text();
  const auto place = *rc::gen::inRange<std::size_t>(0, text.size());
  const char intruder = *rc::gen::suchThat(rc::gen::arbitrary<char>(), [&](char c) {
    const bool isDigit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
    return text[place] == '-' ? c != '-' : !isDigit;
  });
  text[place] = intruder;
  RC_ASSERT(UUID::fromText(text) == std::nullopt);
}

RC_GTEST_PROP(UUID, isTheSameAfterWritingAndReading, (const UUID& uuid)) {
  const std::string text = uuid.text();
  RC_ASSERT(text.size() == 36U);
  RC_ASSERT(UUID::fromText(text) == uuid);
  RC_ASSERT(UUID::fromText(text)->text() == text);
}

RC_GTEST_PROP(UUID, equalsAnotherExactlyWhenTheTextsAreEqual, (const UUID& a, const UUID& b)) {
  RC_ASSERT((a == b) == (a.text() == b.text()));
  RC_ASSERT((a < b) == (a.text() < b.text()));
}

TEST(UUID, isOfVersionFourWhenRandom) {
  for (int i = 0; i < 200; ++i) {
    const std::string text = UUID::random().text();
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE("89AB"sv.find(text[19]), std::string_view::npos) << text;
  }
}

TEST(UUID, isFreshWhenRandom) {
  std::set<UUID> seen;
  for (int i = 0; i < 1000; ++i)
    seen.insert(UUID::random());
  EXPECT_EQ(seen.size(), 1000U);
}

TEST(UUID, isRandomInEveryDigitThatIsNotFixed) {
  std::array<std::set<char>, 36> digits;
  for (int i = 0; i < 400; ++i) {
    const std::string text = UUID::random().text();
    for (std::size_t place = 0; place < text.size(); ++place)
      digits[place].insert(text[place]);
  }
  for (std::size_t place = 0; place < digits.size(); ++place) {
    const bool isDash = place == 8 || place == 13 || place == 18 || place == 23;
    const std::size_t expected = isDash || place == 14 ? 1 : place == 19 ? 4 : 16;
    EXPECT_EQ(digits[place].size(), expected) << "place " << place;
  }
}

} // namespace
} // namespace trellivar
