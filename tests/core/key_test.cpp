#include "core/key.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string_view>
#include <unordered_set>

namespace trellivar {
namespace {

using namespace std::string_view_literals;
using Kind = Key::Kind;

TEST(Key, isAnOrdinaryKeyByDefault) {
  EXPECT_EQ(Key().kind, Kind::keyCode);
  EXPECT_EQ(Key().keyCode, KeyName());
  EXPECT_EQ(Key{KeyName("a")}.kind, Kind::keyCode);
}

TEST(Key, differsByNameAndByKind) {
  const Key mute{KeyName("mute"), Kind::consumerKeyCode};
  EXPECT_EQ(mute, (Key{KeyName("mute"), Kind::consumerKeyCode}));
  EXPECT_NE(mute, (Key{KeyName("mute"), Kind::keyCode}));
  EXPECT_NE(mute, (Key{KeyName("rewind"), Kind::consumerKeyCode}));
}

TEST(Key, hashesByNameAndByKind) {
  const Key mute{KeyName("mute"), Kind::consumerKeyCode};
  const std::hash<Key> hash;
  EXPECT_EQ(hash(mute), hash(Key{KeyName("mute"), Kind::consumerKeyCode}));
  EXPECT_NE(hash(mute), hash(Key{KeyName("mute"), Kind::keyCode}));
  EXPECT_NE(hash(mute), hash(Key{KeyName("rewind"), Kind::consumerKeyCode}));
  EXPECT_EQ((std::unordered_set<Key>{mute, mute, Key{KeyName("mute")}}.size()), 2U);
}

RC_GTEST_PROP(Key, hashesEqualKeysAlike, (const Key& a)) {
  const Key b{KeyName(std::string(a.keyCode.text())), a.kind};
  RC_ASSERT(a == b);
  RC_ASSERT(std::hash<Key>{}(a) == std::hash<Key>{}(b));
}

struct KindRow {
  Kind kind;
  std::string_view rawValue;
};

/// In the stored order.
constexpr std::array kinds{
    KindRow{Kind::keyCode, "keyCode"},
    KindRow{Kind::consumerKeyCode, "consumerKeyCode"},
    KindRow{Kind::pointingButton, "pointingButton"},
    KindRow{Kind::unmappable, "unmappable"},
};

TEST(KeyKind, hasTheFourKindsInStoredOrder) {
  ASSERT_EQ(Key::allKinds.size(), kinds.size());
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    EXPECT_EQ(Key::allKinds[i], kinds[i].kind);
    EXPECT_EQ(static_cast<std::size_t>(kinds[i].kind), i);
  }
}

TEST(KeyKind, isPersistedAsTheNameOfItsCase) {
  for (const KindRow& row : kinds) {
    EXPECT_EQ(rawValue(row.kind), row.rawValue);
    EXPECT_EQ(kindFromRawValue(row.rawValue), row.kind);
  }
}

TEST(KeyKind, isNotFoundByAnythingElse) {
  for (const std::string_view text :
       {""sv, "keycode"sv, "KeyCode"sv, "keyCode "sv, " keyCode"sv, "keyCode\0"sv, "key"sv,
        "keyCodes"sv, "consumerKeycode"sv, "consumer"sv, "pointing"sv, "button"sv, "unmapped"sv,
        "Unmappable"sv, "0"sv}) {
    EXPECT_EQ(kindFromRawValue(text), std::nullopt) << '"' << text << '"';
  }
}

} // namespace
} // namespace trellivar
