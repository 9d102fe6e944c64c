#include "core/tap_event.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace trellivar {
namespace {

using namespace std::string_view_literals;
using Kind = TapEvent::Kind;

struct AgreedKind {
  Kind kind;
  std::string_view rawValue;
  bool isDown;
};

/// In the declared order.
constexpr std::array agreedKinds{
    AgreedKind{Kind::keyDown, "keyDown", true},
    AgreedKind{Kind::keyUp, "keyUp", false},
    AgreedKind{Kind::consumerDown, "consumerDown", true},
    AgreedKind{Kind::consumerUp, "consumerUp", false},
    AgreedKind{Kind::pointingDown, "pointingDown", true},
    AgreedKind{Kind::pointingUp, "pointingUp", false},
};

TEST(TapEventKind, hasTheSixKindsInTheirOrder) {
  ASSERT_EQ(TapEvent::allKinds.size(), agreedKinds.size());
  for (std::size_t i = 0; i < agreedKinds.size(); ++i) {
    EXPECT_EQ(TapEvent::allKinds[i], agreedKinds[i].kind);
    EXPECT_EQ(static_cast<std::size_t>(agreedKinds[i].kind), i);
  }
}

TEST(TapEventKind, isDownForThreeOfThem) {
  for (const AgreedKind& agreed : agreedKinds)
    EXPECT_EQ(isDown(agreed.kind), agreed.isDown) << agreed.rawValue;
}

TEST(TapEventKind, isWrittenAsTheNameOfItsCase) {
  for (const AgreedKind& agreed : agreedKinds) {
    EXPECT_EQ(rawValue(agreed.kind), agreed.rawValue);
    EXPECT_EQ(tapEventKindFromRawValue(agreed.rawValue), agreed.kind);
  }
}

TEST(TapEventKind, isNotFoundByAnythingElse) {
  for (const std::string_view text :
       {""sv, "keydown"sv, "KeyDown"sv, "keyDown "sv, " keyDown"sv, "keyDown\0"sv, "down"sv,
        "key"sv, "mouseDown"sv, "pointing"sv, "consumer"sv, "keyRepeat"sv}) {
    EXPECT_EQ(tapEventKindFromRawValue(text), std::nullopt) << '"' << text << '"';
  }
}

TEST(TapEvent, differsBySenderKindAndName) {
  const TapEvent event{42, Kind::keyDown, KeyName("a")};
  EXPECT_TRUE(event == (TapEvent{42, Kind::keyDown, KeyName("a")}));
  EXPECT_FALSE(event == (TapEvent{43, Kind::keyDown, KeyName("a")}));
  EXPECT_FALSE(event == (TapEvent{42, Kind::keyUp, KeyName("a")}));
  EXPECT_FALSE(event == (TapEvent{42, Kind::keyDown, KeyName("b")}));
}

} // namespace
} // namespace trellivar
