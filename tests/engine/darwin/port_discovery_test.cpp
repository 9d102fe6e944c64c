#include "engine/darwin/iokit_port_discovery.h"
#include "tests/engine/darwin/computer.h"

namespace trellivar {

namespace {

constexpr std::int64_t padVendor = 0x4C4A;

/// Serial services below made-up USB devices.
class PortDiscoveryTest : public testing::Test {
protected:
  ~PortDiscoveryTest() override {
    EXPECT_EQ(platform.liveReferences(), std::vector<std::string>{});
  }

  desk::EntryId plain(desk::EntryId parent, std::map<std::string, desk::Property> properties = {}) {
    desk::Entry entry;
    entry.classes = {"IOService"};
    entry.properties = std::move(properties);
    return desk.registry().add(parent, std::move(entry));
  }
  void serial(desk::EntryId parent, std::map<std::string, desk::Property> properties) {
    desk::Entry entry;
    entry.classes = {"IOSerialBSDClient", "IOService"};
    entry.properties = std::move(properties);
    desk.registry().add(parent, std::move(entry));
  }
  /// `between` entries lie between the service and the one that has the vendor id.
  void serialBelow(const std::string& path, desk::Property vendor, int between) {
    desk::EntryId parent = plain(0, {{"idVendor", std::move(vendor)}});
    for (int i = 0; i < between; ++i)
      parent = plain(parent);
    serial(parent, {{"IOCalloutDevice", path}});
  }

  desk::Desk desk;
  darwin_double::Platform platform{desk};
};

TEST_F(PortDiscoveryTest, thePadsPortIsFoundOnTheDesk) {
  desk::Pad pad(desk);
  pad.setCalloutPath([] { return "/dev/cu.usbmodem7"; });
  pad.connect(desk::Pad::Link::usb);
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem7");
  pad.connect(desk::Pad::Link::bluetooth);
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
}

TEST_F(PortDiscoveryTest, aPathWithoutUsbmodemIsIgnoredWhateverTheVendor) {
  serialBelow("/dev/cu.usbserial1", padVendor, 2);
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
}

TEST_F(PortDiscoveryTest, theVendorIdMayStandOnTheServiceItself) {
  serial(0, {{"IOCalloutDevice", "/dev/cu.usbmodem1"}, {"idVendor", padVendor}});
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem1");
}

TEST_F(PortDiscoveryTest, theTwelfthEntryIsTheLastThatIsLookedAt) {
  serialBelow("/dev/cu.usbmodem13", padVendor, 11);
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
  serialBelow("/dev/cu.usbmodem12", padVendor, 10);
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem12");
}

TEST_F(PortDiscoveryTest, aVendorIdThatIsNoNumberIsAsGoodAsMissing) {
  const auto above = plain(0, {{"idVendor", padVendor}});
  const auto below = plain(above, {{"idVendor", "19530"}});
  serial(below, {{"IOCalloutDevice", "/dev/cu.usbmodem1"}});
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem1");
}

TEST_F(PortDiscoveryTest, aServiceBelowNoVendorIdIsSkipped) {
  serial(plain(plain(0)), {{"IOCalloutDevice", "/dev/cu.usbmodem1"}});
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
  serialBelow("/dev/cu.usbmodem2", padVendor, 2);
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem2");
}

TEST_F(PortDiscoveryTest, theNearestVendorIdCounts) {
  const auto above = plain(0, {{"idVendor", padVendor}});
  const auto hub = plain(above, {{"idVendor", std::int64_t{0x1D6B}}});
  serial(hub, {{"IOCalloutDevice", "/dev/cu.usbmodem1"}});
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
}

TEST_F(PortDiscoveryTest, ofTwoPadsTheFirstServiceCounts) {
  serialBelow("/dev/cu.usbmodem1", std::int64_t{0x1D6B}, 2);
  serialBelow("/dev/cu.usbmodem2", padVendor, 2);
  serialBelow("/dev/cu.usbmodem3", padVendor, 2);
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem2");
}

TEST_F(PortDiscoveryTest, aServiceWithoutAPathIsSkipped) {
  serial(0, {{"idVendor", padVendor}});
  serial(0, {{"IOCalloutDevice", std::int64_t{1}}, {"idVendor", padVendor}});
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
  serialBelow("/dev/cu.usbmodem2", padVendor, 2);
  EXPECT_EQ(darwin::discoverPadPort(), "/dev/cu.usbmodem2");
}

TEST_F(PortDiscoveryTest, aFailedLookUpFindsNothing) {
  serialBelow("/dev/cu.usbmodem2", padVendor, 2);
  desk.faults().failingMatches = 1;
  EXPECT_EQ(darwin::discoverPadPort(), std::nullopt);
}

} // namespace

} // namespace trellivar
