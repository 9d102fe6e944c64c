#include "tests/simulator/darwin/fixture.h"

#include <IOKit/IOKitLib.h>
#include <IOKit/hid/IOHIDKeys.h>
#include <IOKit/serial/IOSerialKeys.h>

#include <algorithm>

namespace trellivar::darwin_double {
namespace {

std::uint64_t idOf(io_registry_entry_t entry) {
  std::uint64_t id = 0;
  EXPECT_EQ(IORegistryEntryGetRegistryEntryID(entry, &id), kIOReturnSuccess);
  return id;
}

/// Reads the iterator to its end.
std::vector<std::uint64_t> drain(io_iterator_t iterator) {
  std::vector<std::uint64_t> ids;
  while (const io_object_t entry = IOIteratorNext(iterator)) {
    ids.push_back(idOf(entry));
    IOObjectRelease(entry);
  }
  return ids;
}

class RegistryTest : public DarwinTest {
protected:
  io_iterator_t matching(CFDictionaryRef wanted) {
    io_iterator_t result = 77;
    EXPECT_EQ(IOServiceGetMatchingServices(kIOMainPortDefault, wanted, &result), kIOReturnSuccess);
    return result;
  }
  /// The ids of what matches.
  std::vector<std::uint64_t> found(CFDictionaryRef wanted) {
    const io_iterator_t iterator = matching(wanted);
    if (iterator == 0) return {};
    auto ids = drain(iterator);
    IOObjectRelease(iterator);
    return ids;
  }
  io_object_t only(CFDictionaryRef wanted) {
    const io_iterator_t iterator = matching(wanted);
    const io_object_t entry = IOIteratorNext(iterator);
    IOObjectRelease(iterator);
    return entry;
  }
};
using RegistryDeathTest = RegistryTest;

TEST_F(RegistryTest, findsTheEntriesOfAClassAndItsSubclasses) {
  const auto device = desk.attach(pad());
  auto ids = found(IOServiceMatching(kIOHIDDeviceKey));
  std::ranges::sort(ids);
  EXPECT_EQ(ids, desk.interfaces(device));
  EXPECT_EQ(ids.size(), 3U);
  EXPECT_EQ(found(IOServiceMatching(kIOSerialBSDServiceValue)).size(), 1U);
}

TEST_F(RegistryTest, answersNoMatchWithNoIterator) {
  EXPECT_EQ(matching(IOServiceMatching(kIOHIDDeviceKey)), 0U);
}

TEST_F(RegistryTest, furtherKeysNarrowTheMatch) {
  const auto device = desk.attach(pad());
  desk.attach({.product = "Other", .identity = {1, 2}, .interfaces = {{{0x01, 0x06}}}});
  CFMutableDictionaryRef wanted = IOServiceMatching(kIOHIDDeviceKey);
  CFNumberRef vendor = number(0x4C4A);
  CFDictionarySetValue(wanted, CFSTR(kIOHIDVendorIDKey), vendor);
  CFRelease(vendor);
  auto ids = found(wanted);
  std::ranges::sort(ids);
  EXPECT_EQ(ids, desk.interfaces(device));
}

TEST_F(RegistryTest, findsAnEntryById) {
  const auto interface = desk.interfaces(desk.attach(pad())).at(1);
  EXPECT_EQ(found(IORegistryEntryIDMatching(interface)), (std::vector<std::uint64_t>{interface}));
  EXPECT_TRUE(found(IORegistryEntryIDMatching(interface + 1000)).empty());
}

TEST_F(RegistryDeathTest, aLookUpUsesUpItsDictionary) {
  desk.attach(pad());
  EXPECT_DEATH(
      {
        CFMutableDictionaryRef wanted = IOServiceMatching("NoSuchClass");
        matching(wanted);
        CFRelease(wanted);
      },
      "CFRelease: CFDictionary #[0-9]+ was released before");
  EXPECT_DEATH(
      {
        CFMutableDictionaryRef wanted = IOServiceMatching(kIOHIDDeviceKey);
        matching(wanted);
        matching(wanted);
      },
      "CFDictionary #[0-9]+ (was released before|is released once too often)");
}

TEST_F(RegistryTest, aDictionaryThatIsRetainedServesTwice) {
  desk.attach(pad());
  CFMutableDictionaryRef wanted = IOServiceMatching(kIOHIDDeviceKey);
  CFRetain(wanted);
  EXPECT_EQ(found(wanted).size(), 3U);
  EXPECT_EQ(found(wanted).size(), 3U);
}

TEST_F(RegistryTest, aLookUpThatFailsUsesUpItsDictionaryAsWell) {
  desk.attach(pad());
  desk.faults().failingMatches = 1;
  io_iterator_t iterator = 77;
  EXPECT_NE(IOServiceGetMatchingServices(0, IOServiceMatching(kIOHIDDeviceKey), &iterator),
            kIOReturnSuccess);
  EXPECT_EQ(iterator, 0U);
  EXPECT_EQ(platform.liveReferences(), std::vector<std::string>{});
  EXPECT_EQ(found(IOServiceMatching(kIOHIDDeviceKey)).size(), 3U); // once
}

TEST_F(RegistryTest, noDictionaryIsABadArgument) {
  io_iterator_t iterator = 0;
  EXPECT_EQ(IOServiceGetMatchingServices(0, nullptr, &iterator), kIOReturnBadArgument);
}

TEST_F(RegistryTest, everyObjectHandedOutIsOwned) {
  desk.attach(pad());
  const io_iterator_t iterator = matching(IOServiceMatching(kIOHIDDeviceKey));
  const io_object_t first = IOIteratorNext(iterator);
  const auto live = platform.liveReferences();
  ASSERT_EQ(live.size(), 2U);
  EXPECT_NE(live[0].find("registry iterator"), std::string::npos) << live[0];
  EXPECT_NE(live[1].find("registry entry"), std::string::npos) << live[1];
  IOObjectRelease(iterator);
  IOObjectRetain(first);
  IOObjectRelease(first);
  EXPECT_EQ(platform.liveReferences().size(), 1U);
  IOObjectRelease(first);
}

TEST_F(RegistryDeathTest, anObjectIsReleasedOnce) {
  desk.attach(pad());
  EXPECT_DEATH(
      {
        const io_object_t entry = only(IOServiceMatching(kIOHIDDeviceKey));
        // Another reference to the same entry does not cover for it.
        only(IOServiceMatching(kIOHIDDeviceKey));
        IOObjectRelease(entry);
        IOObjectRelease(entry);
      },
      "IOObjectRelease: I/O Kit object [0-9]+ was released before");
  EXPECT_DEATH(
      {
        const io_object_t entry = only(IOServiceMatching(kIOHIDDeviceKey));
        IOObjectRelease(entry);
        idOf(entry);
      },
      "IORegistryEntryGetRegistryEntryID: I/O Kit object [0-9]+ was released before");
  EXPECT_DEATH(
      {
        const io_iterator_t iterator = matching(IOServiceMatching(kIOHIDDeviceKey));
        IOObjectRelease(iterator);
        IOIteratorNext(iterator);
      },
      "IOIteratorNext: I/O Kit object [0-9]+ was released before");
}

TEST_F(RegistryDeathTest, objectsAreUsedForWhatTheyAre) {
  desk.attach(pad());
  const io_iterator_t iterator = matching(IOServiceMatching(kIOHIDDeviceKey));
  const io_object_t entry = IOIteratorNext(iterator);
  EXPECT_DEATH(idOf(iterator), "registry iterator [0-9]+ is no registry entry");
  EXPECT_DEATH(IOIteratorNext(entry), "registry entry .* is no iterator");
  EXPECT_DEATH(idOf(12), "I/O Kit object 12 was never given");
  IOObjectRelease(entry);
  IOObjectRelease(iterator);
}

TEST_F(RegistryTest, releasingNothingIsOnlyAnError) {
  EXPECT_NE(IOObjectRelease(IO_OBJECT_NULL), kIOReturnSuccess);
  EXPECT_NE(IOObjectRetain(IO_OBJECT_NULL), kIOReturnSuccess);
}

TEST_F(RegistryTest, anIteratorStartsAgain) {
  desk.attach(pad());
  const io_iterator_t iterator = matching(IOServiceMatching(kIOHIDDeviceKey));
  EXPECT_EQ(drain(iterator).size(), 3U);
  EXPECT_EQ(IOIteratorNext(iterator), 0U);
  IOIteratorReset(iterator);
  EXPECT_EQ(drain(iterator).size(), 3U);
  IOObjectRelease(iterator);
}

TEST_F(RegistryTest, anIteratorBreaksWhenTheRegistryChangesUnderIt) {
  desk.attach(pad());
  desk.faults().brokenIterators = true;
  const io_iterator_t iterator = matching(IOServiceMatching(kIOHIDDeviceKey));
  platform.duringNextIteration([&] { desk.attach(pad()); });
  EXPECT_EQ(drain(iterator).size(), 1U);
  EXPECT_EQ(IOIteratorIsValid(iterator), 0);
  EXPECT_EQ(IOIteratorNext(iterator), 0U);
  IOIteratorReset(iterator);
  EXPECT_NE(IOIteratorIsValid(iterator), 0);
  EXPECT_EQ(drain(iterator).size(), 6U);
  EXPECT_NE(IOIteratorIsValid(iterator), 0);
  IOObjectRelease(iterator);
}

TEST_F(RegistryTest, aSoundIteratorGivesWhatWasThereAtItsStart) {
  desk.attach(pad());
  const io_iterator_t iterator = matching(IOServiceMatching(kIOHIDDeviceKey));
  desk.attach(pad());
  EXPECT_EQ(drain(iterator).size(), 3U);
  EXPECT_NE(IOIteratorIsValid(iterator), 0);
  IOObjectRelease(iterator);
}

TEST_F(RegistryTest, propertiesAreThoseOfTheOneEntry) {
  desk.attach(pad());
  const io_object_t interface = only(IOServiceMatching(kIOHIDDeviceKey));
  CFTypeRef product =
      IORegistryEntryCreateCFProperty(interface, CFSTR(kIOHIDProductKey), nullptr, 0);
  EXPECT_EQ(text(product), "Pad");
  EXPECT_EQ(platform.liveReferences().size(), 2U); // the property is owned
  CFRelease(product);
  EXPECT_EQ(IORegistryEntryCreateCFProperty(interface, CFSTR("idVendor"), nullptr, 0), nullptr);
  CFTypeRef above =
      IORegistryEntrySearchCFProperty(interface, kIOServicePlane, CFSTR("idVendor"), nullptr,
                                      kIORegistryIterateRecursively | kIORegistryIterateParents);
  EXPECT_EQ(integer(above), 0x4C4A);
  CFRelease(above);
  IOObjectRelease(interface);
}

TEST_F(RegistryTest, searchingLooksDownAndOnlyWhereItIsTold) {
  const auto device = desk.attach(pad());
  const io_object_t usb = only(IORegistryEntryIDMatching(device));
  CFTypeRef below = IORegistryEntrySearchCFProperty(
      usb, kIOServicePlane, CFSTR(kIOCalloutDeviceKey), nullptr, kIORegistryIterateRecursively);
  EXPECT_EQ(text(below), "/dev/cu.usbmodem1101");
  CFRelease(below);
  EXPECT_EQ(
      IORegistryEntrySearchCFProperty(usb, kIOServicePlane, CFSTR(kIOCalloutDeviceKey), nullptr, 0),
      nullptr);
  IOObjectRelease(usb);
}

TEST_F(RegistryTest, usagePairsAreAPropertyToo) {
  desk.attach({.product = "Combo", .identity = {1, 2}, .interfaces = {{{1, 6}, {12, 1}}}});
  const io_object_t entry = only(IOServiceMatching(kIOHIDDeviceKey));
  CFTypeRef pairs =
      IORegistryEntryCreateCFProperty(entry, CFSTR(kIOHIDDeviceUsagePairsKey), nullptr, 0);
  ASSERT_EQ(CFArrayGetCount(static_cast<CFArrayRef>(pairs)), 2);
  auto* second =
      static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(static_cast<CFArrayRef>(pairs), 1));
  EXPECT_EQ(integer(CFDictionaryGetValue(second, CFSTR(kIOHIDDeviceUsagePageKey))), 12);
  EXPECT_EQ(integer(CFDictionaryGetValue(second, CFSTR(kIOHIDDeviceUsageKey))), 1);
  CFRelease(pairs);
  IOObjectRelease(entry);
}

TEST_F(RegistryTest, theWayUpEndsAtTheRoot) {
  const auto device = desk.attach(pad());
  io_object_t entry = only(IOServiceMatching(kIOSerialBSDServiceValue));
  int steps = 0;
  for (;;) {
    io_registry_entry_t parent = 77;
    const kern_return_t result = IORegistryEntryGetParentEntry(entry, kIOServicePlane, &parent);
    if (result != kIOReturnSuccess) {
      EXPECT_EQ(result, kIOReturnNoDevice);
      break;
    }
    IOObjectRelease(entry);
    entry = parent;
    ++steps;
  }
  EXPECT_EQ(steps, 4);
  EXPECT_EQ(idOf(entry), device);
  IOObjectRelease(entry);
}

TEST_F(RegistryTest, aRecursiveIteratorGivesAllBelowButNotTheEntryItself) {
  const auto device = desk.attach(pad());
  const io_object_t usb = only(IORegistryEntryIDMatching(device));
  const auto ids = [&](IOOptionBits options) {
    io_iterator_t iterator = 0;
    EXPECT_EQ(IORegistryEntryCreateIterator(usb, kIOServicePlane, options, &iterator),
              kIOReturnSuccess);
    auto result = drain(iterator);
    IOObjectRelease(iterator);
    std::ranges::sort(result);
    return result;
  };
  auto descendants = desk.registry().descendants(device);
  std::ranges::sort(descendants);
  EXPECT_EQ(ids(kIORegistryIterateRecursively), descendants);
  EXPECT_EQ(ids(0), desk.registry().find(device)->children);
  EXPECT_TRUE(ids(kIORegistryIterateParents).empty());
  IOObjectRelease(usb);
}

TEST_F(RegistryTest, anObjectOutlivesItsDevice) {
  const auto device = desk.attach(pad());
  const io_object_t entry = only(IOServiceMatching(kIOHIDDeviceKey));
  const std::uint64_t id = idOf(entry);
  desk.detach(device);
  EXPECT_EQ(idOf(entry), id);
  CFTypeRef product = IORegistryEntryCreateCFProperty(entry, CFSTR(kIOHIDProductKey), nullptr, 0);
  EXPECT_EQ(text(product), "Pad");
  CFRelease(product);
  IOObjectRelease(entry);
  EXPECT_NE(desk.attach(pad()), device); // ids are not used again
}

/// A notification of the program, and what its callbacks have read.
class Watch {
public:
  Watch() : port(IONotificationPortCreate(kIOMainPortDefault)) {
    IONotificationPortSetDispatchQueue(port, dispatch_get_main_queue());
  }
  ~Watch() { end(); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  kern_return_t start(const char* type) {
    io_name_t name = "";
    std::snprintf(name, sizeof name, "%s", type);
    return IOServiceAddMatchingNotification(
        port, name, IOServiceMatching(kIOHIDDeviceKey),
        [](void* context, io_iterator_t arrived) { static_cast<Watch*>(context)->hear(arrived); },
        this, &iterator);
  }
  void hear(io_iterator_t arrived) {
    ++calls;
    EXPECT_EQ(arrived, iterator);
    if (action)
      action();
    else
      heard.push_back(drain(arrived));
  }
  void end() {
    if (iterator) IOObjectRelease(std::exchange(iterator, 0));
    if (port) IONotificationPortDestroy(std::exchange(port, nullptr));
  }

  IONotificationPortRef port;
  io_iterator_t iterator = 0;
  int calls = 0;
  std::vector<std::vector<std::uint64_t>> heard;
  std::function<void()> action;
};

desk::DeviceDescription keyboard() {
  return {.product = "Keyboard", .identity = {1, 2}, .interfaces = {{{0x01, 0x06}}}};
}

TEST_F(RegistryTest, aNotificationStartsWithWhatIsThere) {
  const auto device = desk.attach(pad());
  Watch arrivals;
  ASSERT_EQ(arrivals.start(kIOFirstMatchNotification), kIOReturnSuccess);
  auto ids = drain(arrivals.iterator);
  std::ranges::sort(ids);
  EXPECT_EQ(ids, desk.interfaces(device));
  Watch departures;
  ASSERT_EQ(departures.start(kIOTerminatedNotification), kIOReturnSuccess);
  EXPECT_TRUE(drain(departures.iterator).empty());
}

TEST_F(RegistryTest, aNotificationIsSilentUntilItWasReadToItsEnd) {
  desk.attach(keyboard());
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  IOObjectRelease(IOIteratorNext(watch.iterator)); // one, but not the end
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 0);
  EXPECT_EQ(drain(watch.iterator).size(), 1U);
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 1);
}

