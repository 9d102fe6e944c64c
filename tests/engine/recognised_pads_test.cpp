#include "engine/recognised_pads.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

ConnectedDevice device(std::string name, int vendorId, int productId) {
  return {name, name, vendorId, productId};
}

const ConnectedDevice keyboard = device("Keyboard", 1, 2);
const ConnectedDevice onCable = device("Orlo3", 0x4C4A, 0x4155);
const ConnectedDevice overBluetooth = device("Any name", 0x04E8, 0x7021);
const ConnectedDevice inModeM = device("Orlo3", 0x05AC, 0x0220);
const ConnectedDevice inModeR = device("orlo3-r", 7, 9);

std::vector<ConnectedDevice> padsAmong(const std::vector<ConnectedDevice>& devices) {
  return recognisedPads(devices);
}
using Devices = std::vector<ConnectedDevice>;

TEST(RecognisedPads, padsAreKnownByTheirIdentityOfAnyMode) {
  for (const ConnectedDevice& pad : {onCable, overBluetooth, inModeM})
    EXPECT_EQ(padsAmong({keyboard, pad}), Devices{pad}) << pad.vendorId;
}

TEST(RecognisedPads, aPadIsKnownByTheNameOfAMode) {
  EXPECT_EQ(padsAmong({keyboard, inModeR}), Devices{inModeR});
  EXPECT_EQ(padsAmong({device("Orlo3", 7, 9), device("Orlo3-X", 7, 10)}), Devices{});
}

TEST(RecognisedPads, theFirstOfOneModelCounts) {
  EXPECT_EQ(padsAmong({keyboard, inModeR, onCable, overBluetooth}), Devices{inModeR});
  EXPECT_EQ(padsAmong({overBluetooth, keyboard, inModeM, inModeR}), Devices{overBluetooth});
}

TEST(RecognisedPads, otherDevicesAreNone) {
  EXPECT_EQ(padsAmong({keyboard, device("", 0, 0), device("Mouse", 0x4C4A, 0x4154)}), Devices{});
  EXPECT_EQ(padsAmong({}), Devices{});
}

TEST(RecognisedPads, onlyTheIdentityTellsTheCable) {
  EXPECT_TRUE(isOnCable(onCable));
  EXPECT_TRUE(isOnCable(device("", 0x4C4A, 0x4155)));
  EXPECT_FALSE(isOnCable(overBluetooth));
  EXPECT_FALSE(isOnCable(device("Orlo3", 0x05AC, 0x022C)));
  EXPECT_FALSE(isOnCable(inModeM));
  EXPECT_FALSE(isOnCable(device("Orlo3-P", 7, 9)));
  EXPECT_FALSE(isOnCable(keyboard));
}

} // namespace
} // namespace trellivar
