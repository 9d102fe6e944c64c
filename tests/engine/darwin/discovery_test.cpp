#include "engine/darwin/iokit_device_enumerator.h"
#include "engine/darwin/iokit_device_identifier.h"
#include "tests/engine/darwin/computer.h"
#include "tests/support/log_since.h"

#include <unistd.h>

#include <algorithm>

namespace trellivar {

namespace {

class EnumeratorTest : public testing::Test {
protected:
  EnumeratorTest() { computer.desk.detach(computer.keyboard); }

  /// "name 1:2, other 3:4"
  std::string listed() {
    std::string text;
    for (const ConnectedDevice& device : enumerator.connectedKeyboards()) {
      text += (text.empty() ? "" : ", ") + device.name + " " + std::to_string(device.vendorId) +
              ":" + std::to_string(device.productId);
    }
    return text;
  }
  void attach(DeviceDescription description) { computer.desk.attach(description); }

  Computer computer;
  IOKitDeviceEnumerator enumerator;
};

TEST_F(EnumeratorTest, keyboardsAreListedOnceHoweverManyInterfacesTheyHave) {
  attach({.product = "Beta",
          .identity = {3, 4},
          .interfaces = {{DeviceDescription::keyboard},
                         {DeviceDescription::keyboard},
                         {DeviceDescription::consumerControl}}});
  attach({.product = "Alpha", .identity = {1, 2}, .interfaces = {{DeviceDescription::keyboard}}});
  EXPECT_EQ(listed(), "Alpha 1:2, Beta 3:4");
}

TEST_F(EnumeratorTest, aKeyboardWhoseFirstInterfaceIsNoneIsListed) {
  attach({.product = "Pad",
          .identity = {3, 4},
          .interfaces = {{DeviceDescription::mouse}, {DeviceDescription::keyboard}}});
  EXPECT_EQ(listed(), "Pad 3:4");
}

TEST_F(EnumeratorTest, aKnownPadIsListedWhateverItSaysThatItIs) {
  attach({.product = "Orlo3", .identity = {0x05AC, 0x0220}, .interfaces = {{{0x01, 0x80}}}});
  EXPECT_EQ(listed(), "Orlo3 1452:544");
}

TEST_F(EnumeratorTest, anUnknownMouseIsNotListed) {
  attach({.product = "Mouse", .identity = {3, 4}, .interfaces = {{DeviceDescription::mouse}}});
  attach({.product = "Radio",
          .identity = {5, 6},
          .interfaces = {{DeviceDescription::consumerControl}}});
  EXPECT_EQ(listed(), "");
}

TEST_F(EnumeratorTest, aDeviceWithoutANumberForItsMakerOrKindIsSkipped) {
  for (const char* key : {"VendorID", "ProductID"}) {
    attach({.product = "A",
            .identity = {1, 2},
            .interfaces = {{DeviceDescription::keyboard}},
            .properties = {{key, std::nullopt}}});
    attach({.product = "B",
            .identity = {1, 2},
            .interfaces = {{DeviceDescription::keyboard}},
            .properties = {{key, "1"}}});
  }
  EXPECT_EQ(listed(), "");
}

TEST_F(EnumeratorTest, namesAreTrimmedAndMissingOnesReplaced) {
  attach({.product = " \tSpacious \n",
          .identity = {1, 2},
          .interfaces = {{DeviceDescription::keyboard}}});
  attach({.product = "",
          .identity = {3, 4},
          .interfaces = {{DeviceDescription::keyboard}},
          .properties = {{"Product", std::nullopt}}});
  attach({.product = "",
          .identity = {5, 6},
          .interfaces = {{DeviceDescription::keyboard}},
          .properties = {{"Product", std::int64_t{7}}}});
  EXPECT_EQ(listed(), "Keyboard 3:4, Keyboard 5:6, Spacious 1:2");
  EXPECT_EQ(enumerator.connectedKeyboards().back().enumeratedName, " \tSpacious \n");
}

TEST_F(EnumeratorTest, aRegistryThatCannotBeSearchedHoldsNoDevices) {
  attach({.product = "Alpha", .identity = {1, 2}, .interfaces = {{DeviceDescription::keyboard}}});
  computer.desk.faults().failingMatches = 1;
  EXPECT_EQ(listed(), "");
  EXPECT_EQ(listed(), "Alpha 1:2");
}

TEST_F(EnumeratorTest, aRegistryThatChangesMeanwhileIsSearchedAgain) {
  attach({.product = "Alpha", .identity = {1, 2}, .interfaces = {{DeviceDescription::keyboard}}});
  attach({.product = "Beta", .identity = {3, 4}, .interfaces = {{DeviceDescription::keyboard}}});
  computer.desk.faults().brokenIterators = true;
  computer.platform.duringNextIteration([&] {
    attach({.product = "Late", .identity = {5, 6}, .interfaces = {{DeviceDescription::keyboard}}});
  });
  EXPECT_EQ(listed(), "Alpha 1:2, Beta 3:4, Late 5:6");
}

TEST_F(EnumeratorTest, theLogTellsWhatWasFound) {
  const std::string own = "Board " + std::to_string(getpid()); // other programs write there too
  attach({.product = own, .identity = {1, 2}, .interfaces = {{DeviceDescription::keyboard}}});
  const LogSince log;
  enumerator.connectedKeyboards();
  EXPECT_NE(log.text().find("] enumerate → " + own + " (1:2)\n"), std::string::npos);
}

TEST(ShouldIncludeTest, aKeyboardOrAKnownPadBelongsIntoTheList) {
  EXPECT_TRUE(IOKitDeviceEnumerator::shouldInclude(1, 6, 1, 2));
  EXPECT_FALSE(IOKitDeviceEnumerator::shouldInclude(1, 7, 1, 2)) << "a keypad";
  EXPECT_FALSE(IOKitDeviceEnumerator::shouldInclude(12, 6, 1, 2));
  EXPECT_FALSE(IOKitDeviceEnumerator::shouldInclude(6, 1, 1, 2));
  for (const auto [vendor, product] :
       {DeviceIdentity{0x4C4A, 0x4155}, {0x04E8, 0x7021}, {0x05AC, 0x022C}, {0x05AC, 0x0220}})
    EXPECT_TRUE(IOKitDeviceEnumerator::shouldInclude(1, 2, vendor, product));
  EXPECT_FALSE(IOKitDeviceEnumerator::shouldInclude(1, 2, 0x4C4A, 0x4156));
}

TEST(ConnectedDeviceTest, isAdoptedAsAPadWhoseKeysAreYetToBeLearned) {
  const ConnectedDevice connected{"Board", "Board ", 7, 8};
  const TrellivarDevice device = connected.asTrellivarDevice(2);
  EXPECT_EQ(device, (TrellivarDevice{"Board", 7, 8, {{{1, 0, 0, {}, {}}, {2, 0, 1, {}, {}}}}}));
  EXPECT_EQ(connected.asTrellivarDevice(0).layout.keys.size(), 0U);
}

class IdentifierTest : public testing::Test {
protected:
  void identify(double timeout = 5) {
    identifier->identifyNextKeyDevice(Seconds(timeout), [this](auto result) {
      ++completions;
      found = std::move(result);
    });
  }

