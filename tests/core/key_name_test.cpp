#include "core/key_name.h"
#include "core/key_table.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <latch>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <unordered_set>
#include <vector>

namespace trellivar {
namespace {

using namespace std::string_literals;

static_assert(std::is_trivially_copyable_v<KeyName>);
static_assert(sizeof(KeyName) == sizeof(void*));

const KeyName madeBeforeMain("made_before_main");

TEST(KeyName, isEmptyByDefault) {
  EXPECT_EQ(KeyName().text(), "");
  EXPECT_EQ(KeyName(), KeyName(""));
  EXPECT_NE(KeyName(), KeyName("a"));
}

TEST(KeyName, keepsItsTextWhateverItIs) {
  for (const std::string& text : {"a"s, "left_command"s, "F13"s, " "s, "é⌘"s, "a\0b"s, "\0"s,
                                  "\xFF\xFE"s, std::string(100'000, 'x')}) {
    EXPECT_EQ(KeyName(text).text(), text);
  }
}

TEST(KeyName, differsForTextsThatOnlyLookAlike) {
  EXPECT_NE(KeyName("a"), KeyName("A"));
  EXPECT_NE(KeyName("a"), KeyName("a "));
  EXPECT_NE(KeyName("a"), KeyName("a\0"s));
  EXPECT_NE(KeyName(""), KeyName("\0"s));
}

TEST(KeyName, outlivesTheTextItWasMadeFrom) {
  std::string text = "a_name_too_long_for_the_small_string_buffer";
  const KeyName name(text);
  text.assign(text.size(), '?');
  EXPECT_EQ(name.text(), "a_name_too_long_for_the_small_string_buffer");
}

TEST(KeyName, keepsOneTextForEachName) {
  EXPECT_EQ(&KeyName("volume_increment").text(), &KeyName("volume_"s + "increment").text());
  EXPECT_NE(&KeyName("volume_increment").text(), &KeyName("volume_decrement").text());
}

TEST(KeyName, staysWhereItIsWhileOthersAreAdded) {
  const KeyName first("the_first_of_many");
  const std::string* const text = &first.text();
  for (int i = 0; i < 10'000; ++i)
    KeyName("one_of_many_" + std::to_string(i));
  EXPECT_EQ(&KeyName("the_first_of_many").text(), text);
  EXPECT_EQ(*text, "the_first_of_many");
}

TEST(KeyName, canBeMadeBeforeMain) {
  EXPECT_EQ(madeBeforeMain.text(), "made_before_main");
  EXPECT_EQ(madeBeforeMain, KeyName("made_before_main"));
}

TEST(KeyName, hashesTheKnownNamesApart) {
  std::set<std::uint64_t> hashes;
  std::size_t names = 0;
  for (const auto& row : keytable::keys) {
    hashes.insert(KeyName(row.name).hash());
    ++names;
  }
  EXPECT_EQ(hashes.size(), names);
}

TEST(KeyName, isAKeyOfHashTables) {
  std::unordered_set<KeyName> names{KeyName("a"), KeyName("b"), KeyName("a"), KeyName()};
  EXPECT_EQ(names.size(), 3U);
  EXPECT_TRUE(names.contains(KeyName("b")));
  EXPECT_FALSE(names.contains(KeyName("c")));
}

TEST(KeyName, sortsByTextForPeople) {
  std::vector<KeyName> names{KeyName("tab"), KeyName("a"),  KeyName("f10"),
                             KeyName(),      KeyName("f2"), KeyName("A")};
  std::ranges::sort(names, KeyName::ByText{});
  std::vector<std::string> texts;
  for (const KeyName name : names)
    texts.push_back(name.text());
  EXPECT_EQ(texts, (std::vector<std::string>{"", "A", "a", "f10", "f2", "tab"}));
}

RC_GTEST_PROP(KeyName, isEqualExactlyWhenTheTextsAre, ()) {
  // Short texts of two letters, so that many pairs are equal.
  const auto shortText = rc::gen::container<std::string>(rc::gen::elementOf("ab"s));
  const auto first = *rc::gen::oneOf(shortText, generate::text(), generate::bytes());
  const auto second = *rc::gen::oneOf(shortText, rc::gen::just(first), generate::text());
  RC_CLASSIFY(first == second, "equal");
  const KeyName a(first);
  const KeyName b(second);
  RC_ASSERT((a == b) == (first == second));
  RC_ASSERT((&a.text() == &b.text()) == (first == second));
  RC_ASSERT(a.text() == first);
  RC_ASSERT(b.text() == second);
  RC_ASSERT(a != b || a.hash() == b.hash());
  RC_ASSERT(a != b || std::hash<KeyName>{}(a) == std::hash<KeyName>{}(b));
  RC_ASSERT(KeyName::ByText{}(a, b) == (first < second));
}

TEST(KeyName, isTheSameOnEveryThreadThatMakesItAtTheSameTime) {
  constexpr int rounds = 20;
  constexpr std::size_t threadCount = 4;
  constexpr int namesPerRound = 200;
  for (int round = 0; round < rounds; ++round) {
    std::latch start(threadCount);
    std::vector<std::vector<KeyName>> made(threadCount);
    std::vector<std::thread> threads;
    for (std::vector<KeyName>& names : made) {
      threads.emplace_back([&names, &start, round] {
        start.arrive_and_wait();
        for (int i = 0; i < namesPerRound; ++i)
          names.emplace_back("racing_" + std::to_string(round) + '_' + std::to_string(i));
      });
    }
    for (std::thread& thread : threads)
      thread.join();
    ASSERT_EQ(made[0].size(), static_cast<std::size_t>(namesPerRound));
    for (int i = 0; i < namesPerRound; ++i) {
      const KeyName name = made[0][static_cast<std::size_t>(i)];
      EXPECT_EQ(name.text(), "racing_" + std::to_string(round) + '_' + std::to_string(i));
    }
    for (const std::vector<KeyName>& names : made)
      ASSERT_EQ(names, made[0]);
  }
}

} // namespace
} // namespace trellivar
