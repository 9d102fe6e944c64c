#include "tests/viewmodels/device_words.h"
#include "viewmodels/device_list_view_model.h"

#include <gtest/gtest.h>

#include <string>

namespace trellivar {
namespace {

using namespace words;

Devices padsAmong(const Devices& devices) { return DeviceListViewModel::collapse(devices); }
bool isOnCable(const ConnectedDevice& device) { return DeviceListViewModel::isOnCable(device); }
PadLink linkOf(const Devices& devices) { return DeviceListViewModel::link(devices); }
PadLink wireless(std::string name) { return {PadLink::Wireless{std::move(name)}}; }

const PadLink disconnected{PadLink::Disconnected{}};
const PadLink usb{PadLink::Usb{}};

TEST(RecognisedPads, areKnownByTheirIdentityOfAnyMode) {
  for (const ConnectedDevice& pad : {onCable, overBluetooth, inModeM})
    EXPECT_EQ(padsAmong({ordinaryKeyboard, pad}), Devices{pad}) << pad.vendorId;
}

TEST(RecognisedPads, areKnownByTheNameOfAMode) {
  EXPECT_EQ(padsAmong({ordinaryKeyboard, inModeR}), Devices{inModeR});
  EXPECT_EQ(padsAmong({device("Orlo3", 7, 9), device("Orlo3-X", 7, 10)}), Devices{});
}

TEST(RecognisedPads, areTheFirstOfEachModel) {
  EXPECT_EQ(padsAmong({ordinaryKeyboard, inModeR, onCable, overBluetooth}), Devices{inModeR});
  EXPECT_EQ(padsAmong({overBluetooth, ordinaryKeyboard, inModeM, inModeR}), Devices{overBluetooth});
}

TEST(RecognisedPads, areNoneAmongOtherDevices) {
  EXPECT_EQ(padsAmong({ordinaryKeyboard, device("", 0, 0), device("Mouse", 0x4C4A, 0x4154)}),
            Devices{});
  EXPECT_EQ(padsAmong({}), Devices{});
}

TEST(RecognisedPads, areOnTheCableByTheirIdentityAlone) {
  EXPECT_TRUE(isOnCable(onCable));
  EXPECT_TRUE(isOnCable(device("", 0x4C4A, 0x4155)));
  EXPECT_FALSE(isOnCable(overBluetooth));
  EXPECT_FALSE(isOnCable(device("Orlo3", 0x05AC, 0x022C)));
  EXPECT_FALSE(isOnCable(inModeM));
  EXPECT_FALSE(isOnCable(device("Orlo3-P", 7, 9)));
  EXPECT_FALSE(isOnCable(ordinaryKeyboard));
}

// How they are reached

TEST(PadLinkOfDevices, isDisconnectedWithoutAPad) {
  EXPECT_EQ(linkOf({}), disconnected);
  EXPECT_EQ(linkOf({ordinaryKeyboard, device("Orlo3", 7, 9), device("", 0, 0)}), disconnected);
}

TEST(PadLinkOfDevices, isTheCableUnderAnIdentityOfTheCable) {
  EXPECT_EQ(linkOf({onCable}), usb);
  EXPECT_EQ(linkOf({ordinaryKeyboard, device("Whatever", 0x4C4A, 0x4155)}), usb);
}

TEST(PadLinkOfDevices, isWirelessUnderEveryOtherIdentity) {
  EXPECT_EQ(linkOf({ordinaryKeyboard, overBluetooth}), wireless("Any name"));
  EXPECT_EQ(linkOf({device("Pad", 0x05AC, 0x022C)}), wireless("Pad"));
  EXPECT_EQ(linkOf({inModeM}), wireless("Orlo3"));
  EXPECT_EQ(linkOf({inModeR}), wireless("orlo3-r"));
}

TEST(PadLinkOfDevices, namesAWirelessPadWithoutBlanksAroundItsName) {
  EXPECT_EQ(linkOf({device(" \tThe pad\n", 0x04E8, 0x7021)}), wireless("The pad"));
  EXPECT_EQ(linkOf({device("  ", 0x04E8, 0x7021)}), wireless(""));
}

TEST(PadLinkOfDevices, prefersTheCableWhereverItStands) {
  EXPECT_EQ(linkOf({onCable, overBluetooth}), usb);
  EXPECT_EQ(linkOf({overBluetooth, onCable}), usb);
  EXPECT_EQ(linkOf({inModeR, ordinaryKeyboard, inModeM, onCable}), usb);
}

TEST(PadLinkOfDevices, namesTheFirstOfSeveralWirelessPads) {
  EXPECT_EQ(linkOf({ordinaryKeyboard, inModeR, overBluetooth}), wireless("orlo3-r"));
  EXPECT_EQ(linkOf({overBluetooth, inModeR}), wireless("Any name"));
}

TEST(PadLinkOfDevices, differsByTheNameOfAWirelessPad) {
  EXPECT_EQ(wireless("a"), wireless("a"));
  EXPECT_NE(wireless("a"), wireless("b"));
  EXPECT_NE(wireless(""), disconnected);
  EXPECT_NE(usb, disconnected);
  EXPECT_EQ(PadLink{}, disconnected);
}

} // namespace
} // namespace trellivar
