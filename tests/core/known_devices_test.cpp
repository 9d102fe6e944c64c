#include "core/known_devices.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using namespace std::string_view_literals;

constexpr DeviceIdentity usbP{0x4C4A, 0x4155};
constexpr DeviceIdentity bluetoothP{0x04E8, 0x7021};
constexpr DeviceIdentity otherBluetoothP{0x05AC, 0x022C};
constexpr DeviceIdentity bluetoothM{0x05AC, 0x0220};
const std::vector<DeviceIdentity> identitiesOfP{usbP, bluetoothP, otherBluetoothP};

Key plainKey(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }
Key media(std::string_view name) { return {KeyName(name), Key::Kind::consumerKeyCode}; }

KeyLayout copyPasteCut(std::string_view modifier) {
  return KeyLayout{{
      PhysicalKey{1, 0, 0, KeySignature{{plainKey("c"), plainKey(modifier)}, true}, {}},
      PhysicalKey{2, 0, 1, KeySignature{{plainKey("v"), plainKey(modifier)}, true}, {}},
      PhysicalKey{3, 0, 2, KeySignature{{plainKey("x"), plainKey(modifier)}, true}, {}},
  }};
}

KeyLayout bluetoothPLayout() {
  return KeyLayout{{
      PhysicalKey{1,
                  0,
                  0,
                  KeySignature{{plainKey("spacebar")}, false},
                  {KeySignature{{plainKey("z"), plainKey("left_option")}, true}}},
      PhysicalKey{2, 0, 1, KeySignature{{media("volume_decrement")}, false}, {}},
      PhysicalKey{3, 0, 2, KeySignature{{media("volume_increment")}, false}, {}},
  }};
}

KeyLayout emptyThreeKeys() {
  return KeyLayout{{
      PhysicalKey{1, 0, 0, KeySignature{{}, false}, {}},
      PhysicalKey{2, 0, 1, KeySignature{{}, false}, {}},
      PhysicalKey{3, 0, 2, KeySignature{{}, false}, {}},
  }};
}

const KnownDevice& orlo3() { return KnownDevices::all().front(); }

TEST(KnownDevices, holdOneDeviceWithItsModesInOrder) {
  ASSERT_EQ(KnownDevices::all().size(), 1U);
  EXPECT_EQ(orlo3().name, "Orlo3");
  ASSERT_EQ(orlo3().modes.size(), 3U);
  EXPECT_EQ(orlo3().modes[0].id, "P");
  EXPECT_EQ(orlo3().modes[1].id, "M");
  EXPECT_EQ(orlo3().modes[2].id, "R");
}

TEST(KnownDevices, holdTheAgreedTransportsOfModeP) {
  const auto& transports = orlo3().modes.at(0).transports;
  ASSERT_EQ(transports.size(), 3U);
  EXPECT_EQ(transports[0].identity, usbP);
  EXPECT_TRUE(transports[0].isUSB);
  EXPECT_EQ(transports[0].layout, copyPasteCut("left_control"));
  EXPECT_EQ(transports[1].identity, bluetoothP);
  EXPECT_FALSE(transports[1].isUSB);
  EXPECT_EQ(transports[1].layout, bluetoothPLayout());
  EXPECT_EQ(transports[2].identity, otherBluetoothP);
  EXPECT_FALSE(transports[2].isUSB);
  EXPECT_EQ(transports[2].layout, bluetoothPLayout());
}

TEST(KnownDevices, holdTheAgreedTransportOfModeM) {
  const auto& transports = orlo3().modes.at(1).transports;
  ASSERT_EQ(transports.size(), 1U);
  EXPECT_EQ(transports[0].identity, bluetoothM);
  EXPECT_FALSE(transports[0].isUSB);
  EXPECT_EQ(transports[0].layout, emptyThreeKeys());
}

TEST(KnownDevices, holdNoTransportOfModeR) { EXPECT_TRUE(orlo3().modes.at(2).transports.empty()); }

TEST(KnownDevices, areBuiltOnce) { EXPECT_EQ(&KnownDevices::all(), &KnownDevices::all()); }

TEST(KnownDevices, makeTheCopyPasteCutLayoutForAnyModifier) {
  for (const char* modifier : {"left_control", "left_command", "right_option", "anything"})
    EXPECT_EQ(KnownDevices::copyPasteCutLayout(KeyName(modifier)), copyPasteCut(modifier));
}

