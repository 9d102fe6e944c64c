#include "engine/modifier_flags.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <set>
#include <string>
#include <string_view>

namespace trellivar::modifier_flags {
namespace {

struct Row {
  std::string_view name;
  std::uint64_t either; ///< of both sides
  std::uint64_t side;   ///< its own
};

constexpr std::array rows{
    Row{"left_control", 0x40000, 0x1},  Row{"right_control", 0x40000, 0x2000},
    Row{"left_shift", 0x20000, 0x2},    Row{"right_shift", 0x20000, 0x4},
    Row{"left_option", 0x80000, 0x20},  Row{"right_option", 0x80000, 0x40},
    Row{"left_command", 0x100000, 0x8}, Row{"right_command", 0x100000, 0x10},
};
constexpr std::uint64_t other = 0xFFFFFFFFFFE0'0000 | 0x1'0000 | 0x100; ///< caps lock, fn and more

std::set<std::string_view> downIn(std::uint64_t flags) {
  std::set<std::string_view> names;
  for (const Row& row : rows) {
    if (isDown(flags, KeyName(row.name))) names.insert(row.name);
  }
  return names;
}

TEST(ModifierFlags, allAreThoseOfTheEightModifiers) { EXPECT_EQ(all(), 0x1E207FU); }

TEST(ModifierFlags, aPressSetsTheFlagOfTheSideAndTheCommonOne) {
  for (const Row& row : rows) {
    EXPECT_EQ(pressing(0, KeyName(row.name)), row.either | row.side) << row.name;
    EXPECT_EQ(pressing(other, KeyName(row.name)), other | row.either | row.side);
    EXPECT_EQ(downIn(pressing(0, KeyName(row.name))), std::set{row.name});
  }
}

TEST(ModifierFlags, aReleaseTakesThemAway) {
  for (const Row& row : rows) {
    EXPECT_EQ(releasing(row.either | row.side, KeyName(row.name)), 0U) << row.name;
    EXPECT_EQ(releasing(other | row.either | row.side, KeyName(row.name)), other);
    EXPECT_EQ(releasing(row.either, KeyName(row.name)), 0U) << "without the flag of the side";
  }
}

TEST(ModifierFlags, theCommonFlagStaysWhileTheOtherSideIsDown) {
  for (std::size_t i = 0; i < rows.size(); i += 2) {
    const Row& left = rows.at(i);
    const Row& right = rows.at(i + 1);
    const std::uint64_t both = left.either | left.side | right.side;
    EXPECT_EQ(releasing(both, KeyName(left.name)), right.either | right.side);
    EXPECT_EQ(releasing(both, KeyName(right.name)), left.either | left.side);
  }
}

TEST(ModifierFlags, theFlagOfTheSideDecidesWhereSidesAreTold) {
  EXPECT_EQ(downIn(0x20000 | 0x4), std::set<std::string_view>{"right_shift"});
  EXPECT_EQ(downIn(0x4), std::set<std::string_view>{"right_shift"})
      << "even without the common one";
  EXPECT_EQ(downIn(0x20000 | 0x2 | 0x4), (std::set<std::string_view>{"left_shift", "right_shift"}));
}

TEST(ModifierFlags, withoutSidesBothCountAsDown) {
  EXPECT_EQ(downIn(0x20000), (std::set<std::string_view>{"left_shift", "right_shift"}));
  EXPECT_EQ(downIn(0x20000 | 0x8),
            (std::set<std::string_view>{"left_shift", "right_shift", "left_command"}))
      << "the sides of one modifier say nothing about another";
}

TEST(ModifierFlags, nothingElseIsAModifier) {
  for (const std::string name : {"", "a", "fn", "caps_lock", "shift", "Left_shift", "mute"}) {
    EXPECT_FALSE(isDown(~std::uint64_t{0}, KeyName(name))) << name;
    EXPECT_EQ(pressing(0x102, KeyName(name)), 0x102U);
    EXPECT_EQ(releasing(~std::uint64_t{0}, KeyName(name)), ~std::uint64_t{0});
  }
  EXPECT_EQ(downIn(other), std::set<std::string_view>{});
}

RC_GTEST_PROP(ModifierFlags, followAnyOrderOfPressesAndReleases, ()) {
  std::uint64_t flags = other;
  std::set<std::string_view> down;
  const auto steps = *rc::gen::container<std::vector<std::pair<int, bool>>>(
      rc::gen::pair(rc::gen::inRange(0, 8), rc::gen::arbitrary<bool>()));
  for (const auto& [index, isPress] : steps) {
    const std::string_view name = rows.at(static_cast<std::size_t>(index)).name;
    flags = isPress ? pressing(flags, KeyName(name)) : releasing(flags, KeyName(name));
    if (isPress)
      down.insert(name);
    else
      down.erase(name);
    RC_ASSERT(downIn(flags) == down);
    RC_ASSERT((flags & ~all()) == other);
  }
}

} // namespace
} // namespace trellivar::modifier_flags
