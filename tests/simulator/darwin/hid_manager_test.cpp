#include "tests/simulator/darwin/fixture.h"

#include <IOKit/hid/IOHIDManager.h>
#include <mach/mach_time.h>

#include <set>

namespace trellivar::darwin_double {
namespace {

using desk::Access;
using desk::DeviceDescription;

desk::DeviceDescription device(std::vector<std::vector<desk::Usage>> interfaces) {
  return {.product = "Device", .identity = {1, 2}, .interfaces = std::move(interfaces)};
}
desk::DeviceDescription keyboard() { return device({{DeviceDescription::keyboard}}); }
desk::DeviceDescription media() { return device({{DeviceDescription::consumerControl}}); }

const KeyName a("a");

struct Heard {
  void* sender;
  std::uint32_t page;
  std::uint32_t usage;
  CFIndex value;
};

/// A manager of the program, and what it has heard.
class Manager {
public:
  Manager() : ref(IOHIDManagerCreate(nullptr, kIOHIDManagerOptionNone)) {
    IOHIDManagerRegisterInputValueCallback(
        ref,
        [](void* context, IOReturn result, void* sender, IOHIDValueRef value) {
          EXPECT_EQ(result, kIOReturnSuccess);
          static_cast<Manager*>(context)->hear(sender, value);
        },
        this);
  }
  ~Manager() { release(); }
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  void hear(void* sender, IOHIDValueRef value) {
    IOHIDElementRef element = IOHIDValueGetElement(value);
    heard.push_back({sender, IOHIDElementGetUsagePage(element), IOHIDElementGetUsage(element),
                     IOHIDValueGetIntegerValue(value)});
    if (action) action(value);
  }
  void release() {
    if (ref) CFRelease(std::exchange(ref, nullptr));
  }
  void schedule(CFStringRef mode = kCFRunLoopCommonModes) {
    IOHIDManagerScheduleWithRunLoop(ref, CFRunLoopGetMain(), mode);
  }
  void unschedule(CFStringRef mode = kCFRunLoopCommonModes) {
    IOHIDManagerUnscheduleFromRunLoop(ref, CFRunLoopGetMain(), mode);
  }
  IOReturn open() { return IOHIDManagerOpen(ref, kIOHIDOptionsTypeNone); }
  void matchAll() { IOHIDManagerSetDeviceMatching(ref, nullptr); }
  void match(std::vector<CFMutableDictionaryRef> wanted) {
    std::vector<const void*> values(wanted.begin(), wanted.end());
    CFArrayRef array = CFArrayCreate(nullptr, values.data(), static_cast<CFIndex>(values.size()),
                                     &kCFTypeArrayCallBacks);
    IOHIDManagerSetDeviceMatchingMultiple(ref, array);
    CFRelease(array);
    for (CFMutableDictionaryRef dictionary : wanted)
      CFRelease(dictionary);
  }
  /// -1: there is no set.
  int deviceCount() {
    CFSetRef set = IOHIDManagerCopyDevices(ref);
    if (!set) return -1;
    const auto count = static_cast<int>(CFSetGetCount(set));
    CFRelease(set);
    return count;
  }
  /// Borrowed from the manager.
  std::vector<IOHIDDeviceRef> devices() {
    CFSetRef set = IOHIDManagerCopyDevices(ref);
    std::vector<const void*> values(static_cast<std::size_t>(CFSetGetCount(set)));
    CFSetGetValues(set, values.data());
    CFRelease(set);
    std::vector<IOHIDDeviceRef> result;
    for (const void* value : values)
      result.push_back(static_cast<IOHIDDeviceRef>(const_cast<void*>(value)));
    return result;
  }

  IOHIDManagerRef ref;
  std::vector<Heard> heard;
  std::function<void(IOHIDValueRef)> action;
};

class HIDManagerTest : public DarwinTest {
protected:
  /// Scheduled and open on all devices that are there.
  void listen() {
    manager.matchAll();
    manager.schedule();
    ASSERT_EQ(manager.open(), kIOReturnSuccess);
  }
  void tap(desk::Desk::DeviceId on, KeyName key) {
    desk.press(on, key);
    desk.release(on, key);
  }

  void TearDown() override {
    manager.release();
    run();
    DarwinTest::TearDown();
  }

