#include "engine/linux/serial_ports.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

/// A made-up /sys.
class SerialPorts : public testing::Test {
protected:
  SerialPorts() { fs::create_directories(root_ / "class/tty"); }

  /// A port whose device folder is `device` below "devices". Requires: relative.
  void add(const std::string& name, const std::string& device) const {
    const fs::path folder = fs::path("devices") / device / name;
    fs::create_directories(root_ / folder);
    fs::create_directory_symlink(fs::path("../..") / folder, root_ / "class/tty" / name);
  }
  void setVendor(const std::string& device, const std::string& id) const {
    fs::create_directories(root_ / "devices" / device);
    std::ofstream(root_ / "devices" / device / "idVendor") << id;
  }
  std::optional<std::string> port() const { return discoverPadPort(root_.path()); }

  TemporaryFolder root_;
};

const std::string usb = "pci0/usb1/1-2";
const std::string interface = usb + "/1-2:1.0/tty";

TEST_F(SerialPorts, thereIsNoneWithoutPortsOrWithoutTheirFolder) {
  EXPECT_EQ(port(), std::nullopt);
  fs::remove_all(root_ / "class");
  EXPECT_EQ(port(), std::nullopt);
  EXPECT_EQ(discoverPadPort(root_ / "nowhere"), std::nullopt);
}

TEST_F(SerialPorts, aPadIsFoundByTheVendorIdOfItsUsbDevice) {
  add("ttyACM0", interface);
  setVendor(usb, "4c4a\n");
  EXPECT_EQ(port(), "/dev/ttyACM0");
}

TEST_F(SerialPorts, otherVendorsAreNoPads) {
  add("ttyACM0", interface);
  for (const char* id : {"2341\n", "4c4b\n", "4c4\n", "14c4a\n", "", "\n", "0x4c4a\n", "pad\n"}) {
    setVendor(usb, id);
    EXPECT_EQ(port(), std::nullopt) << id;
  }
}

TEST_F(SerialPorts, theFirstVendorIdAboveThePortCounts) {
  add("ttyACM0", interface);
  setVendor("pci0/usb1", "4c4a\n");
  setVendor(usb, "2341\n");
  EXPECT_EQ(port(), std::nullopt) << "a port at a hub of the maker is no pad";
  setVendor("pci0/usb1", "1d6b\n");
  setVendor(usb, "4c4a\n");
  EXPECT_EQ(port(), "/dev/ttyACM0");
}

TEST_F(SerialPorts, portsThatAreNoUsbModemsAreIgnoredWhateverTheirVendor) {
  for (const char* name : {"ttyS0", "ttyUSB0", "tty1", "acm"})
    add(name, interface);
  setVendor(usb, "4c4a\n");
  EXPECT_EQ(port(), std::nullopt);
}

TEST_F(SerialPorts, ofTwoPadsTheFirstByNameIsTaken) {
  add("ttyACM2", "a/tty");
  add("ttyACM1", "b/tty");
  add("ttyACM0", "c/tty");
  setVendor("a", "4c4a\n");
  setVendor("b", "4c4a\n");
  setVendor("c", "2341\n");
  EXPECT_EQ(port(), "/dev/ttyACM1");
}

TEST_F(SerialPorts, aPortThatVanishesMeanwhileIsPassedOver) {
  fs::create_directory_symlink("../../devices/gone/ttyACM0", root_ / "class/tty/ttyACM0");
  add("ttyACM1", interface);
  setVendor(usb, "4c4a\n");
  EXPECT_EQ(port(), "/dev/ttyACM1");
}

/// The port is the first entry, so its n-th ancestor is entry n + 1.
std::string deviceBelow(int entry) {
  std::string path = "pad";
  for (int i = 2; i < entry; ++i)
    path += "/x";
  return path;
}

TEST_F(SerialPorts, twelveEntriesAreInspected) {
  for (int entry = 2; entry <= 12; ++entry) {
    const std::string top = "entry" + std::to_string(entry);
    fs::remove_all(root_ / "class/tty/ttyACM0");
    add("ttyACM0", top + "/" + deviceBelow(entry));
    setVendor(top + "/pad", "4c4a\n");
    EXPECT_EQ(port(), "/dev/ttyACM0") << entry;
  }
}

TEST_F(SerialPorts, theThirteenthEntryIsTooFarAway) {
  add("ttyACM0", deviceBelow(13));
  setVendor("pad", "4c4a\n");
  EXPECT_EQ(port(), std::nullopt);
}

TEST_F(SerialPorts, thePortItselfIsTheFirstEntry) {
  add("ttyACM0", deviceBelow(12));
  setVendor(deviceBelow(12) + "/ttyACM0", "4c4a\n");
  EXPECT_EQ(port(), "/dev/ttyACM0");
}

TEST_F(SerialPorts, theSearchEndsAtTheRootOfTheTree) {
  add("ttyACM0", "tty");
  std::ofstream(root_ / "idVendor") << "4c4a\n";
  EXPECT_EQ(port(), std::nullopt);
}

} // namespace
} // namespace trellivar