  Computer computer;
  desk::Desk::DeviceId pad = computer.attach(customIdentity);
  std::unique_ptr<IOKitDeviceIdentifier> identifier =
      std::make_unique<IOKitDeviceIdentifier>(computer.desk.queue());
  int completions = 0;
  std::optional<IdentifiedDevice> found;
};

TEST_F(IdentifierTest, tellsTheDeviceOfTheNextPress) {
  identify();
  computer.pass(1);
  computer.tap(pad, "a");
  computer.tap(computer.keyboard, "b");
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(found, (IdentifiedDevice{"Pad", customIdentity.vendorId, customIdentity.productId}));
  computer.pass(10);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(computer.platform.liveReferences(), std::vector<std::string>{});
}

TEST_F(IdentifierTest, anyKeyWillDoKnownToCapturesOrNot) {
  identify();
  computer.tap(pad, "f5");
  EXPECT_TRUE(found);
}

TEST_F(IdentifierTest, releasesButtonsAndMediaKeysDoNotCount) {
  computer.down(pad, "a");
  identify();
  computer.up(pad, "a");
  computer.tap(pad, "button3");
  computer.tap(pad, "mute");
  computer.desk.report(pad, {0x07, 4}, 2);
  computer.desk.report(pad, {0x07, 0xFFFFFFF}, 1);
  computer.desk.report(pad, {0x07, 3}, 1);
  computer.pass(4.9);
  EXPECT_EQ(completions, 0);
  computer.pass(0.2);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(found, std::nullopt);
}

TEST_F(IdentifierTest, aDeviceThatDoesNotTellWhoItIsIsUnknown) {
  const auto nameless = computer.desk.attach({.product = "",
                                              .identity = {5, 6},
                                              .interfaces = {{DeviceDescription::keyboard}},
                                              .properties = {{"Product", std::nullopt},
                                                             {"VendorID", std::nullopt},
                                                             {"ProductID", "text"}}});
  identify();
  computer.tap(nameless, "a");
  EXPECT_EQ(found, (IdentifiedDevice{"Unknown", -1, -1}));
}

TEST_F(IdentifierTest, waitingAnewEndsTheEarlierWait) {
  int earlier = 0;
  identifier->identifyNextKeyDevice(Seconds(5), [&](const auto& result) {
    ++earlier;
    EXPECT_EQ(result, std::nullopt);
  });
  identify();
  computer.tap(pad, "a");
  EXPECT_EQ(earlier, 1);
  EXPECT_EQ(completions, 1);
  EXPECT_TRUE(found);
}

TEST_F(IdentifierTest, mayWaitAgainFromItsOwnAnswer) {
  identifier->identifyNextKeyDevice(Seconds(5), [&](const auto&) { identify(); });
  computer.tap(pad, "a");
  EXPECT_EQ(completions, 0);
  computer.tap(computer.keyboard, "a");
  EXPECT_EQ(found, (IdentifiedDevice{"Keyboard", 0x1234, 1}));
}

TEST_F(IdentifierTest, anOwnerThatGoesIsToldNothing) {
  identify();
  identifier.reset();
  computer.tap(pad, "a");
  computer.pass(10);
  EXPECT_EQ(completions, 0);
  EXPECT_EQ(computer.desk.queue().pendingCount(), 0U);
}

class HotplugTest : public testing::Test {
protected:
  HotplugTest() {
    watcher = std::make_unique<IOKitHotplugWatcher>(computer.desk.queue(), Computer::debounce);
    callback = watcher->onDevicesChanged([this] { ++notices; });
  }
  void startAndSettle() {
    watcher->start();
    computer.pass(1);
    notices = 0;
  }