  Manager manager;
};
using HIDManagerDeathTest = HIDManagerTest;

TEST_F(HIDManagerTest, findsDevicesAtOnceWithoutScheduleOrOpen) {
  EXPECT_EQ(manager.deviceCount(), -1);
  desk.attach(pad());
  EXPECT_EQ(manager.deviceCount(), -1);
  manager.matchAll();
  EXPECT_EQ(manager.deviceCount(), 3);
}

TEST_F(HIDManagerTest, thereIsNoSetUntilADeviceHasMatched) {
  manager.matchAll();
  manager.schedule();
  EXPECT_EQ(manager.deviceCount(), -1);
  const auto attached = desk.attach(keyboard());
  run();
  EXPECT_EQ(manager.deviceCount(), 1);
  desk.detach(attached);
  run();
  EXPECT_EQ(manager.deviceCount(), 0); // now an empty one
}

TEST_F(HIDManagerTest, learnsOfChangesFromTheRunLoop) {
  desk.attach(keyboard());
  manager.matchAll();
  desk.attach(keyboard());
  run();
  EXPECT_EQ(manager.deviceCount(), 1); // not scheduled
  manager.schedule(kCFRunLoopDefaultMode);
  desk.setTracking(true);
  run();
  EXPECT_EQ(manager.deviceCount(), 1);
  desk.setTracking(false);
  run();
  EXPECT_EQ(manager.deviceCount(), 2);
}

TEST_F(HIDManagerTest, allKeysOfADictionaryMustMatch) {
  desk.attach(pad());
  desk.attach({.product = "Other", .identity = {0x4C4A, 9}, .interfaces = {{{1, 6}}}});
  manager.match({dictionary({{kIOHIDVendorIDKey, 0x4C4A}})});
  EXPECT_EQ(manager.deviceCount(), 4);
  manager.match({dictionary({{kIOHIDVendorIDKey, 0x4C4A}, {kIOHIDProductIDKey, 0x4155}})});
  EXPECT_EQ(manager.deviceCount(), 3);
  manager.match({dictionary({{kIOHIDVendorIDKey, 0x4C4A},
                             {kIOHIDProductIDKey, 0x4155},
                             {kIOHIDDeviceUsagePageKey, 1},
                             {kIOHIDDeviceUsageKey, 6}})});
  EXPECT_EQ(manager.deviceCount(), 1);
  manager.match({dictionary({{"NoSuchProperty", 1}})});
  EXPECT_EQ(manager.deviceCount(), 0);
}

TEST_F(HIDManagerTest, usagesAreComparedWithEveryPairOfTheDevice) {
  desk.attach(device({{{0x0C, 1}, {0x01, 6}}}));
  manager.match({dictionary({{kIOHIDDeviceUsagePageKey, 1}, {kIOHIDDeviceUsageKey, 6}})});
  EXPECT_EQ(manager.deviceCount(), 1);
  // Page and usage of one pair, not of two.
  manager.match({dictionary({{kIOHIDDeviceUsagePageKey, 1}, {kIOHIDDeviceUsageKey, 1}})});
  EXPECT_EQ(manager.deviceCount(), 0);
  manager.match({dictionary({{kIOHIDDeviceUsagePageKey, 0x0C}})});
  EXPECT_EQ(manager.deviceCount(), 1);
}

TEST_F(HIDManagerTest, aDeviceIsMadeOncePerDictionaryThatItSatisfies) {
  const auto attached = desk.attach(keyboard());
  const auto match = [&] {
    manager.match({dictionary({{kIOHIDVendorIDKey, 1}}), dictionary({{kIOHIDProductIDKey, 2}})});
  };
  match();
  EXPECT_EQ(manager.deviceCount(), 2);
  manager.schedule();
  ASSERT_EQ(manager.open(), kIOReturnSuccess);
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 4U); // each value twice

  platform.setDevicePerDictionary(false);
  match();
  EXPECT_EQ(manager.deviceCount(), 1);
}

TEST_F(HIDManagerTest, matchingDictionariesStayTheProgramsOwn) {
  CFMutableDictionaryRef wanted = dictionary({{kIOHIDVendorIDKey, 1}});
  IOHIDManagerSetDeviceMatching(manager.ref, wanted);
  CFRelease(wanted);
  desk.attach(keyboard());
  manager.schedule();
  run();
  EXPECT_EQ(manager.deviceCount(), 1); // the manager keeps what it needs
}

TEST_F(HIDManagerTest, deliversValuesWithTheDeviceAsSender) {
  const auto attached = desk.attach(keyboard());
  listen();
  pass(0.5);
  const std::uint64_t time = mach_absolute_time();
  std::uint64_t stamp = 0;
  IOHIDDeviceRef from = nullptr;
  manager.action = [&](IOHIDValueRef value) {
    stamp = IOHIDValueGetTimeStamp(value);
    from = IOHIDElementGetDevice(IOHIDValueGetElement(value));
  };
  tap(attached, a);
  EXPECT_TRUE(manager.heard.empty()); // from the run loop only
  run();
  ASSERT_EQ(manager.heard.size(), 2U);
  EXPECT_EQ(manager.heard[0].sender, manager.devices().at(0));
  EXPECT_EQ(from, manager.devices().at(0));
  EXPECT_EQ(manager.heard[0].page, 7U);
  EXPECT_EQ(manager.heard[0].usage, 4U);
  EXPECT_EQ(manager.heard[0].value, 1);
  EXPECT_EQ(manager.heard[1].value, 0);
  EXPECT_EQ(stamp, time);
}

TEST_F(HIDManagerTest, valuesArriveOnlyWhenScheduledAndOpen) {
  const auto attached = desk.attach(keyboard());
  manager.matchAll();
  tap(attached, a);
  run();
  manager.schedule();
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
  manager.unschedule();
  manager.open();
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
  manager.schedule();
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 2U);
}

