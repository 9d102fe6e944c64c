#include "core/known_devices.h"
#include "core/mode_sets.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

constexpr DeviceIdentity cable{0x4C4A, 0x4155};
constexpr DeviceIdentity bluetoothP{0x04E8, 0x7021};
constexpr DeviceIdentity bluetoothM{0x05AC, 0x0220};
constexpr DeviceIdentity unknown{7, 9};

KeySignature signatureOf(std::string_view name) {
  return {{{KeyName(name), Key::Kind::keyCode}}, false};
}

/// A device whose key 1 has been learned as `name`.
TrellivarDevice learned(std::string_view name, DeviceIdentity identity,
                        std::string_view called = "My pad") {
  return {std::string(called),
          identity.vendorId,
          identity.productId,
          {{{.id = 1, .row = 0, .col = 0, .signature = signatureOf(name)}}}};
}

StoredDeviceSignatures record(DeviceIdentity identity, std::optional<std::string> modeId,
                              std::string_view name) {
  return {identity.vendorId, identity.productId, {{1, signatureOf(name)}}, std::move(modeId)};
}

Profile profile(std::string name) { return {UUID::random(), std::move(name), {}}; }

class ModeSets : public testing::Test {
protected:
  std::vector<MappingSet> setsFor(const TrellivarDevice& device) const {
    return setsForAllModes(device, profiles_, stored_, portable_);
  }

  /// "P 19530:16725" for each set, with "portable" where it is.
  std::vector<std::string> outlined(const TrellivarDevice& device) const {
    std::vector<std::string> result;
    for (const MappingSet& set : setsFor(device))
      result.push_back(set.profile.name + " " + std::to_string(set.device.vendorId) + ":" +
                       std::to_string(set.device.productId) + (set.portable ? " portable" : ""));
    return result;
  }
  using Outline = std::vector<std::string>;

  std::vector<Profile> profiles_{profile("P"), profile("M"), profile("R")};
  std::vector<StoredDeviceSignatures> stored_;
  std::set<std::string> portable_;
};

TEST_F(ModeSets, workStartsWithThePadOnTheCableInItsFirstMode) {
  const TrellivarDevice device = initialDevice();
  EXPECT_EQ(device.name, "Orlo3");
  EXPECT_EQ(device.identity(), cable);
  EXPECT_EQ(device.layout, KnownDevices::copyPasteCutLayout(KeyName("left_control")));
}

TEST_F(ModeSets, theProfileOfTheDevicesOwnModeIsBoundToTheDeviceAsItIs) {
  const TrellivarDevice device = learned("q", bluetoothP);
  const auto sets = setsFor(device);
  ASSERT_EQ(sets.size(), 2U);
  EXPECT_EQ(sets[0], (MappingSet{device, profiles_[0], false}));
}

TEST_F(ModeSets, anotherModeIsBoundToItsFirstTransport) {
  EXPECT_EQ(outlined(learned("q", cable)), (Outline{"P 19530:16725", "M 1452:544"}));
  EXPECT_EQ(outlined(learned("q", bluetoothM)), (Outline{"P 19530:16725", "M 1452:544"}));
  const auto sets = setsFor(learned("q", bluetoothM));
  EXPECT_EQ(sets[0].device, initialDevice()) << "not what was learned in mode M";
}

TEST_F(ModeSets, aModeWithoutTransportsIsBoundOnlyWhileTheDeviceIsInIt) {
  const TrellivarDevice device = learned("q", unknown, "orlo3-R");
  EXPECT_EQ(outlined(device), (Outline{"P 19530:16725", "M 1452:544", "R 7:9"}));
  EXPECT_EQ(setsFor(device)[2].device, device);
}

TEST_F(ModeSets, anIdentityTellsMoreThanAName) {
  EXPECT_EQ(outlined(learned("q", bluetoothM, "Orlo3-R")),
            (Outline{"P 19530:16725", "M 1452:544"}));
}

TEST_F(ModeSets, whatWasLearnedInAnotherModeCountsThere) {
  stored_ = {record(bluetoothM, "M", "m"), record(cable, "P", "p")};
  const auto atR = setsFor(learned("q", unknown, "Orlo3-R"));
  ASSERT_EQ(atR.size(), 3U);
  EXPECT_EQ(atR[0].device.layout.keys[0].signature, signatureOf("p"));
  EXPECT_EQ(atR[1].device.layout.keys[0].signature, signatureOf("m"));
  EXPECT_EQ(atR[1].device.layout.keys.size(), 3U) << "the rest is the mode's own";
  EXPECT_EQ(atR[2].device.layout.keys[0].signature, signatureOf("q"));
}