  Computer computer;
  std::unique_ptr<IOKitHotplugWatcher> watcher;
  std::shared_ptr<void> callback;
  int notices = 0;
};

TEST_F(HotplugTest, startingIsAFirstNotice) {
  watcher->start();
  watcher->start();
  computer.pass(0.299);
  EXPECT_EQ(notices, 0);
  computer.pass(0.002);
  EXPECT_EQ(notices, 1);
  computer.pass(10);
  EXPECT_EQ(notices, 1) << "nothing is polled";
  EXPECT_EQ(computer.desk.queue().pendingCount(), 0U);
}

TEST_F(HotplugTest, everyChangeIsNoticedAgainAndAgain) {
  startAndSettle();
  for (int i = 1; i <= 5; ++i) {
    const auto device = computer.attach({5, 6});
    computer.pass(0.31);
    EXPECT_EQ(notices, 2 * i - 1);
    computer.desk.detach(device);
    computer.pass(0.31);
    EXPECT_EQ(notices, 2 * i);
  }
}

TEST_F(HotplugTest, aBurstIsOneNoticeAfterItsEnd) {
  startAndSettle();
  for (int i = 0; i < 20; ++i) {
    const auto device = computer.attach({5, 6});
    computer.pass(0.1);
    computer.desk.detach(device);
    computer.pass(0.1);
  }
  EXPECT_EQ(notices, 0);
  computer.pass(0.19);
  EXPECT_EQ(notices, 0);
  computer.pass(0.02);
  EXPECT_EQ(notices, 1);
}

TEST_F(HotplugTest, severalMayListenAndStopListening) {
  int others = 0;
  auto other = watcher->onDevicesChanged([&] { ++others; });
  startAndSettle();
  others = 0;
  computer.attach({5, 6});
  computer.pass(0.31);
  EXPECT_EQ(notices, 1);
  EXPECT_EQ(others, 1);
  other.reset();
  computer.attach({5, 7});
  computer.pass(0.31);
  EXPECT_EQ(notices, 2);
  EXPECT_EQ(others, 1);
}

TEST_F(HotplugTest, anOwnerThatGoesCancelsTheNotice) {
  startAndSettle();
  computer.attach({5, 6});
  computer.desk.queue().run();
  watcher.reset();
  EXPECT_EQ(computer.desk.queue().pendingCount(), 0U);
  EXPECT_EQ(computer.platform.liveReferences(), std::vector<std::string>{});
  computer.pass(1);
  EXPECT_EQ(notices, 0);
}

TEST_F(HotplugTest, anOwnerMayGoBeforeAMessageOnItsWayArrives) {
  startAndSettle();
  computer.attach({5, 6});
  watcher.reset();
  computer.pass(1);
  EXPECT_EQ(notices, 0);
}

TEST_F(HotplugTest, withoutANotificationPortNothingIsWatchedAndStartingAgainMayHelp) {
  computer.desk.faults().failingPorts = 1;
  watcher->start();
  computer.pass(1);
  EXPECT_EQ(notices, 0);
  watcher->start();
  computer.pass(1);
  EXPECT_EQ(notices, 1);
}

class ResolverTest : public testing::Test {
protected:
  std::vector<std::int64_t> resolved(DeviceIdentity identity) {
    const auto ids = resolver.senderIds(identity.vendorId, identity.productId);
    std::vector<std::int64_t> sorted(ids.begin(), ids.end());
    std::ranges::sort(sorted);
    return sorted;
  }
  /// Every HID interface of a device with all that hangs below it.
  std::vector<std::int64_t> subtrees(std::initializer_list<desk::Desk::DeviceId> devices) {
    std::vector<std::int64_t> ids;
    for (const auto device : devices) {
      for (const desk::EntryId interface : computer.desk.interfaces(device)) {
        ids.push_back(static_cast<std::int64_t>(interface));
        for (const desk::EntryId id : computer.desk.registry().descendants(interface))
          ids.push_back(static_cast<std::int64_t>(id));
      }
    }
    std::ranges::sort(ids);
    return ids;
  }