TEST_F(RegistryTest, oneMessageTellsOfAllArrivalsTheLastOneFirst) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  const auto device = desk.attach(pad());
  EXPECT_EQ(watch.calls, 0); // not within the change
  run();
  auto expected = desk.interfaces(device);
  std::ranges::reverse(expected);
  EXPECT_EQ(watch.heard, (std::vector<std::vector<std::uint64_t>>{expected}));
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 2); // armed again
}

TEST_F(RegistryTest, aCallbackThatDoesNotReadToTheEndIsTheLast) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  watch.action = [&] { IOObjectRelease(IOIteratorNext(watch.iterator)); };
  desk.attach(keyboard());
  run();
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 1);
  drain(watch.iterator);
}

TEST_F(RegistryTest, departuresComeWithTheirLastState) {
  const auto device = desk.attach(keyboard());
  const auto interface = desk.interfaces(device).at(0);
  Watch watch;
  watch.start(kIOTerminatedNotification);
  drain(watch.iterator);
  watch.action = [&] {
    const io_object_t gone = IOIteratorNext(watch.iterator);
    EXPECT_EQ(idOf(gone), interface);
    CFTypeRef product = IORegistryEntryCreateCFProperty(gone, CFSTR(kIOHIDProductKey), nullptr, 0);
    EXPECT_EQ(text(product), "Keyboard");
    CFRelease(product);
    IOObjectRelease(gone);
    drain(watch.iterator);
  };
  desk.attach(keyboard()); // an arrival is none
  desk.detach(device);
  run();
  EXPECT_EQ(watch.calls, 1);
}

