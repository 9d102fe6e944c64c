#include "core/modifier.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>

namespace trellivar {
namespace {

using namespace std::string_view_literals;

struct AgreedModifier {
  Modifier modifier;
  std::string_view rawValue;
  std::string_view symbol;
  bool isLeft;
  Modifier oppositeSide;
};

/// In the canonical order.
constexpr std::array agreedModifiers{
    AgreedModifier{Modifier::command, "left_command", "⌘", true, Modifier::rightCommand},
    AgreedModifier{Modifier::shift, "left_shift", "⇧", true, Modifier::rightShift},
    AgreedModifier{Modifier::control, "left_control", "⌃", true, Modifier::rightControl},
    AgreedModifier{Modifier::option, "left_option", "⌥", true, Modifier::rightOption},
    AgreedModifier{Modifier::rightCommand, "right_command", "⌘R", false, Modifier::command},
    AgreedModifier{Modifier::rightShift, "right_shift", "⇧R", false, Modifier::shift},
    AgreedModifier{Modifier::rightControl, "right_control", "⌃R", false, Modifier::control},
    AgreedModifier{Modifier::rightOption, "right_option", "⌥R", false, Modifier::option},
};

TEST(Modifier, hasTheEightModifiersInCanonicalOrder) {
  ASSERT_EQ(Modifier::allCases.size(), agreedModifiers.size());
  for (std::size_t i = 0; i < agreedModifiers.size(); ++i) {
    EXPECT_EQ(Modifier::allCases[i], agreedModifiers[i].modifier);
    EXPECT_EQ(static_cast<std::size_t>(agreedModifiers[i].modifier), i);
  }
}

TEST(Modifier, hasTheAgreedValuesInEveryColumn) {
  for (const AgreedModifier& agreed : agreedModifiers) {
    SCOPED_TRACE(agreed.rawValue);
    EXPECT_EQ(agreed.modifier.rawValue(), agreed.rawValue);
    EXPECT_EQ(agreed.modifier.symbol(), agreed.symbol);
    EXPECT_EQ(agreed.modifier.isLeft(), agreed.isLeft);
    EXPECT_EQ(agreed.modifier.oppositeSide(), agreed.oppositeSide);
  }
}

TEST(Modifier, isFoundByItsRawValue) {
  for (const AgreedModifier& agreed : agreedModifiers)
    EXPECT_EQ(Modifier::fromRawValue(agreed.rawValue), agreed.modifier) << agreed.rawValue;
}

TEST(Modifier, isNotFoundByAnythingElse) {
  for (const std::string_view text :
       {""sv, "command"sv, "rightCommand"sv, "Left_command"sv, "LEFT_COMMAND"sv, "left_command "sv,
        " left_command"sv, "left_command\0"sv, "left"sv, "left_"sv, "left_cmd"sv, "left_alt"sv,
        "left_fn"sv, "right"sv, "⌘"sv, "a"sv, "caps_lock"sv}) {
    EXPECT_EQ(Modifier::fromRawValue(text), std::nullopt) << '"' << text << '"';
  }
}

TEST(Modifier, sharesItsNameWithItsKey) {
  for (const AgreedModifier& agreed : agreedModifiers)
    EXPECT_EQ(agreed.modifier.keyName(), KeyName(agreed.rawValue));
}

TEST(Modifier, isOnTheOtherSideOfItsOpposite) {
  for (const Modifier modifier : Modifier::allCases) {
    EXPECT_NE(modifier.oppositeSide().isLeft(), modifier.isLeft());
    EXPECT_EQ(modifier.oppositeSide().oppositeSide(), modifier);
  }
}

} // namespace
} // namespace trellivar
