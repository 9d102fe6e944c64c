#include "core/cg_keycode_map.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <climits>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace trellivar {
namespace {

using namespace std::string_view_literals;

const std::map<std::string, int, std::less<>> agreedKeyCodes{
    {"a", 0},
    {"b", 11},
    {"c", 8},
    {"d", 2},
    {"e", 14},
    {"f", 3},
    {"g", 5},
    {"h", 4},
    {"i", 34},
    {"j", 38},
    {"k", 40},
    {"l", 37},
    {"m", 46},
    {"n", 45},
    {"o", 31},
    {"p", 35},
    {"q", 12},
    {"r", 15},
    {"s", 1},
    {"t", 17},
    {"u", 32},
    {"v", 9},
    {"w", 13},
    {"x", 7},
    {"y", 16},
    {"z", 6},
    {"0", 29},
    {"1", 18},
    {"2", 19},
    {"3", 20},
    {"4", 21},
    {"5", 23},
    {"6", 22},
    {"7", 26},
    {"8", 28},
    {"9", 25},
    {"f1", 122},
    {"f2", 120},
    {"f3", 99},
    {"f4", 118},
    {"f5", 96},
    {"f6", 97},
    {"f7", 98},
    {"f8", 100},
    {"f9", 101},
    {"f10", 109},
    {"f11", 103},
    {"f12", 111},
    {"backslash", 42},
    {"close_bracket", 30},
    {"comma", 43},
    {"delete_or_backspace", 51},
    {"down_arrow", 125},
    {"equal_sign", 24},
    {"escape", 53},
    {"grave_accent_and_tilde", 50},
    {"hyphen", 27},
    {"left_arrow", 123},
    {"open_bracket", 33},
    {"period", 47},
    {"quote", 39},
    {"return_or_enter", 36},
    {"right_arrow", 124},
    {"semicolon", 41},
    {"slash", 44},
    {"spacebar", 49},
    {"tab", 48},
    {"up_arrow", 126},
};

struct AgreedBits {
  std::uint64_t generic;
  std::uint64_t device;
  int keyCode;
};

const std::map<std::string, AgreedBits, std::less<>> agreedModifiers{
    {"left_command", {0x100000, 0x8, 55}}, {"right_command", {0x100000, 0x10, 54}},
    {"left_shift", {0x20000, 0x2, 56}},    {"right_shift", {0x20000, 0x4, 60}},
    {"left_control", {0x40000, 0x1, 59}},  {"right_control", {0x40000, 0x2000, 62}},
    {"left_option", {0x80000, 0x20, 58}},  {"right_option", {0x80000, 0x40, 61}},
};

const std::map<std::string, int, std::less<>> agreedAuxKeys{
    {"volume_increment", 0}, {"volume_decrement", 1}, {"mute", 7},
    {"play_or_pause", 16},   {"fastforward", 19},     {"rewind", 20},
};

/// What a person might expect to be a name, but is none of any table.
constexpr std::array strangers{
    ""sv,
    " "sv,
    "A"sv,
    "a "sv,
    " a"sv,
    "a\0"sv,
    "aa"sv,
    "F1"sv,
    "f0"sv,
    "f13"sv,
    "f14"sv,
    "f15"sv,
    "f16"sv,
    "f19"sv,
    "f20"sv,
    "f24"sv,
    "f01"sv,
    "10"sv,
    "keypad_0"sv,
    "keypad_1"sv,
    "keypad_9"sv,
    "keypad_enter"sv,
    "keypad_plus"sv,
    "keypad_hyphen"sv,
    "keypad_slash"sv,
    "keypad_asterisk"sv,
    "keypad_period"sv,
    "keypad_num_lock"sv,
    "keypad_equal_sign"sv,
    "home"sv,
    "end"sv,
    "page_up"sv,
    "page_down"sv,
    "delete_forward"sv,
    "forward_delete"sv,
    "insert"sv,
    "help"sv,
    "caps_lock"sv,
    "fn"sv,
    "print_screen"sv,
    "scroll_lock"sv,
    "pause"sv,
    "non_us_backslash"sv,
    "non_us_pound"sv,
    "return"sv,
    "enter"sv,
    "space"sv,
    "delete"sv,
    "backspace"sv,
    "left"sv,
    "arrow_left"sv,
    "minus"sv,
    "-"sv,
    "="sv,
    "command"sv,
    "shift"sv,
    "control"sv,
    "option"sv,
    "left_alt"sv,
    "left_meta"sv,
    "fast_forward"sv,
    "fastForward"sv,
    "volume_up"sv,
    "play"sv,
    "play_pause"sv,
    "eject"sv,
    "brightness_up"sv,
    "next_track"sv,
};

std::string textOf(const std::optional<KeyName>& name) { return name ? name->text() : "none"; }

TEST(CGKeycodeMap, knowsTheSixtyEightKeysByName) {
  ASSERT_EQ(agreedKeyCodes.size(), 68U);
  for (const auto& [name, code] : agreedKeyCodes)
    EXPECT_EQ(CGKeycodeMap::keyCode(name), code) << name;
}

TEST(CGKeycodeMap, findsModifierKeysThroughTheModifierTable) {
  EXPECT_EQ(CGKeycodeMap::keyCode("right_option"), 61);
  ASSERT_EQ(agreedModifiers.size(), 8U);
  for (const auto& [name, bits] : agreedModifiers)
    EXPECT_EQ(CGKeycodeMap::keyCode(name), bits.keyCode) << name;
}

TEST(CGKeycodeMap, namesEveryKeyCodeOfTheTablesAndNoOther) {
  std::map<int, std::string> agreedNames;
  for (const auto& [name, code] : agreedKeyCodes)
    agreedNames.emplace(code, name);
  for (const auto& [name, bits] : agreedModifiers)
    agreedNames.emplace(bits.keyCode, name);
  ASSERT_EQ(agreedNames.size(), 76U);
  for (int code = -1000; code <= 70'000; ++code) {
    const auto agreed = agreedNames.find(code);
    EXPECT_EQ(textOf(CGKeycodeMap::name(code)),
              agreed == agreedNames.end() ? "none" : agreed->second)
        << code;
  }
  EXPECT_EQ(CGKeycodeMap::name(INT_MIN), std::nullopt);
  EXPECT_EQ(CGKeycodeMap::name(INT_MAX), std::nullopt);
}

TEST(CGKeycodeMap, knowsEveryColumnOfTheEightModifiers) {
  for (const auto& [name, bits] : agreedModifiers) {
    SCOPED_TRACE(name);
    const auto found = CGKeycodeMap::modifier(name);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->generic, bits.generic);
    EXPECT_EQ(found->device, bits.device);
    EXPECT_EQ(found->keyCode, bits.keyCode);
  }
}

