#include "core/l10n.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <atomic>
#include <concepts>
#include <cstdint>
#include <fstream>
#include <limits>
#include <locale>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace trellivar {
namespace {

using L10n::Key;
using namespace std::string_literals;

constexpr AppLanguage english = AppLanguage::en;
constexpr AppLanguage chinese = AppLanguage::zhHans;

/// Leaves the language of the process as the test found it.
class L10nTest : public testing::Test {
protected:
  ~L10nTest() override { L10n::setCurrent(before_); }

private:
  AppLanguage before_ = L10n::current();
};

/// One row of the agreed texts, which are kept apart from the program's own table.
struct AgreedTexts {
  std::string name;
  std::string english;
  std::string chinese;
};

/// In the order of the keys.
std::vector<AgreedTexts> agreedTexts() {
  std::ifstream file(TRELLIVAR_CORE_TEST_DATA "/strings.tsv", std::ios::binary);
  std::vector<AgreedTexts> rows;
  for (AgreedTexts row; std::getline(file, row.name, '\t') &&
                        std::getline(file, row.english, '\t') && std::getline(file, row.chinese);) {
    rows.push_back(row);
  }
  return rows;
}

/// What callers pass for each key that takes arguments, in order; all other keys take none.
const std::map<std::string_view, std::vector<std::string>> agreedPlaceholders{
    {"keyN", {"%d"}},
    {"captureKeyN", {"%d"}},
    {"pressKeyTitle", {"%d"}},
    {"pressKeyDetail", {"%d"}},
    {"keyNNamed", {"%d", "%@"}},
    {"chipWireless", {"%@"}},
    {"modeOKFmt", {"%@"}},
    {"undiscoveredTitle", {"%@"}},
    {"discoverTitle", {"%@"}},
    {"flipTitle", {"%@"}},
    {"flipDetail", {"%@"}},
    {"saveMode", {"%@"}},
    {"modeDiscovered", {"%@"}},
    {"assignToKey", {"%@"}},
    {"writtenFmt", {"%@", "%@"}},
    {"modeSkippedFmt", {"%@", "%@"}},
    {"errPadNotSeen", {"%@", "%@"}},
};

std::vector<Key> keysThatTakeArguments() {
  std::vector<Key> keys;
  for (const Key key : L10n::allKeys) {
    if (agreedPlaceholders.contains(L10n::rawValue(key))) keys.push_back(key);
  }
  return keys;
}

/// Every per cent sign of a text with the character after it.
std::vector<std::string> placeholders(std::string_view text) {
  std::vector<std::string> found;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') found.emplace_back(text.substr(i, 2));
  }
  return found;
}

TEST_F(L10nTest, holdsTheAgreedKeysInTheAgreedOrder) {
  const auto agreed = agreedTexts();
  ASSERT_EQ(agreed.size(), 91U);
  ASSERT_EQ(L10n::keyCount, agreed.size());
  for (std::size_t i = 0; i < agreed.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(L10n::allKeys[i]), i);
    EXPECT_EQ(L10n::rawValue(L10n::allKeys[i]), agreed[i].name);
  }
}

TEST_F(L10nTest, namesAKeyLikeItsCase) {
  EXPECT_EQ(L10n::rawValue(Key::chipUSBReady), "chipUSBReady");
  EXPECT_EQ(L10n::rawValue(Key::errPadNotSeen), "errPadNotSeen");
  EXPECT_EQ(L10n::rawValue(Key::badgeAutomatic), "badgeAutomatic");
}

TEST_F(L10nTest, holdsTheAgreedTextsOfEveryKey) {
  const auto agreed = agreedTexts();
  ASSERT_EQ(agreed.size(), L10n::keyCount);
  for (std::size_t i = 0; i < agreed.size(); ++i) {
    SCOPED_TRACE(agreed[i].name);
    const Key key = L10n::allKeys[i];
    EXPECT_EQ(L10n::text(key, english), agreed[i].english);
    EXPECT_EQ(L10n::text(key, chinese), agreed[i].chinese);
  }
}

TEST_F(L10nTest, looksEveryKeyUpInTheCurrentLanguage) {
  const auto agreed = agreedTexts();
  ASSERT_EQ(agreed.size(), L10n::keyCount);
  for (std::size_t i = 0; i < agreed.size(); ++i) {
    SCOPED_TRACE(agreed[i].name);
    L10n::setCurrent(chinese);
    EXPECT_EQ(L10n::t(L10n::allKeys[i]), agreed[i].chinese);
    L10n::setCurrent(english);
    EXPECT_EQ(L10n::t(L10n::allKeys[i]), agreed[i].english);
  }
}

TEST_F(L10nTest, takesTheAgreedArgumentsInBothLanguages) {
  EXPECT_EQ(keysThatTakeArguments().size(), agreedPlaceholders.size());
  for (const Key key : L10n::allKeys) {
    SCOPED_TRACE(L10n::rawValue(key));
    const auto agreed = agreedPlaceholders.find(L10n::rawValue(key));
    const auto expected =
        agreed != agreedPlaceholders.end() ? agreed->second : std::vector<std::string>{};
    EXPECT_EQ(placeholders(L10n::text(key, english)), expected);
    EXPECT_EQ(placeholders(L10n::text(key, chinese)), expected);
  }
}

