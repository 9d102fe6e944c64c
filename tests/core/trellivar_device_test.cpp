#include "core/known_devices.h"
#include "core/stored_signatures.h"
#include "core/trellivar_device.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

KeySignature single(std::string_view name) { return {{Key{KeyName(name)}}, false}; }

/// Three keys: 1 with an alternative signature, 2 with a plain one, 3 without any.
TrellivarDevice pad() {
  return {"Pad",
          1,
          2,
          {{{1, 0, 0, single("a"), {single("b")}},
            {2, 0, 1, single("c"), {}},
            {3, 0, 2, {}, {single("d")}}}}};
}

TEST(TrellivarDevice, hasTheIdentityOfItsIds) {
  EXPECT_EQ(pad().identity(), (DeviceIdentity{1, 2}));
}

TEST(TrellivarDevice, differsByEveryField) {
  EXPECT_EQ(pad(), pad());
  TrellivarDevice other = pad();
  other.name = "pad";
  EXPECT_NE(other, pad());
  other = pad();
  other.vendorId = 2;
  EXPECT_NE(other, pad());
  other = pad();
  other.productId = 1;
  EXPECT_NE(other, pad());
  other = pad();
  other.layout.keys.pop_back();
  EXPECT_NE(other, pad());
}

TEST(TrellivarDevice, carriesALearnedSignatureInPlaceOfAllDefaults) {
  TrellivarDevice expected = pad();
  expected.layout.keys[0] = {1, 0, 0, single("x"), {}};
  EXPECT_EQ(pad().updatingSignature(1, single("x")), expected);
}

TEST(TrellivarDevice, losesTheAlternativeSignatureOfTheWirelessSpacebarWhenLearned) {
  const TrellivarDevice device{"Orlo3", 0x04E8, 0x7021, *KnownDevices::layout(0x04E8, 0x7021)};
  ASSERT_EQ(device.layout.keys[0].altSignatures,
            (std::vector<KeySignature>{{{Key{KeyName("z")}, Key{KeyName("left_option")}}, true}}));
  const TrellivarDevice learned = device.updatingSignature(1, single("f5"));
  EXPECT_EQ(learned.layout.keys[0], (PhysicalKey{1, 0, 0, single("f5"), {}}));
  EXPECT_EQ(learned.layout.keys[1], device.layout.keys[1]);
  EXPECT_EQ(learned.layout.keys[2], device.layout.keys[2]);
}

TEST(TrellivarDevice, losesAlternativesEvenWhenTheLearnedSignatureIsTheDefault) {
  EXPECT_TRUE(pad().updatingSignature(1, single("a")).layout.keys[0].altSignatures.empty());
}

TEST(TrellivarDevice, staysAsItIsWhileACopyLearns) {
  const TrellivarDevice device = pad();
  EXPECT_NE(device.updatingSignature(1, single("x")), device);
  EXPECT_EQ(device, pad());
}

TEST(TrellivarDevice, staysEqualWhenNoKeyHasTheId) {
  EXPECT_EQ(pad().updatingSignature(4, single("x")), pad());
  EXPECT_EQ(pad().updatingSignature(0, single("x")), pad());
}

RC_GTEST_PROP(TrellivarDevice, learnsNothingButTheOneSignature,
              (TrellivarDevice device, const KeySignature& signature)) {
  for (std::size_t i = 0; i < device.layout.keys.size(); ++i)
    device.layout.keys[i].id = static_cast<int>(i);
  const int learnedId = *rc::gen::inRange(-1, 5);
  const TrellivarDevice learned = device.updatingSignature(learnedId, signature);
  TrellivarDevice expected = device;
  for (PhysicalKey& key : expected.layout.keys) {
    if (key.id == learnedId) key = {key.id, key.row, key.col, signature, {}};
  }
  RC_ASSERT(learned == expected);
}

TEST(TrellivarDevice, storesTheKeysThatHaveASignatureInLayoutOrder) {
  TrellivarDevice device = pad();
  std::ranges::reverse(device.layout.keys);
  const StoredDeviceSignatures expected{1, 2, {{2, single("c")}, {1, single("a")}}, std::nullopt};
  EXPECT_EQ(device.storedSignatures(), expected);
}

