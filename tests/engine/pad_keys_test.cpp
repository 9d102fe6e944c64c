#include "engine/pad_keys.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace trellivar {
namespace {

constexpr DeviceIdentity somePad{7, 9};

std::set<std::string> namesOf(const PadKeys& keys) {
  std::set<std::string> names;
  for (const PadKeys::Key& key : keys.all())
    names.insert(key.name.text() + "@" + std::to_string(key.sender));
  return names;
}

TEST(PadKeys, holdWhatIsPressedUntilItIsReleased) {
  PadKeys keys;
  keys.press(1, somePad, KeyName("a"));
  keys.press(1, somePad, KeyName("b"));
  EXPECT_EQ(namesOf(keys), (std::set<std::string>{"a@1", "b@1"}));
  keys.release(1, KeyName("a"));
  EXPECT_EQ(namesOf(keys), std::set<std::string>{"b@1"});
  EXPECT_EQ(keys.find(1, KeyName("a")), nullptr);
  ASSERT_NE(keys.find(1, KeyName("b")), nullptr);
  EXPECT_EQ(keys.find(1, KeyName("b"))->device, somePad);
}

TEST(PadKeys, aPressedKeyHasNotBeenSeenByApplications) {
  PadKeys keys;
  EXPECT_EQ(keys.press(1, somePad, KeyName("a")).deliveredAs, std::nullopt);
}

TEST(PadKeys, aRepeatedPressKeepsWhatIsKnown) {
  PadKeys keys;
  keys.press(1, somePad, KeyName("a")).deliveredAs = KeyName("x");
  EXPECT_EQ(keys.press(1, somePad, KeyName("a")).deliveredAs, KeyName("x"));
  EXPECT_EQ(keys.all().size(), 1U);
  keys.release(1, KeyName("a"));
  EXPECT_EQ(keys.press(1, somePad, KeyName("a")).deliveredAs, std::nullopt) << "a press afresh";
}

TEST(PadKeys, theSameKeyOfTwoSendersIsTwoKeys) {
  PadKeys keys;
  keys.press(1, somePad, KeyName("a")).deliveredAs = KeyName("x");
  keys.press(2, {7, 10}, KeyName("a"));
  EXPECT_EQ(keys.find(2, KeyName("a"))->deliveredAs, std::nullopt);
  EXPECT_EQ(keys.find(2, KeyName("a"))->device, (DeviceIdentity{7, 10}));
  keys.release(2, KeyName("a"));
  EXPECT_EQ(namesOf(keys), std::set<std::string>{"a@1"});
  EXPECT_EQ(keys.find(1, KeyName("a"))->deliveredAs, KeyName("x"));
}

TEST(PadKeys, aReleaseWithoutAPressChangesNothing) {
  PadKeys keys;
  keys.release(1, KeyName("a"));
  keys.press(1, somePad, KeyName("a"));
  keys.release(2, KeyName("a"));
  keys.release(1, KeyName("b"));
  EXPECT_EQ(namesOf(keys), std::set<std::string>{"a@1"});
}

TEST(PadKeys, manyKeysAreHeldAtOnce) {
  PadKeys keys;
  std::set<std::string> expected;
  for (int i = 0; i < 50; ++i) {
    keys.press(i, somePad, KeyName("a"));
    if (i % 3 != 0) expected.insert("a@" + std::to_string(i));
  }
  for (int i = 0; i < 50; i += 3)
    keys.release(i, KeyName("a"));
  EXPECT_EQ(namesOf(keys), expected);
}

} // namespace
} // namespace trellivar