TEST(CGKeycodeMap, comparesModifierBitsInEveryField) {
  const CGKeycodeMap::ModifierBits bits{1, 2, 3};
  EXPECT_EQ(bits, (CGKeycodeMap::ModifierBits{1, 2, 3}));
  EXPECT_NE(bits, (CGKeycodeMap::ModifierBits{0, 2, 3}));
  EXPECT_NE(bits, (CGKeycodeMap::ModifierBits{1, 0, 3}));
  EXPECT_NE(bits, (CGKeycodeMap::ModifierBits{1, 2, 0}));
}

TEST(CGKeycodeMap, hasModifierBitsForModifiersAlone) {
  for (const auto& [name, code] : agreedKeyCodes)
    EXPECT_EQ(CGKeycodeMap::modifier(name), std::nullopt) << name;
  for (const auto& [name, key] : agreedAuxKeys)
    EXPECT_EQ(CGKeycodeMap::modifier(name), std::nullopt) << name;
  EXPECT_EQ(CGKeycodeMap::modifier("button1"), std::nullopt);
}

TEST(CGKeycodeMap, knowsTheSixMediaKeysByName) {
  ASSERT_EQ(agreedAuxKeys.size(), 6U);
  for (const auto& [name, key] : agreedAuxKeys)
    EXPECT_EQ(CGKeycodeMap::auxKey(name), key) << name;
}

TEST(CGKeycodeMap, namesTheSixMediaKeysAndNoOther) {
  std::map<int, std::string> agreedNames;
  for (const auto& [name, key] : agreedAuxKeys)
    agreedNames.emplace(key, name);
  for (int key = -1000; key <= 70'000; ++key) {
    const auto agreed = agreedNames.find(key);
    EXPECT_EQ(textOf(CGKeycodeMap::consumerName(key)),
              agreed == agreedNames.end() ? "none" : agreed->second)
        << key;
  }
  EXPECT_EQ(CGKeycodeMap::consumerName(INT_MIN), std::nullopt);
  EXPECT_EQ(CGKeycodeMap::consumerName(INT_MAX), std::nullopt);
}

TEST(CGKeycodeMap, neverPostsACapturedFastForwardKeyBecauseCaptureSpellsItOtherwise) {
  EXPECT_EQ(CGKeycodeMap::auxKey("fastforward"), 19);
  EXPECT_EQ(textOf(CGKeycodeMap::consumerName(19)), "fastforward");
  EXPECT_EQ(CGKeycodeMap::auxKey("fast_forward"), std::nullopt);
  EXPECT_EQ(CGKeycodeMap::keyCode("fast_forward"), std::nullopt);
}

TEST(CGKeycodeMap, keepsTheFamiliesOfKeysApart) {
  for (const auto& [name, code] : agreedKeyCodes)
    EXPECT_EQ(CGKeycodeMap::auxKey(name), std::nullopt) << name;
  for (const auto& [name, bits] : agreedModifiers)
    EXPECT_EQ(CGKeycodeMap::auxKey(name), std::nullopt) << name;
  for (const auto& [name, key] : agreedAuxKeys)
    EXPECT_EQ(CGKeycodeMap::keyCode(name), std::nullopt) << name;
  for (const char* name : {"a", "1", "left_command", "mute"})
    EXPECT_EQ(CGKeycodeMap::buttonNumber(name), std::nullopt) << name;
  EXPECT_EQ(CGKeycodeMap::keyCode("button1"), std::nullopt);
  EXPECT_EQ(CGKeycodeMap::auxKey("button1"), std::nullopt);
}