TEST_F(RegistryTest, releasingTheIteratorCancelsTheNotification) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  desk.attach(keyboard()); // its message is on the way
  IOObjectRelease(std::exchange(watch.iterator, 0));
  run();
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 0);
}

TEST_F(RegistryTest, destroyingThePortEndsItsNotifications) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  IONotificationPortDestroy(std::exchange(watch.port, nullptr));
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 0);
}

TEST_F(RegistryTest, withoutAQueueMessagesWait) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  IONotificationPortSetDispatchQueue(watch.port, nullptr);
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 0);
  IONotificationPortSetDispatchQueue(watch.port, dispatch_get_main_queue());
  run();
  EXPECT_EQ(watch.calls, 1);
}

TEST_F(RegistryTest, theMainQueueNotifiesWhileAMenuIsOpen) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  desk.setTracking(true);
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 1);
}

TEST_F(RegistryTest, aPortMayNotifyThroughTheRunLoop) {
  Watch watch;
  IONotificationPortSetDispatchQueue(watch.port, nullptr);
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  CFRunLoopSourceRef source = IONotificationPortGetRunLoopSource(watch.port);
  CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);
  desk.setTracking(true);
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 0);
  desk.setTracking(false);
  run();
  EXPECT_EQ(watch.calls, 1);
  CFRunLoopRemoveSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);
  desk.attach(keyboard());
  run();
  EXPECT_EQ(watch.calls, 1);
}