TEST_F(L10nTest, speaksEnglishUntilTold) { EXPECT_EQ(L10n::current(), english); }

TEST_F(L10nTest, remembersTheLanguageItWasTold) {
  for (const AppLanguage language : {chinese, english, chinese, chinese, english}) {
    L10n::setCurrent(language);
    EXPECT_EQ(L10n::current(), language);
  }
}

TEST_F(L10nTest, changesLanguageAtOnce) {
  L10n::setCurrent(chinese);
  EXPECT_EQ(L10n::t(Key::errNotInRegistry), "设备注册表中没有 Orlo3");
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::errNotInRegistry), "Orlo3 not in device registry");
}

TEST_F(L10nTest, keepsTheTextsOfBothLanguagesReachableWhateverTheCurrentOne) {
  for (const AppLanguage language : AppLanguage::allCases) {
    L10n::setCurrent(language);
    EXPECT_EQ(L10n::text(Key::cancel, english), "Cancel");
    EXPECT_EQ(L10n::text(Key::cancel, chinese), "取消");
  }
}

TEST_F(L10nTest, putsTheKeyNumberIntoTheText) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::keyN, 2), "Key 2");
  L10n::setCurrent(chinese);
  EXPECT_EQ(L10n::t(Key::keyN, 2), "按键 2");
}

TEST_F(L10nTest, confirmsAModeAlikeInBothLanguages) {
  for (const AppLanguage language : AppLanguage::allCases) {
    L10n::setCurrent(language);
    EXPECT_EQ(L10n::t(Key::modeOKFmt, "P"), "P ✓");
  }
}

TEST_F(L10nTest, insertsArgumentsInOrder) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::keyNNamed, 3, "⌘ C"), "Key 3 — ⌘ C");
  EXPECT_EQ(L10n::t(Key::writtenFmt, "P, M", "1.2"), "Written P, M (firmware 1.2)");
  EXPECT_EQ(L10n::t(Key::errPadNotSeen, "P", "M"),
            "Couldn't see the pad in P mode — flip the switch to M and try again.");
  L10n::setCurrent(chinese);
  EXPECT_EQ(L10n::t(Key::modeSkippedFmt, "R", "1, 3"), "R — 按键 1, 3 已跳过（固件不支持）");
}

TEST_F(L10nTest, acceptsEveryKindOfText) {
  L10n::setCurrent(english);
  const std::string text = "R";
  char letters[] = "R";
  EXPECT_EQ(L10n::t(Key::saveMode, text), "Save Mode R");
  EXPECT_EQ(L10n::t(Key::saveMode, std::string_view(text)), "Save Mode R");
  EXPECT_EQ(L10n::t(Key::saveMode, text.c_str()), "Save Mode R");
  EXPECT_EQ(L10n::t(Key::saveMode, letters), "Save Mode R");
  EXPECT_EQ(L10n::t(Key::saveMode, L10n::Argument("R")), "Save Mode R");
}

TEST_F(L10nTest, acceptsEveryKindOfInteger) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::keyN, 0), "Key 0");
  EXPECT_EQ(L10n::t(Key::keyN, -7), "Key -7");
  EXPECT_EQ(L10n::t(Key::keyN, std::uint8_t{65}), "Key 65");
  EXPECT_EQ(L10n::t(Key::keyN, std::int16_t{-300}), "Key -300");
  EXPECT_EQ(L10n::t(Key::keyN, std::numeric_limits<std::int64_t>::min()),
            "Key -9223372036854775808");
  EXPECT_EQ(L10n::t(Key::keyN, std::numeric_limits<std::uint64_t>::max()),
            "Key 18446744073709551615");
}

TEST_F(L10nTest, acceptsNothingElse) {
  EXPECT_TRUE((std::constructible_from<L10n::Argument, int>));
  EXPECT_FALSE((std::constructible_from<L10n::Argument, bool>));
  EXPECT_FALSE((std::constructible_from<L10n::Argument, char>));
  EXPECT_FALSE((std::constructible_from<L10n::Argument, double>));
}

TEST_F(L10nTest, insertsAnArgumentOfTheOtherKindAsItsText) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::saveMode, 5), "Save Mode 5");
  EXPECT_EQ(L10n::t(Key::keyN, "two"), "Key two");
  EXPECT_EQ(L10n::t(Key::keyNNamed, "two", 5), "Key two — 5");
}

TEST_F(L10nTest, neverExpandsWhatAnArgumentContains) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::chipWireless, "%@ %d %s"), "%@ %d %s · wireless");
  EXPECT_EQ(L10n::t(Key::writtenFmt, "%@", "%d"), "Written %@ (firmware %d)");
  EXPECT_EQ(L10n::t(Key::writtenFmt, "100%", "@"), "Written 100% (firmware @)");
  EXPECT_EQ(L10n::t(Key::writtenFmt, "%n%n", "%%"), "Written %n%n (firmware %%)");
  EXPECT_EQ(L10n::t(Key::writtenFmt, "", ""), "Written  (firmware )");
  EXPECT_EQ(L10n::t(Key::saveMode, "a\0b"s), "Save Mode a\0b"s);
}