TEST(CGKeycodeMap, knowsNoKeypadNoNavigationBlockAndNoFurtherFunctionKeys) {
  for (const std::string_view name : strangers) {
    EXPECT_EQ(CGKeycodeMap::keyCode(name), std::nullopt) << '"' << name << '"';
    EXPECT_EQ(CGKeycodeMap::modifier(name), std::nullopt) << '"' << name << '"';
    EXPECT_EQ(CGKeycodeMap::auxKey(name), std::nullopt) << '"' << name << '"';
    EXPECT_EQ(CGKeycodeMap::buttonNumber(name), std::nullopt) << '"' << name << '"';
  }
}

RC_GTEST_PROP(CGKeycodeMap, knowsNoNameButThoseOfTheTables, ()) {
  const KeyName key = *generate::keyName();
  const std::string& name = key.text();
  const bool isKey = agreedKeyCodes.contains(name);
  const bool isModifier = agreedModifiers.contains(name);
  RC_ASSERT(CGKeycodeMap::keyCode(name).has_value() == (isKey || isModifier));
  RC_ASSERT(CGKeycodeMap::modifier(name).has_value() == isModifier);
  RC_ASSERT(CGKeycodeMap::auxKey(name).has_value() == agreedAuxKeys.contains(name));
}

TEST(CGKeycodeMap, numbersTheThirtyTwoButtonsFromZero) {
  EXPECT_EQ(CGKeycodeMap::buttonNumber("button1"), 0);
  EXPECT_EQ(CGKeycodeMap::buttonNumber("button32"), 31);
  for (int number = 0; number < 32; ++number) {
    const std::string name = "button" + std::to_string(number + 1);
    EXPECT_EQ(CGKeycodeMap::buttonNumber(name), number) << name;
    EXPECT_EQ(textOf(CGKeycodeMap::pointingName(number)), name);
  }
}

TEST(CGKeycodeMap, namesNoFurtherButton) {
  for (int number = -1000; number <= 70'000; ++number) {
    const bool isButton = number >= 0 && number <= 31;
    EXPECT_EQ(CGKeycodeMap::pointingName(number).has_value(), isButton) << number;
  }
  EXPECT_EQ(CGKeycodeMap::pointingName(INT_MIN), std::nullopt);
  EXPECT_EQ(CGKeycodeMap::pointingName(INT_MAX), std::nullopt);
}

TEST(CGKeycodeMap, takesNothingElseForAButton) {
  for (const std::string_view name : {"button0"sv,
                                      "button33"sv,
                                      "button"sv,
                                      "buttonx"sv,
                                      "button-1"sv,
                                      "button1x"sv,
                                      "button1.0"sv,
                                      "button1e0"sv,
                                      "button0x1"sv,
                                      "button 1"sv,
                                      "button1 "sv,
                                      " button1"sv,
                                      "button1\0"sv,
                                      "Button1"sv,
                                      "BUTTON1"sv,
                                      "buttons1"sv,
                                      "butto1"sv,
                                      "1"sv,
                                      "xbutton1"sv,
                                      "button100"sv,
                                      "button2147483648"sv,
                                      "button4294967297"sv,
                                      "button18446744073709551617"sv,
                                      "button99999999999999999999999"sv,
                                      "button١"sv}) {
    EXPECT_EQ(CGKeycodeMap::buttonNumber(name), std::nullopt) << '"' << name << '"';
  }
}

TEST(CGKeycodeMap, readsTheNumberOfAButtonAsANumber) {
  EXPECT_EQ(CGKeycodeMap::buttonNumber("button01"), 0);
  EXPECT_EQ(CGKeycodeMap::buttonNumber("button0032"), 31);
  EXPECT_EQ(CGKeycodeMap::buttonNumber("button00"), std::nullopt);
}

TEST(CGKeycodeMap, answersOnManyThreadsAtOnce) {
  std::vector<std::thread> threads;
  std::vector<int> wrong(4);
  for (int& count : wrong) {
    threads.emplace_back([&count] {
      for (const auto& [name, code] : agreedKeyCodes) {
        if (CGKeycodeMap::keyCode(name) != code) ++count;
        if (textOf(CGKeycodeMap::name(code)) != name) ++count;
      }
      for (const auto& [name, key] : agreedAuxKeys) {
        if (CGKeycodeMap::auxKey(name) != key) ++count;
        if (textOf(CGKeycodeMap::consumerName(key)) != name) ++count;
      }
      if (CGKeycodeMap::modifier("left_shift")->device != 2) ++count;
      if (textOf(CGKeycodeMap::pointingName(4)) != "button5") ++count;
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

} // namespace
} // namespace trellivar
