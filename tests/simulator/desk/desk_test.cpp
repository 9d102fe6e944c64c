#include "simulator/desk/desk.h"
#include "simulator/desk/key_codes.h"

#include <gtest/gtest.h>

#include <string>

namespace trellivar::desk {
namespace {

using Description = DeviceDescription;

const KeyName a("a");
const KeyName leftShift("left_shift");

class DeskTest : public testing::Test {
protected:
  Desk::DeviceId attach(std::vector<std::vector<Usage>> interfaces) {
    return desk.attach(
        {.product = "Device", .identity = {1, 2}, .interfaces = std::move(interfaces)});
  }
  void run() { desk.queue().run(); }
  const std::vector<Received>& received() { return desk.events().received(); }

  Desk desk;
  std::vector<HIDValue> values;
  std::shared_ptr<void> listening =
      desk.hid().listen([this](const HIDValue& value) { values.push_back(value); });
  Desk::DeviceId keyboard =
      attach({{Description::keyboard}, {Description::consumerControl}, {Description::mouse}});
};

TEST_F(DeskTest, aDeviceHangsInTheRegistryWithItsInterfaces) {
  const auto interfaces = desk.interfaces(keyboard);
  ASSERT_EQ(interfaces.size(), 3U);
  const Entry& first = *desk.registry().find(interfaces[0]);
  EXPECT_TRUE(first.isA("IOHIDDevice"));
  EXPECT_EQ(first.parent, keyboard);
  EXPECT_EQ(first.properties.at("VendorID"), Property(std::int64_t{1}));
  EXPECT_EQ(first.properties.at("Product"), Property(std::string("Device")));
  EXPECT_EQ(first.properties.at("PrimaryUsage"), Property(std::int64_t{6}));
  const EntryId sender = desk.leafSender(keyboard, 7);
  EXPECT_NE(sender, interfaces[0]);
  EXPECT_TRUE(desk.registry().find(sender)->children.empty());
}

TEST_F(DeskTest, propertiesMayBeOtherThanUsual) {
  const auto device = desk.attach({.product = "Odd",
                                   .identity = {1, 2},
                                   .interfaces = {{Description::keyboard}},
                                   .properties = {{"Product", std::nullopt},
                                                  {"VendorID", std::string("one")},
                                                  {"Extra", true}}});
  const Entry& entry = *desk.registry().find(desk.interfaces(device).at(0));
  EXPECT_FALSE(entry.properties.contains("Product"));
  EXPECT_EQ(entry.properties.at("VendorID"), Property(std::string("one")));
  EXPECT_EQ(entry.properties.at("Extra"), Property(true));
}

TEST_F(DeskTest, aSerialPortHangsSomeStepsBelowItsDevice) {
  const auto device = desk.attach({.product = "Pad",
                                   .identity = {0x4C4A, 3},
                                   .interfaces = {},
                                   .calloutPath = "/dev/cu.usbmodem7"});
  const auto clients = desk.registry().ofClass("IOSerialBSDClient");
  ASSERT_EQ(clients.size(), 1U);
  EXPECT_EQ(*desk.registry().property(clients[0], "IOCalloutDevice"),
            Property(std::string("/dev/cu.usbmodem7")));
  EXPECT_EQ(*desk.registry().property(device, "idVendor"), Property(std::int64_t{0x4C4A}));
  desk.detach(device);
  EXPECT_TRUE(desk.registry().ofClass("IOSerialBSDClient").empty());
}

TEST_F(DeskTest, aPressIsReportedAndTravelsAsAnEvent) {
  desk.press(keyboard, a);
  ASSERT_EQ(values.size(), 1U);
  EXPECT_EQ(values[0].device, desk.interfaces(keyboard).at(0));
  EXPECT_EQ(values[0].usage, (Usage{7, 4}));
  EXPECT_EQ(values[0].value, 1);
  EXPECT_TRUE(received().empty());
  run();
  ASSERT_EQ(received().size(), 1U);
  const InputEvent& event = received()[0].event;
  EXPECT_EQ(named(event), (NamedEvent{TapEvent::Kind::keyDown, a}));
  EXPECT_EQ(static_cast<EntryId>(event.field(InputEvent::senderId)), desk.leafSender(keyboard, 7));
  EXPECT_EQ(event.field(InputEvent::sourceProcessId), 0);
  EXPECT_EQ(event.field(InputEvent::autorepeat), 0);
}

TEST_F(DeskTest, eachKeyComesFromTheInterfaceForIt) {
  const auto interfaces = desk.interfaces(keyboard);
  desk.press(keyboard, KeyName("mute"));
  desk.press(keyboard, KeyName("button3"));
  run();
  ASSERT_EQ(values.size(), 2U);
  EXPECT_EQ(values[0].device, interfaces[1]);
  EXPECT_EQ(values[1].device, interfaces[2]);
  EXPECT_EQ(static_cast<EntryId>(received().at(1).event.field(InputEvent::senderId)),
            desk.leafSender(keyboard, 9));
  EXPECT_EQ(received().at(1).event.field(InputEvent::clickState), 1);
}

TEST_F(DeskTest, eachButtonHasItsTypesOfEvents) {
  for (const char* name : {"button1", "button2", "button3"}) {
    desk.press(keyboard, KeyName(name));
    desk.release(keyboard, KeyName(name));
  }
  run();
  std::vector<std::uint32_t> types;
  for (const Received& one : received())
    types.push_back(one.event.type);
  EXPECT_EQ(types, (std::vector<std::uint32_t>{1, 2, 3, 4, 25, 26}));
}

TEST_F(DeskTest, whatCannotBePressedIsIgnored) {
  desk.press(keyboard, KeyName("no_such_key"));
  desk.press(keyboard + 1000, a);
  desk.press(attach({{Description::consumerControl}}), a);
  desk.release(keyboard, a);
  desk.press(keyboard, a);
  desk.press(keyboard, a);
  run();
  EXPECT_EQ(values.size(), 1U);
  EXPECT_EQ(received().size(), 1U);
}

TEST_F(DeskTest, modifiersOfAllKeyboardsCountForEveryEvent) {
  const auto other = attach({{Description::keyboard}});
  desk.press(keyboard, leftShift);
  desk.press(other, KeyName("right_command"));
  desk.press(other, a);
  run();
  EXPECT_EQ(received().at(0).event.flags, 0x20002U | InputEvent::nonCoalesced);
  EXPECT_EQ(received().at(2).event.flags, 0x20002U | 0x100010U | InputEvent::nonCoalesced);
  desk.release(keyboard, leftShift);
  run();
  EXPECT_EQ(received().at(3).event.flags, 0x100010U | InputEvent::nonCoalesced);
  EXPECT_EQ(desk.events().hardwareFlags(), 0x100010U);
}

TEST_F(DeskTest, aHeldKeyRepeatsItsEventOnly) {
  desk.repeat(keyboard, a);
  desk.press(keyboard, a);
  desk.repeat(keyboard, a);
  desk.press(keyboard, leftShift);
  desk.repeat(keyboard, leftShift);
  run();
  EXPECT_EQ(values.size(), 2U);
  ASSERT_EQ(received().size(), 3U);
  EXPECT_EQ(received()[1].event.field(InputEvent::autorepeat), 1);
}

TEST_F(DeskTest, aDeviceThatIsUnpluggedReleasesNothing) {
  desk.press(keyboard, leftShift);
  EXPECT_TRUE(desk.pressed(keyboard).contains(leftShift));
  desk.detach(keyboard);
  run();
  EXPECT_EQ(values.size(), 1U);
  EXPECT_EQ(received().size(), 1U);
  EXPECT_EQ(desk.events().hardwareFlags(), 0U);
  EXPECT_TRUE(desk.pressed(keyboard).empty());
  EXPECT_EQ(desk.registry().find(keyboard), nullptr);
  EXPECT_NE(attach({{Description::keyboard}}), keyboard);
}

TEST_F(DeskTest, anyUsageCanBeReported) {
  desk.report(keyboard, {7, 0xFFFF}, 5);
  desk.report(keyboard, {0x55, 1}, 1); // on no interface
  run();
  ASSERT_EQ(values.size(), 1U);
  EXPECT_EQ(values[0].value, 5);
  EXPECT_TRUE(received().empty());
}

TEST_F(DeskTest, whatNeedsTheDefaultModeWaitsForTheEndOfTracking) {
  std::string order;
  desk.setTracking(true);
  desk.inDefaultMode([&] { order += '1'; });
  desk.inDefaultMode([&] { order += '2'; });
  run();
  EXPECT_EQ(order, "");
  desk.setTracking(false);
  EXPECT_EQ(order, ""); // from the queue
  desk.inDefaultMode([&] { order += '3'; });
  run();
  EXPECT_EQ(order, "123");
}

TEST_F(DeskTest, trustDecidesWhetherEventsMayBeFiltered) {
  const auto tap = desk.events().addTap({});
  desk.setTrusted(false);
  EXPECT_FALSE(desk.isTrusted());
  EXPECT_FALSE(desk.events().isEnabled(tap));
  desk.events().setEnabled(tap, true);
  EXPECT_TRUE(desk.events().isFrozen());
  desk.setTrusted(true);
  EXPECT_FALSE(desk.events().isFrozen());
}

TEST(FaultsTest, countsGoDownAndForeverLasts) {
  int count = 2;
  EXPECT_TRUE(Faults::strikes(count));
  EXPECT_TRUE(Faults::strikes(count));
  EXPECT_FALSE(Faults::strikes(count));
  int always = Faults::forever;
  for (int times = 0; times < 5; ++times)
    EXPECT_TRUE(Faults::strikes(always));
}

TEST(HIDBusTest, aListenerEndsWithItsHandle) {
  HIDBus bus;
  int heard = 0;
  auto handle = bus.listen([&](const HIDValue&) { ++heard; });
  bus.report({});
  handle.reset();
  bus.report({});
  EXPECT_EQ(heard, 1);
}

} // namespace
} // namespace trellivar::desk