TEST(KnownDevices, knowAPadByEveryIdentityOfModeP) {
  for (const DeviceIdentity& identity : identitiesOfP) {
    EXPECT_EQ(KnownDevices::known(identity.vendorId, identity.productId), &orlo3());
    EXPECT_TRUE(KnownDevices::isKnown(identity.vendorId, identity.productId));
  }
}

TEST(KnownDevices, knowNoPadByTheIdentityOfModeM) {
  EXPECT_EQ(KnownDevices::known(0x05AC, 0x0220), nullptr);
  EXPECT_FALSE(KnownDevices::isKnown(0x05AC, 0x0220));
  EXPECT_EQ(KnownDevices::layout(0x05AC, 0x0220), std::nullopt);
  EXPECT_TRUE(KnownDevices::identities(0x05AC, 0x0220).empty());
  EXPECT_TRUE(KnownDevices::transports(0x05AC, 0x0220).empty());
}

TEST(KnownDevices, findAPadAcrossModesByEveryIdentity) {
  for (const DeviceIdentity& identity : {usbP, bluetoothP, otherBluetoothP, bluetoothM})
    EXPECT_EQ(KnownDevices::knownAcrossModes(identity.vendorId, identity.productId), &orlo3());
}

/// The resolution as "device/mode".
std::string resolved(int vendorId, int productId, std::string_view name) {
  const auto resolution = KnownDevices::resolve(vendorId, productId, name);
  if (!resolution) return "none";
  EXPECT_EQ(resolution->device, &orlo3());
  return resolution->device->name + '/' + resolution->modeId;
}

TEST(KnownDevices, resolveEveryIdentityToItsMode) {
  for (const DeviceIdentity& identity : identitiesOfP)
    EXPECT_EQ(resolved(identity.vendorId, identity.productId, ""), "Orlo3/P");
  EXPECT_EQ(resolved(0x05AC, 0x0220, ""), "Orlo3/M");
}

TEST(KnownDevices, resolveANameWhereTheIdentityIsUnknown) {
  EXPECT_EQ(resolved(1, 2, "Orlo3-P"), "Orlo3/P");
  EXPECT_EQ(resolved(1, 2, "Orlo3-M"), "Orlo3/M");
  EXPECT_EQ(resolved(1, 2, "Orlo3-R"), "Orlo3/R");
}

TEST(KnownDevices, resolveANameInAnyCase) {
  EXPECT_EQ(resolved(1, 2, "orlo3-r"), "Orlo3/R");
  EXPECT_EQ(resolved(1, 2, "ORLO3-R"), "Orlo3/R");
  EXPECT_EQ(resolved(1, 2, "oRLo3-m"), "Orlo3/M");
  EXPECT_EQ(resolved(1, 2, "ORLO3-p"), "Orlo3/P");
}

TEST(KnownDevices, preferTheIdentityToTheName) {
  EXPECT_EQ(resolved(0x05AC, 0x0220, "Orlo3-R"), "Orlo3/M");
  EXPECT_EQ(resolved(0x4C4A, 0x4155, "Orlo3-M"), "Orlo3/P");
}

TEST(KnownDevices, resolveNothingElse) {
  for (const std::string_view name :
       {""sv,          "Orlo3"sv,    "Orlo3-"sv,  "Orlo3-X"sv, "Orlo3-PM"sv, "Orlo3-P "sv,
        " Orlo3-P"sv,  "Orlo3 P"sv,  "Orlo3P"sv,  "Orlo3_P"sv, "Orlo-P"sv,   "Orlo33-P"sv,
        "Orlo3--P"sv,  "-P"sv,       "P"sv,       "M"sv,       "R"sv,        "XOrlo3-P"sv,
        "Orlo3-P\0"sv, "Orlo3\rP"sv, "Orlo3Mp"sv, "Orlos-P"sv, "[rlo3-P"sv}) {
    EXPECT_EQ(resolved(1, 2, name), "none") << '"' << name << '"';
  }
}

TEST(KnownDevices, giveTheDefaultLayoutOfAnIdentityOfModeP) {
  EXPECT_EQ(KnownDevices::layout(0x4C4A, 0x4155), copyPasteCut("left_control"));
  EXPECT_EQ(KnownDevices::layout(0x04E8, 0x7021), bluetoothPLayout());
  EXPECT_EQ(KnownDevices::layout(0x05AC, 0x022C), bluetoothPLayout());
}