  Computer computer;
  IOKitSenderResolver resolver;
};

TEST_F(ResolverTest, findsEveryServiceOfEveryInterfaceOfEveryPad) {
  const auto one = computer.attach(customIdentity);
  const auto two = computer.attach(customIdentity);
  computer.attach({customIdentity.vendorId, customIdentity.productId + 1});
  EXPECT_EQ(resolved(customIdentity), subtrees({one, two}));
  EXPECT_EQ(resolved(customIdentity).size(), 18U);
}

TEST_F(ResolverTest, anIdentityThatNobodyHasGivesNothing) {
  EXPECT_EQ(resolved(customIdentity).size(), 0U);
  const auto device = computer.attach(customIdentity);
  computer.desk.detach(device);
  EXPECT_EQ(resolved(customIdentity).size(), 0U);
}

TEST_F(ResolverTest, needsNoPermission) {
  computer.desk.setInputMonitoring(desk::Access::denied);
  computer.desk.setTrusted(false);
  const auto device = computer.attach(customIdentity);
  EXPECT_EQ(resolved(customIdentity), subtrees({device}));
}

TEST_F(ResolverTest, aDeviceThatComesMeanwhileDoesNotHideTheServicesOfAnother) {
  const auto device = computer.attach(customIdentity);
  computer.desk.faults().brokenIterators = true;
  computer.platform.duringNextIteration([&] { computer.attach({5, 6}); });
  EXPECT_EQ(resolved(customIdentity), subtrees({device}));
}

TEST(PermissionsTest, areReadAnewEachTime) {
  Computer computer;
  EXPECT_TRUE(darwin::isAccessibilityGranted());
  EXPECT_TRUE(darwin::isInputMonitoringGranted());
  computer.desk.setTrusted(false);
  EXPECT_FALSE(darwin::isAccessibilityGranted());
  for (const auto access : {desk::Access::denied, desk::Access::unknown}) {
    computer.desk.setInputMonitoring(access);
    EXPECT_FALSE(darwin::isInputMonitoringGranted());
  }
  EXPECT_EQ(computer.platform.prompts().size(), 0U) << "nobody is asked";
}

} // namespace

} // namespace trellivar