TEST_F(RegistryTest, aNotificationThatCannotBeAddedUsesUpItsDictionaryAsWell) {
  Watch watch;
  desk.faults().failingMatches = 1;
  EXPECT_NE(watch.start(kIOFirstMatchNotification), kIOReturnSuccess);
  EXPECT_EQ(watch.iterator, 0U);
  EXPECT_NE(watch.start("IONoSuchNotification"), kIOReturnSuccess);
  EXPECT_EQ(platform.liveReferences().size(), 1U); // the port alone
}

TEST_F(RegistryDeathTest, aNotificationUsesUpItsDictionary) {
  EXPECT_DEATH(
      {
        Watch watch;
        CFMutableDictionaryRef wanted = IOServiceMatching(kIOHIDDeviceKey);
        const io_name_t type = kIOFirstMatchNotification;
        CFRetain(wanted);
        IOServiceAddMatchingNotification(
            watch.port, type, wanted, [](void*, io_iterator_t) {}, nullptr, &watch.iterator);
        CFRelease(wanted);
        CFRelease(wanted);
      },
      "CFDictionary #[0-9]+ is released once too often");
}

TEST_F(RegistryDeathTest, aPortIsDestroyedOnce) {
  EXPECT_DEATH(
      {
        IONotificationPortRef port = IONotificationPortCreate(0);
        IONotificationPortDestroy(port);
        IONotificationPortDestroy(port);
      },
      "IONotificationPortDestroy: IONotificationPort #[0-9]+ was destroyed before");
}

TEST_F(RegistryDeathTest, theIteratorIsNotReleasedWithinItsCallback) {
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  drain(watch.iterator);
  watch.action = [&] { IOObjectRelease(watch.iterator); };
  desk.attach(keyboard());
  EXPECT_DEATH(run(), "notification iterator [0-9]+ is released within its own callback");
}

TEST_F(RegistryTest, whatIsLeftOfANotificationIsNamed) {
  {
    IONotificationPortRef port = IONotificationPortCreate(0);
    const auto live = platform.liveReferences();
    ASSERT_EQ(live.size(), 1U);
    EXPECT_NE(live[0].find("IONotificationPort #1: not destroyed"), std::string::npos) << live[0];
    IONotificationPortDestroy(port);
  }
  Watch watch;
  watch.start(kIOFirstMatchNotification);
  EXPECT_EQ(platform.liveReferences().size(), 2U);
}

TEST_F(RegistryTest, portsMayBeMissing) {
  desk.faults().failingPorts = 1;
  EXPECT_EQ(IONotificationPortCreate(0), nullptr);
}

} // namespace
} // namespace trellivar::darwin_double