TEST(KnownDevices, giveTheDefaultLayoutOfAnIdentityOfAnyModeWhenThereIsAName) {
  EXPECT_EQ(KnownDevices::layout(0x4C4A, 0x4155, ""), copyPasteCut("left_control"));
  EXPECT_EQ(KnownDevices::layout(0x04E8, 0x7021, ""), bluetoothPLayout());
  EXPECT_EQ(KnownDevices::layout(0x05AC, 0x022C, "Orlo3-R"), bluetoothPLayout());
  EXPECT_EQ(KnownDevices::layout(0x05AC, 0x0220, ""), emptyThreeKeys());
  EXPECT_EQ(KnownDevices::layout(0x05AC, 0x0220, "Orlo3-P"), emptyThreeKeys());
}

TEST(KnownDevices, giveTheFirstLayoutOfTheModeThatTheNameTells) {
  EXPECT_EQ(KnownDevices::layout(1, 2, "orlo3-p"), copyPasteCut("left_control"));
  EXPECT_EQ(KnownDevices::layout(1, 2, "Orlo3-M"), emptyThreeKeys());
  EXPECT_EQ(KnownDevices::layout(1, 2, "Orlo3-R"), std::nullopt);
  EXPECT_EQ(KnownDevices::layout(1, 2, "Orlo3"), std::nullopt);
  EXPECT_EQ(KnownDevices::layout(1, 2, ""), std::nullopt);
}

TEST(KnownDevices, listAllIdentitiesOfModePForEachOfThem) {
  EXPECT_EQ(KnownDevices::identities(0x04E8, 0x7021), identitiesOfP);
  for (const DeviceIdentity& identity : identitiesOfP) {
    EXPECT_EQ(KnownDevices::identities(identity.vendorId, identity.productId), identitiesOfP);
    EXPECT_EQ(KnownDevices::transports(identity.vendorId, identity.productId),
              orlo3().modes.at(0).transports);
  }
}

RC_GTEST_PROP(KnownDevices, knowNothingOfAnIdentityThatIsNotInTheTable, ()) {
  // Vendor and product ids of the table in wrong pairs, and other numbers.
  const auto id = rc::gen::oneOf(
      rc::gen::elementOf(std::vector{0x4C4A, 0x4155, 0x04E8, 0x7021, 0x05AC, 0x022C, 0x0220, 0}),
      generate::integer<int>());
  const DeviceIdentity identity{*id, *id};
  RC_PRE(std::ranges::find(identitiesOfP, identity) == identitiesOfP.end());
  RC_PRE(identity != bluetoothM);
  const auto [vendorId, productId] = identity;
  RC_ASSERT(KnownDevices::known(vendorId, productId) == nullptr);
  RC_ASSERT(KnownDevices::knownAcrossModes(vendorId, productId) == nullptr);
  RC_ASSERT(!KnownDevices::isKnown(vendorId, productId));
  RC_ASSERT(!KnownDevices::layout(vendorId, productId));
  RC_ASSERT(!KnownDevices::layout(vendorId, productId, ""));
  RC_ASSERT(!KnownDevices::resolve(vendorId, productId, ""));
  RC_ASSERT(KnownDevices::identities(vendorId, productId).empty());
  RC_ASSERT(KnownDevices::transports(vendorId, productId).empty());
}

// Devices of other shapes than the one in the registry.

KnownTransport transport(int vendorId, int productId) { return {{vendorId, productId}, {}, false}; }

TEST(KnownDevice, hasModePForItsPrimaryModeWhereverItStands) {
  const KnownDevice device{"Pad",
                           {{"M", {transport(1, 1)}}, {"P", {transport(2, 2), transport(3, 3)}}}};
  EXPECT_EQ(device.primaryMode(), &device.modes[1]);
  EXPECT_EQ(device.transports(), device.modes[1].transports);
  EXPECT_EQ(device.identities(), (std::vector<DeviceIdentity>{{2, 2}, {3, 3}}));
  EXPECT_TRUE(device.matches(3, 3));
  EXPECT_FALSE(device.matches(1, 1));
  EXPECT_EQ(device.transport(3, 3), &device.modes[1].transports[1]);
  EXPECT_EQ(device.transport(1, 1), nullptr);
}