TEST_F(HIDManagerTest, aValueOnItsWayIsLostWhenNobodyListensAnyMore) {
  const auto attached = desk.attach(keyboard());
  listen();
  tap(attached, a);
  manager.unschedule();
  run();
  EXPECT_TRUE(manager.heard.empty());
}

TEST_F(HIDManagerTest, inTheDefaultModeValuesWaitForTheMenuToClose) {
  const auto attached = desk.attach(keyboard());
  manager.matchAll();
  manager.schedule(kCFRunLoopDefaultMode);
  manager.open();
  desk.setTracking(true);
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
  desk.setTracking(false);
  run();
  EXPECT_EQ(manager.heard.size(), 2U);
}

TEST_F(HIDManagerTest, inTheCommonModesValuesDoNotWait) {
  const auto attached = desk.attach(keyboard());
  listen();
  desk.setTracking(true);
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 2U);
}

TEST_F(HIDManagerDeathTest, aValueLivesForTheCallOnly) {
  const auto attached = desk.attach(keyboard());
  listen();
  IOHIDValueRef kept = nullptr;
  manager.action = [&](IOHIDValueRef value) { kept = value; };
  desk.press(attached, a);
  run();
  EXPECT_DEATH(IOHIDValueGetIntegerValue(kept), "IOHIDValue #[0-9]+ was released before");
}

TEST_F(HIDManagerTest, aRetainedValueLivesLonger) {
  const auto attached = desk.attach(keyboard());
  listen();
  IOHIDValueRef kept = nullptr;
  manager.action = [&](IOHIDValueRef value) { kept = value; };
  manager.action = [&](IOHIDValueRef value) {
    kept = static_cast<IOHIDValueRef>(const_cast<void*>(CFRetain(value)));
  };
  desk.press(attached, a);
  run();
  EXPECT_EQ(IOHIDValueGetIntegerValue(kept), 1);
  EXPECT_EQ(platform.liveReferences().size(), 2U);
  CFRelease(kept);
}

TEST_F(HIDManagerTest, permissionDecidesOverKeyboardsAndMiceOnly) {
  desk.setInputMonitoring(Access::denied);
  const auto withKeys = desk.attach(device({{DeviceDescription::mouse}}));
  const auto withMedia = desk.attach(media());
  manager.matchAll();
  manager.schedule();
  EXPECT_EQ(manager.open(), kIOReturnNotPermitted);
  tap(withKeys, KeyName("button3"));
  tap(withMedia, KeyName("mute"));
  run();
  EXPECT_EQ(manager.heard.size(), 2U); // an error does not mean that nothing was opened
  EXPECT_TRUE(platform.prompts().empty());
}

TEST_F(HIDManagerTest, aCollectionOfMouseOrKeyboardAnywhereNeedsPermission) {
  desk.setInputMonitoring(Access::denied);
  for (const desk::Usage usage : {desk::Usage{1, 2}, {1, 6}, {1, 7}, {0x0D, 5}}) {
    const auto attached = desk.attach(device({{{0x0C, 1}, usage}}));
    Manager other;
    other.matchAll();
    EXPECT_EQ(other.open(), kIOReturnNotPermitted) << usage.page << ' ' << usage.usage;
    desk.detach(attached);
  }
  desk.attach(device({{{0x0C, 1}, {0x0B, 5}}}));
  manager.matchAll();
  EXPECT_EQ(manager.open(), kIOReturnSuccess);
}

TEST_F(HIDManagerTest, namingDevicesNeedsNoPermission) {
  desk.setInputMonitoring(Access::denied);
  desk.attach(keyboard());
  manager.matchAll();
  EXPECT_EQ(text(IOHIDDeviceGetProperty(manager.devices().at(0), CFSTR(kIOHIDProductKey))),
            "Device");
}