TEST_F(ModeSets, whatWasLearnedElsewhereDoesNotCount) {
  stored_ = {record(bluetoothM, "P", "wrong mode"), record(bluetoothM, std::nullopt, "no mode"),
             record(bluetoothP, "M", "other identity"), record({0x05AC, 0x0221}, "M", "product"),
             record({0x05AD, 0x0220}, "M", "vendor")};
  const auto sets = setsFor(learned("q", cable));
  ASSERT_EQ(sets.size(), 2U);
  EXPECT_TRUE(sets[1].device.layout.keys[0].signature.codes.empty());
}

TEST_F(ModeSets, aRecordOfTheRightModeIsFoundBehindOthers) {
  stored_ = {record(bluetoothM, "P", "wrong mode"), record(bluetoothM, std::nullopt, "no mode"),
             record(bluetoothM, "M", "m")};
  EXPECT_EQ(setsFor(learned("q", cable))[1].device.layout.keys[0].signature, signatureOf("m"));
}

TEST_F(ModeSets, storedSignaturesDoNotReplaceThoseOfTheDevice) {
  stored_ = {record(cable, "P", "stored")};
  EXPECT_EQ(setsFor(learned("q", cable))[0].device.layout.keys[0].signature, signatureOf("q"));
}

TEST_F(ModeSets, aProfileOfNoModeIsLeftOut) {
  profiles_ = {profile("Games"), profile("p"), profile("M"), profile("")};
  EXPECT_EQ(outlined(learned("q", cable)), Outline{"M 1452:544"});
}

TEST_F(ModeSets, profilesKeepTheirOrder) {
  profiles_ = {profile("M"), profile("P"), profile("M")};
  EXPECT_EQ(outlined(learned("q", cable)), (Outline{"M 1452:544", "P 19530:16725", "M 1452:544"}));
  const auto sets = setsFor(learned("q", cable));
  EXPECT_EQ(sets[0].profile.id, profiles_[0].id);
  EXPECT_EQ(sets[2].profile.id, profiles_[2].id);
}

TEST_F(ModeSets, withoutProfilesThereIsNothing) {
  profiles_.clear();
  EXPECT_EQ(outlined(learned("q", cable)), Outline{});
  EXPECT_EQ(outlined(learned("q", unknown)), Outline{});
}

TEST_F(ModeSets, aDeviceThatIsNoKnownPadGetsEveryProfile) {
  profiles_.push_back(profile("Games"));
  const TrellivarDevice device = learned("q", unknown);
  EXPECT_EQ(outlined(device), (Outline{"P 7:9", "M 7:9", "R 7:9", "Games 7:9"}));
  for (const MappingSet& set : setsFor(device))
    EXPECT_EQ(set.device, device);
}

TEST_F(ModeSets, aRecordWithAModeMakesAnUnknownDeviceNoKnownPad) {
  stored_ = {record(unknown, "P", "p"), record(cable, "P", "p")};
  EXPECT_EQ(outlined(learned("q", unknown)), (Outline{"P 7:9", "M 7:9", "R 7:9"}));
}

TEST_F(ModeSets, aPortableModeIsLetThroughOnEachOfItsTransports) {
  portable_ = {"P"};
  EXPECT_EQ(outlined(learned("q", cable)),
            (Outline{"P 19530:16725 portable", "P 1256:28705 portable", "P 1452:556 portable",
                     "P 19530:16725", "M 1452:544"}));
  const auto sets = setsFor(learned("q", cable));
  const KnownMode& mode = *KnownDevices::all().front().mode("P");
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(sets[i].device.layout, mode.transports[i].layout) << "as the factory made it";
    EXPECT_EQ(sets[i].profile, profiles_[0]);
  }
}

TEST_F(ModeSets, aPortableModeIsLetThroughWhicheverModeThePadIsIn) {
  portable_ = {"M", "R"};
  EXPECT_EQ(outlined(learned("q", bluetoothP)),
            (Outline{"P 1256:28705", "M 1452:544 portable", "M 1452:544"}));
  EXPECT_EQ(outlined(learned("q", unknown, "Orlo3-R")),
            (Outline{"P 19530:16725", "M 1452:544 portable", "M 1452:544", "R 7:9"}))
      << "R has no transports that could be let through";
}

TEST_F(ModeSets, aPortableNameThatIsNoProfileOrNoModeChangesNothing) {
  portable_ = {"P", "Games", "m"};
  profiles_ = {profile("M"), profile("Games")};
  EXPECT_EQ(outlined(learned("q", cable)), Outline{"M 1452:544"});
}

TEST_F(ModeSets, aDeviceThatIsNoKnownPadHasNothingPortable) {
  portable_ = {"P", "M", "R"};
  EXPECT_EQ(outlined(learned("q", unknown)), (Outline{"P 7:9", "M 7:9", "R 7:9"}));
}

} // namespace
} // namespace trellivar
