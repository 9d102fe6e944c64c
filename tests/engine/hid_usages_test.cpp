#include "engine/hid_usages.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace trellivar::hid {
namespace {

using Table = std::map<std::uint32_t, std::string>;

constexpr std::uint32_t manyUsages = 0x400;

/// What a page gives for each of its usages; those that it ignores are left out.
Table namesOn(std::uint32_t page, Key::Kind kind) {
  Table names;
  for (std::uint32_t usage = 0; usage < manyUsages; ++usage) {
    const auto found = key(page, usage);
    if (!found) continue;
    EXPECT_EQ(found->kind, kind) << usage;
    names[usage] = found->keyCode.text();
  }
  return names;
}

const Table keyboard{
    {4, "a"},
    {5, "b"},
    {6, "c"},
    {7, "d"},
    {8, "e"},
    {9, "f"},
    {10, "g"},
    {11, "h"},
    {12, "i"},
    {13, "j"},
    {14, "k"},
    {15, "l"},
    {16, "m"},
    {17, "n"},
    {18, "o"},
    {19, "p"},
    {20, "q"},
    {21, "r"},
    {22, "s"},
    {23, "t"},
    {24, "u"},
    {25, "v"},
    {26, "w"},
    {27, "x"},
    {28, "y"},
    {29, "z"},
    {30, "1"},
    {31, "2"},
    {32, "3"},
    {33, "4"},
    {34, "5"},
    {35, "6"},
    {36, "7"},
    {37, "8"},
    {38, "9"},
    {39, "0"},
    {40, "return_or_enter"},
    {41, "escape"},
    {42, "delete_or_backspace"},
    {43, "tab"},
    {44, "spacebar"},
    {224, "left_control"},
    {225, "left_shift"},
    {226, "left_option"},
    {227, "left_command"},
    {228, "right_control"},
    {229, "right_shift"},
    {230, "right_option"},
    {231, "right_command"},
};

const Table consumer{{181, "fast_forward"}, {182, "rewind"},           {205, "play_or_pause"},
                     {226, "mute"},         {233, "volume_increment"}, {234, "volume_decrement"}};

TEST(HIDUsages, theKeyboardPage) {
  EXPECT_EQ(namesOn(7, Key::Kind::keyCode), keyboard);
  for (std::uint32_t usage = 0; usage < manyUsages; ++usage)
    EXPECT_EQ(keyCode(usage).text(), keyboard.contains(usage) ? keyboard.at(usage) : "") << usage;
}

TEST(HIDUsages, theConsumerPage) {
  EXPECT_EQ(namesOn(12, Key::Kind::consumerKeyCode), consumer);
  for (std::uint32_t usage = 0; usage < manyUsages; ++usage)
    EXPECT_EQ(consumerCode(usage).text(), consumer.contains(usage) ? consumer.at(usage) : "")
        << usage;
}

TEST(HIDUsages, threeButtons) {
  EXPECT_EQ(namesOn(9, Key::Kind::pointingButton),
            (Table{{1, "button1"}, {2, "button2"}, {3, "button3"}}));
}

TEST(HIDUsages, everyUsageOfDigitizersIsAKeyThatCannotBeMapped) {
  const Table names = namesOn(13, Key::Kind::unmappable);
  EXPECT_EQ(names.size(), manyUsages);
  for (const auto& [usage, name] : names)
    EXPECT_EQ(name, "digitizer_" + std::to_string(usage));
  EXPECT_EQ(key(13, 0xFFFFFFFF)->keyCode.text(), "digitizer_4294967295");
}

TEST(HIDUsages, everyOtherPageIsIgnored) {
  for (std::uint32_t page = 0; page < 0x100; ++page) {
    if (page == 7 || page == 9 || page == 12 || page == 13) continue;
    EXPECT_EQ(namesOn(page, Key::Kind::keyCode), Table{}) << page;
  }
  EXPECT_EQ(key(0xFF07, 4), std::nullopt);
  EXPECT_EQ(key(0x10007, 4), std::nullopt);
}

TEST(HIDUsages, veryLargeUsagesAreIgnored) {
  for (const std::uint32_t page : {7U, 9U, 12U}) {
    for (const std::uint32_t usage : {0x10004U, 0x100U + 4, 0xFFFFFFFFU, 0x80000001U})
      EXPECT_EQ(key(page, usage), std::nullopt) << page << ' ' << usage;
  }
}

TEST(HIDUsages, modifiersAreEightKeysOfTheKeyboardPage) {
  for (std::uint32_t page = 0; page < 0x20; ++page) {
    for (std::uint32_t usage = 0; usage < manyUsages; ++usage)
      EXPECT_EQ(isModifier(page, usage), page == 7 && usage >= 224 && usage <= 231)
          << page << ' ' << usage;
  }
}

} // namespace
} // namespace trellivar::hid