TEST_F(HIDManagerTest, openingAsksWhenTheUserHasNotDecided) {
  desk.setInputMonitoring(Access::unknown);
  desk.attach(media());
  Manager harmless;
  harmless.matchAll();
  EXPECT_EQ(harmless.open(), kIOReturnSuccess);
  EXPECT_TRUE(platform.prompts().empty());
  desk.attach(pad());
  manager.matchAll();
  EXPECT_EQ(manager.open(), kIOReturnNotPermitted);
  EXPECT_EQ(platform.prompts(), (std::vector{Platform::Prompt::inputMonitoring}));
}

TEST_F(HIDManagerTest, theSecondOpenSucceedsAndOpensNothing) {
  desk.setInputMonitoring(Access::denied);
  const auto attached = desk.attach(keyboard());
  manager.matchAll();
  manager.schedule();
  EXPECT_NE(manager.open(), kIOReturnSuccess);
  desk.setInputMonitoring(Access::granted);
  EXPECT_EQ(manager.open(), kIOReturnSuccess);
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
}

TEST_F(HIDManagerTest, aRefusalSticksToTheDeviceObject) {
  desk.setInputMonitoring(Access::denied);
  desk.attach(keyboard());
  manager.matchAll();
  EXPECT_EQ(manager.open(), kIOReturnNotPermitted);
  desk.setInputMonitoring(Access::granted);
  EXPECT_EQ(IOHIDManagerClose(manager.ref, 0), kIOReturnSuccess);
  EXPECT_EQ(manager.open(), kIOReturnNotPermitted);
  Manager fresh;
  fresh.matchAll();
  EXPECT_EQ(fresh.open(), kIOReturnSuccess);
}

TEST_F(HIDManagerTest, openingFailsAsOftenAsWanted) {
  desk.attach(pad());
  desk.faults().failingOpens = 2;
  platform.setOpenError(kIOReturnExclusiveAccess);
  const auto tryOpen = [] {
    Manager fresh;
    fresh.matchAll();
    return fresh.open();
  };
  EXPECT_EQ(tryOpen(), kIOReturnExclusiveAccess); // one strike for all its devices
  EXPECT_EQ(tryOpen(), kIOReturnExclusiveAccess);
  EXPECT_EQ(tryOpen(), kIOReturnSuccess);
}

TEST_F(HIDManagerTest, openingWithoutDevicesSucceeds) {
  desk.faults().failingOpens = 1;
  manager.matchAll();
  EXPECT_EQ(manager.open(), kIOReturnSuccess);
  EXPECT_EQ(desk.faults().failingOpens, 1);
}

TEST_F(HIDManagerTest, anOpenMayBeDeaf) {
  const auto attached = desk.attach(keyboard());
  desk.faults().deafOpens = true;
  listen();
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
}

TEST_F(HIDManagerTest, whatAppearsLaterIsOpenedByItself) {
  listen();
  const auto attached = desk.attach(keyboard());
  run();
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 2U);
}

TEST_F(HIDManagerTest, aDeviceThatIsGoneLeavesAndIsSilent) {
  const auto attached = desk.attach(keyboard());
  desk.attach(media());
  listen();
  EXPECT_EQ(manager.deviceCount(), 2);
  desk.press(attached, a);
  run();
  desk.detach(attached);
  run();
  EXPECT_EQ(manager.deviceCount(), 1);
  EXPECT_EQ(manager.heard.size(), 1U);
}

TEST_F(HIDManagerTest, closingUnschedulesToo) {
  const auto attached = desk.attach(keyboard());
  listen();
  EXPECT_EQ(IOHIDManagerClose(manager.ref, 0), kIOReturnSuccess);
  manager.unschedule(); // harmless
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
  EXPECT_EQ(manager.open(), kIOReturnSuccess);
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty()); // open, but not scheduled any more
  manager.schedule();
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 2U);
}

TEST_F(HIDManagerTest, closingWhatIsNotOpenSaysSo) {
  EXPECT_EQ(IOHIDManagerClose(manager.ref, 0), kIOReturnNotOpen);
}

TEST_F(HIDManagerDeathTest, schedulingTwiceAborts) {
  manager.schedule();
  EXPECT_DEATH(manager.schedule(), "IOHIDManager #[0-9]+ is scheduled already");
  EXPECT_DEATH(manager.schedule(kCFRunLoopDefaultMode), "is scheduled already");
}