TEST(TrellivarDevice, storesNothingWhenNoKeyHasASignature) {
  TrellivarDevice device = pad();
  device.layout.keys.erase(device.layout.keys.begin(), device.layout.keys.begin() + 2);
  EXPECT_EQ(device.storedSignatures(), std::nullopt);
  device.layout.keys.clear();
  EXPECT_EQ(device.storedSignatures(), std::nullopt);
}

TEST(TrellivarDevice, storesNoKeyWithoutCodesEvenIfItIsAChord) {
  TrellivarDevice device = pad();
  device.layout.keys = {{1, 0, 0, {{}, true}, {}}};
  EXPECT_EQ(device.storedSignatures(), std::nullopt);
}

TEST(TrellivarDevice, appliesTheSignaturesStoredForItsIdentity) {
  const std::vector<StoredDeviceSignatures> records{
      {1, 3, {{1, single("wrong")}}, std::nullopt},
      {3, 2, {{1, single("wrong")}}, std::nullopt},
      {2, 1, {{1, single("wrong")}}, std::nullopt},
      {1, 2, {{1, single("x")}, {3, single("y")}}, std::nullopt},
  };
  TrellivarDevice expected = pad();
  expected.layout.keys[0] = {1, 0, 0, single("x"), {}};
  expected.layout.keys[2] = {3, 0, 2, single("y"), {}};
  EXPECT_EQ(pad().applyingStoredSignatures(records), expected);
}

TEST(TrellivarDevice, appliesTheFirstRecordWhateverItsMode) {
  const std::vector<StoredDeviceSignatures> records{
      {1, 2, {{1, single("first")}}, "R"},
      {1, 2, {{1, single("second")}, {2, single("second")}}, "P"},
      {1, 2, {{1, single("third")}}, std::nullopt},
  };
  TrellivarDevice expected = pad();
  expected.layout.keys[0] = {1, 0, 0, single("first"), {}};
  EXPECT_EQ(pad().applyingStoredSignatures(records), expected);
}

TEST(TrellivarDevice, ignoresStoredKeysThatTheLayoutLacks) {
  const std::vector<StoredDeviceSignatures> records{
      {1, 2, {{9, single("x")}, {2, single("y")}}, std::nullopt}};
  TrellivarDevice expected = pad();
  expected.layout.keys[1] = {2, 0, 1, single("y"), {}};
  EXPECT_EQ(pad().applyingStoredSignatures(records), expected);
}

TEST(TrellivarDevice, staysUnchangedWithoutAMatchingRecord) {
  EXPECT_EQ(pad().applyingStoredSignatures({}), pad());
  const std::vector<StoredDeviceSignatures> records{{7, 7, {{1, single("x")}}, std::nullopt}};
  EXPECT_EQ(pad().applyingStoredSignatures(records), pad());
}

RC_GTEST_PROP(TrellivarDevice, findsItsOwnStoredSignaturesAgain, (TrellivarDevice device)) {
  for (std::size_t i = 0; i < device.layout.keys.size(); ++i)
    device.layout.keys[i].id = static_cast<int>(i);
  const auto stored = device.storedSignatures();
  const bool hasSignature = std::ranges::any_of(
      device.layout.keys, [](const PhysicalKey& key) { return !key.signature.codes.empty(); });
  RC_ASSERT(stored.has_value() == hasSignature);
  RC_PRE(hasSignature);
  RC_ASSERT(!stored->modeId);

  TrellivarDevice forgetful = device;
  for (PhysicalKey& key : forgetful.layout.keys)
    key.signature = {};
  TrellivarDevice expected = device;
  for (std::size_t i = 0; i < expected.layout.keys.size(); ++i) {
    if (expected.layout.keys[i].signature.codes.empty())
      expected.layout.keys[i] = forgetful.layout.keys[i];
    else
      expected.layout.keys[i].altSignatures.clear();
  }
  const std::vector<StoredDeviceSignatures> records{*stored};
  RC_ASSERT(forgetful.applyingStoredSignatures(records) == expected);
}

} // namespace
} // namespace trellivar