TEST(KnownDevice, hasItsFirstModeForPrimaryWithoutP) {
  const KnownDevice device{"Pad", {{"p", {transport(1, 1)}}, {"M", {transport(2, 2)}}}};
  EXPECT_EQ(device.primaryMode(), &device.modes.front());
  EXPECT_EQ(device.identities(), (std::vector<DeviceIdentity>{{1, 1}}));
  EXPECT_TRUE(device.matches(1, 1));
  EXPECT_FALSE(device.matches(2, 2));
}

TEST(KnownDevice, hasNothingWithoutModes) {
  const KnownDevice device{"Pad", {}};
  EXPECT_EQ(device.primaryMode(), nullptr);
  EXPECT_TRUE(device.transports().empty());
  EXPECT_TRUE(device.identities().empty());
  EXPECT_FALSE(device.matches(0, 0));
  EXPECT_EQ(device.transport(0, 0), nullptr);
  EXPECT_EQ(device.mode("P"), nullptr);
}

TEST(KnownDevice, matchesBothPartsOfAnIdentity) {
  const KnownDevice device{"Pad", {{"P", {transport(1, 2), transport(3, 4)}}}};
  EXPECT_TRUE(device.matches(1, 2));
  EXPECT_FALSE(device.matches(1, 4));
  EXPECT_FALSE(device.matches(3, 2));
  EXPECT_FALSE(device.matches(2, 1));
}

TEST(KnownDevice, findsAModeByTheExactNameOfItsProfile) {
  EXPECT_EQ(orlo3().mode("P"), &orlo3().modes.front());
  EXPECT_EQ(orlo3().mode("M"), &orlo3().modes[1]);
  EXPECT_EQ(orlo3().mode("R"), &orlo3().modes[2]);
  for (const char* name : {"", "p", "m", "r", "P ", " P", "PM", "X", "Orlo3-P"})
    EXPECT_EQ(orlo3().mode(name), nullptr) << '"' << name << '"';
}

TEST(KnownMode, listsItsIdentitiesInOrder) {
  EXPECT_EQ(orlo3().modes[0].identities(), identitiesOfP);
  EXPECT_EQ(orlo3().modes[1].identities(), std::vector<DeviceIdentity>{bluetoothM});
  EXPECT_TRUE(orlo3().modes[2].identities().empty());
}

TEST(KnownMode, findsTheTransportOfAnIdentity) {
  const KnownMode& p = orlo3().modes[0];
  EXPECT_EQ(p.transport(0x05AC, 0x022C), &p.transports[2]);
  EXPECT_EQ(p.transport(0x05AC, 0x0220), nullptr);
}

TEST(DeviceIdentity, isEqualAndHashedByBothIds) {
  const std::hash<DeviceIdentity> hash;
  EXPECT_EQ((DeviceIdentity{1, 2}), (DeviceIdentity{1, 2}));
  EXPECT_NE((DeviceIdentity{1, 2}), (DeviceIdentity{2, 1}));
  EXPECT_EQ(hash({1, 2}), hash({1, 2}));
  EXPECT_NE(hash({1, 2}), hash({2, 1}));
  EXPECT_NE(hash({1, 2}), hash({1, 3}));
  EXPECT_NE(hash({1, 2}), hash({2, 2}));
}

TEST(KnownDevices, differByEveryFieldOfTheirRecords) {
  const KnownTransport usb{{1, 2}, copyPasteCut("m"), true};
  EXPECT_EQ(usb, (KnownTransport{{1, 2}, copyPasteCut("m"), true}));
  EXPECT_NE(usb, (KnownTransport{{1, 3}, copyPasteCut("m"), true}));
  EXPECT_NE(usb, (KnownTransport{{1, 2}, copyPasteCut("n"), true}));
  EXPECT_NE(usb, (KnownTransport{{1, 2}, copyPasteCut("m"), false}));
  const KnownMode mode{"P", {usb}};
  EXPECT_EQ(mode, (KnownMode{"P", {usb}}));
  EXPECT_NE(mode, (KnownMode{"M", {usb}}));
  EXPECT_NE(mode, (KnownMode{"P", {}}));
  const KnownDevice device{"Pad", {mode}};
  EXPECT_EQ(device, (KnownDevice{"Pad", {mode}}));
  EXPECT_NE(device, (KnownDevice{"pad", {mode}}));
  EXPECT_NE(device, (KnownDevice{"Pad", {}}));
}

} // namespace
} // namespace trellivar