TEST_F(HIDManagerTest, unschedulingFromAnotherModeDoesNothing) {
  const auto attached = desk.attach(keyboard());
  listen();
  manager.unschedule(kCFRunLoopDefaultMode);
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 2U);
}

TEST_F(HIDManagerTest, releasingAnOpenManagerClosesIt) {
  const auto attached = desk.attach(keyboard());
  listen();
  tap(attached, a); // on the way
  manager.release();
  tap(attached, a);
  run();
  EXPECT_TRUE(manager.heard.empty());
}

TEST_F(HIDManagerDeathTest, aManagerIsNotReleasedWithinItsCallback) {
  const auto attached = desk.attach(keyboard());
  listen();
  manager.action = [&](IOHIDValueRef) { manager.release(); };
  desk.press(attached, a);
  EXPECT_DEATH(run(), "IOHIDManager #[0-9]+ is released within its own value callback");
}

TEST_F(HIDManagerTest, aManagerMayBeUnscheduledWithinItsCallback) {
  const auto attached = desk.attach(keyboard());
  listen();
  manager.action = [&](IOHIDValueRef) { manager.unschedule(); };
  tap(attached, a);
  run();
  EXPECT_EQ(manager.heard.size(), 1U);
}

TEST_F(HIDManagerTest, matchingAgainForgetsTheDevices) {
  desk.attach(keyboard());
  manager.matchAll();
  IOHIDDeviceRef before = manager.devices().at(0);
  CFRetain(before);
  manager.matchAll();
  EXPECT_NE(manager.devices().at(0), before);
  CFRelease(before);
}

TEST_F(HIDManagerTest, aDevicesPropertiesReachUpToItsParents) {
  desk.attach(pad());
  manager.matchAll();
  IOHIDDeviceRef pad = manager.devices().at(0);
  CFTypeRef vendor = IOHIDDeviceGetProperty(pad, CFSTR(kIOHIDVendorIDKey));
  EXPECT_EQ(integer(vendor), 0x4C4A);
  EXPECT_EQ(IOHIDDeviceGetProperty(pad, CFSTR(kIOHIDVendorIDKey)), vendor); // the same object
  EXPECT_EQ(integer(IOHIDDeviceGetProperty(pad, CFSTR("idVendor"))), 0x4C4A);
  EXPECT_EQ(IOHIDDeviceGetProperty(pad, CFSTR("NoSuchProperty")), nullptr);
}

TEST_F(HIDManagerDeathTest, whatADeviceGivesIsBorrowed) {
  desk.attach(pad());
  manager.matchAll();
  IOHIDDeviceRef pad = manager.devices().at(0);
  EXPECT_DEATH(CFRelease(IOHIDDeviceGetProperty(pad, CFSTR(kIOHIDVendorIDKey))),
               "is released once too often");
  EXPECT_DEATH(IOObjectRelease(IOHIDDeviceGetService(pad)), "is released once too often");
  EXPECT_DEATH(CFRelease(pad), "IOHIDDevice #[0-9]+ is released once too often");
}

TEST_F(HIDManagerDeathTest, aServiceLastsAsLongAsItsDeviceUnlessItIsRetained) {
  desk.attach(pad());
  manager.matchAll();
  const io_service_t borrowed = IOHIDDeviceGetService(manager.devices().at(0));
  const io_service_t kept = IOHIDDeviceGetService(manager.devices().at(1));
  IOObjectRetain(kept);
  std::uint64_t id = 0;
  EXPECT_EQ(IORegistryEntryGetRegistryEntryID(borrowed, &id), kIOReturnSuccess);
  manager.release();
  EXPECT_DEATH(IORegistryEntryGetRegistryEntryID(borrowed, &id), "was released before");
  EXPECT_EQ(IORegistryEntryGetRegistryEntryID(kept, &id), kIOReturnSuccess);
  IOObjectRelease(kept);
}

TEST_F(HIDManagerDeathTest, theSetOfDevicesIsOwned) {
  desk.attach(keyboard());
  manager.matchAll();
  CFSetRef set = IOHIDManagerCopyDevices(manager.ref);
  EXPECT_EQ(platform.liveReferences().size(), 2U);
  CFRelease(set);
  EXPECT_DEATH(CFRelease(set), "CFSet #[0-9]+ was released before");
}

TEST_F(HIDManagerDeathTest, aDeviceIsNoManager) {
  desk.attach(keyboard());
  manager.matchAll();
  auto* device = reinterpret_cast<IOHIDManagerRef>(manager.devices().at(0));
  EXPECT_DEATH(IOHIDManagerOpen(device, 0), "IOHIDDevice #[0-9]+ is no IOHIDManager");
}

} // namespace
} // namespace trellivar::darwin_double