TEST_F(L10nTest, leavesAPlaceholderWithoutAnArgumentAsItIs) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::keyNNamed, 3), "Key 3 — %@");
  EXPECT_EQ(L10n::t(Key::keyNNamed), "Key %d — %@");
  EXPECT_EQ(L10n::t(Key::keyNNamed, std::span<const L10n::Argument>{}), "Key %d — %@");
  EXPECT_EQ(L10n::t(Key::writtenFmt, "%@"), "Written %@ (firmware %@)");
}

TEST_F(L10nTest, ignoresASurplusArgument) {
  L10n::setCurrent(english);
  EXPECT_EQ(L10n::t(Key::keyN, 2, "more", 4), "Key 2");
  EXPECT_EQ(L10n::t(Key::cancel, "more"), "Cancel");
}

TEST_F(L10nTest, answersANumberThatIsNoKeyWithNothing) {
  for (const std::size_t number : {L10n::keyCount, std::size_t{UINT8_MAX}}) {
    const auto key = static_cast<Key>(number);
    EXPECT_EQ(L10n::rawValue(key), "");
    EXPECT_EQ(L10n::text(key, english), "");
    EXPECT_EQ(L10n::text(key, chinese), "");
    EXPECT_EQ(L10n::t(key), "");
    EXPECT_EQ(L10n::t(key, 1, "more"), "");
  }
}

/// A locale that writes 1'23'45'67.
struct GroupingDigits : std::numpunct<char> {
  char do_thousands_sep() const override { return '\''; }
  std::string do_grouping() const override { return "\2"; }
};

TEST_F(L10nTest, writesNumbersAlikeInEveryLocale) {
  L10n::setCurrent(english);
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new GroupingDigits));
  const std::string text = L10n::t(Key::keyN, 1234567);
  std::locale::global(before);
  EXPECT_EQ(text, "Key 1234567");
}

/// Texts made of the pieces that a careless substitution trips over.
rc::Gen<std::string> trickyText() {
  const auto piece = rc::gen::element("%"s, "@"s, "d"s, "s"s, "%@"s, "%d"s, "%s"s, "%n"s, "%%"s,
                                      "\\"s, "\0"s, "键"s, "\xFF"s, " "s);
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                      [](const std::vector<std::string>& pieces) {
                        std::string text;
                        for (const std::string& each : pieces)
                          text += each;
                        return text;
                      });
}

/// The parts of a text around its placeholders.
std::vector<std::string> fixedParts(std::string_view text) {
  std::vector<std::string> parts(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      parts.emplace_back();
      ++i;
    } else {
      parts.back() += text[i];
    }
  }
  return parts;
}

RC_GTEST_FIXTURE_PROP(L10nTest, insertsWhateverArgumentsVerbatimAndOnce, ()) {
  const Key key = *rc::gen::oneOf(rc::gen::elementOf(L10n::allKeys),
                                  rc::gen::elementOf(keysThatTakeArguments()));
  const AppLanguage language = *rc::gen::elementOf(AppLanguage::allCases);
  const auto texts = *rc::gen::container<std::vector<std::string>>(trickyText());
  const std::vector<L10n::Argument> arguments(texts.begin(), texts.end());

  const auto parts = fixedParts(L10n::text(key, language));
  const auto kinds = placeholders(L10n::text(key, language));
  std::string expected = parts.front();
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    expected += i < texts.size() ? texts[i] : kinds[i];
    expected += parts[i + 1];
  }

  L10n::setCurrent(language);
  RC_ASSERT(L10n::t(key, arguments) == expected);
}

TEST_F(L10nTest, sharesTheLanguageAmongAllThreads) {
  L10n::setCurrent(english);
  std::thread([] { L10n::setCurrent(chinese); }).join();
  EXPECT_EQ(L10n::t(Key::cancel), "取消");

  std::string seenElsewhere;
  std::thread([&] { seenElsewhere = L10n::t(Key::cancel); }).join();
  EXPECT_EQ(seenElsewhere, "取消");
}

TEST_F(L10nTest, givesAWholeTextWhileAnotherThreadChangesTheLanguage) {
  L10n::setCurrent(english);
  std::atomic<bool> done = false;
  std::atomic<int> strangeTexts = 0;
  std::atomic<int> reading = 0;
  const auto read = [&] {
    ++reading;
    do {
      const std::string text = L10n::t(Key::keyN, 2);
      if (text != "Key 2" && text != "按键 2") ++strangeTexts;
    } while (!done);
  };
  std::thread first(read);
  std::thread second(read);
  while (reading < 2)
    std::this_thread::yield();
  for (int i = 0; i < 5000; ++i)
    L10n::setCurrent(AppLanguage::allCases[i % 2 == 0 ? 1 : 0]);
  done = true;
  first.join();
  second.join();
  EXPECT_EQ(strangeTexts, 0);
}

} // namespace
} // namespace trellivar
