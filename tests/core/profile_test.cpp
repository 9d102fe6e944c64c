#include "core/profile.h"
#include "core/stored_signatures.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

const Output tapA{Output::Sequence{{Key{KeyName("a")}}}};
const Output tapB{Output::Sequence{{Key{KeyName("b")}}}};

TEST(KeyMapping, isIdentifiedByItsKey) {
  EXPECT_EQ((KeyMapping{7, tapA, std::nullopt}.id()), 7);
  EXPECT_EQ((KeyMapping{-7, tapA, std::nullopt}.id()), -7);
}

TEST(KeyMapping, differsByEveryField) {
  const KeyMapping mapping{1, tapA, "copy"};
  EXPECT_EQ(mapping, (KeyMapping{1, tapA, "copy"}));
  EXPECT_NE(mapping, (KeyMapping{2, tapA, "copy"}));
  EXPECT_NE(mapping, (KeyMapping{1, tapB, "copy"}));
  EXPECT_NE(mapping, (KeyMapping{1, tapA, "Copy"}));
  EXPECT_NE(mapping, (KeyMapping{1, tapA, std::nullopt}));
}

TEST(KeyMapping, differsWithAnEmptyLabelFromOneWithout) {
  EXPECT_NE((KeyMapping{1, tapA, ""}), (KeyMapping{1, tapA, std::nullopt}));
}

TEST(Profile, differsByEveryField) {
  const UUID id = UUID::random();
  const KeyMapping first{1, tapA, std::nullopt};
  const KeyMapping second{2, tapB, std::nullopt};
  const Profile profile{id, "P", {first, second}};
  EXPECT_EQ(profile, (Profile{id, "P", {first, second}}));
  EXPECT_NE(profile, (Profile{UUID::random(), "P", {first, second}}));
  EXPECT_NE(profile, (Profile{id, "p", {first, second}}));
  EXPECT_NE(profile, (Profile{id, "P", {second, first}}));
  EXPECT_NE(profile, (Profile{id, "P", {first}}));
}

TEST(MappingSet, isNotPortableUnlessTold) { EXPECT_FALSE(MappingSet().portable); }

TEST(MappingSet, differsByEveryField) {
  const TrellivarDevice device{"Pad", 1, 2, {}};
  const Profile profile{UUID::random(), "P", {}};
  const MappingSet set{device, profile, true};
  EXPECT_TRUE(set == (MappingSet{device, profile, true}));
  EXPECT_FALSE(set == (MappingSet{{"Pad", 1, 3, {}}, profile, true}));
  EXPECT_FALSE(set == (MappingSet{device, {profile.id, "M", {}}, true}));
  EXPECT_FALSE(set == (MappingSet{device, profile, false}));
}

TEST(StoredSignatures, differByEveryField) {
  const KeySignature a{{Key{KeyName("a")}}, false};
  const KeySignature b{{Key{KeyName("b")}}, false};
  const StoredKeySignature key{1, a};
  EXPECT_EQ(key, (StoredKeySignature{1, a}));
  EXPECT_NE(key, (StoredKeySignature{2, a}));
  EXPECT_NE(key, (StoredKeySignature{1, b}));
  const StoredDeviceSignatures record{1, 2, {key}, "P"};
  EXPECT_EQ(record, (StoredDeviceSignatures{1, 2, {key}, "P"}));
  EXPECT_NE(record, (StoredDeviceSignatures{2, 2, {key}, "P"}));
  EXPECT_NE(record, (StoredDeviceSignatures{1, 1, {key}, "P"}));
  EXPECT_NE(record, (StoredDeviceSignatures{1, 2, {}, "P"}));
  EXPECT_NE(record, (StoredDeviceSignatures{1, 2, {key}, "M"}));
  EXPECT_NE(record, (StoredDeviceSignatures{1, 2, {key}, std::nullopt}));
}

} // namespace
} // namespace trellivar
