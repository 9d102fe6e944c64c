#include "tests/simulator/darwin/fixture.h"

#include <ApplicationServices/ApplicationServices.h>
#include <IOKit/hidsystem/IOLLEvent.h>

#include <utility>

namespace trellivar::darwin_double {
namespace {

using desk::InputEvent;

constexpr CGEventMask keys = CGEventMaskBit(kCGEventKeyDown) | CGEventMaskBit(kCGEventKeyUp) |
                             CGEventMaskBit(kCGEventFlagsChanged) | CGEventMaskBit(NX_SYSDEFINED);

/// A tap of the program.
class Tap {
public:
  ~Tap() { end(); }

  bool create(CGEventMask mask = keys, CGEventTapLocation location = kCGSessionEventTap,
              CGEventTapPlacement placement = kCGHeadInsertEventTap,
              CGEventTapOptions options = kCGEventTapOptionDefault) {
    port = CGEventTapCreate(
        location, placement, options, mask,
        [](CGEventTapProxy, CGEventType type, CGEventRef event, void* context) {
          return static_cast<Tap*>(context)->hear(type, event);
        },
        this);
    return port != nullptr;
  }
  void listen(CFStringRef mode = kCFRunLoopCommonModes) {
    source = CFMachPortCreateRunLoopSource(nullptr, port, 0);
    CFRunLoopAddSource(CFRunLoopGetMain(), source, mode);
  }
  CGEventRef hear(CGEventType type, CGEventRef event) {
    types.push_back(type);
    if (event) codes.push_back(CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode));
    return action && event ? action(event) : event;
  }
  void end() {
    if (port) CFMachPortInvalidate(port);
    if (source) CFRelease(std::exchange(source, nullptr));
    if (port) CFRelease(std::exchange(port, nullptr));
  }

  CFMachPortRef port = nullptr;
  CFRunLoopSourceRef source = nullptr;
  std::vector<CGEventType> types;
  std::vector<std::int64_t> codes;
  std::function<CGEventRef(CGEventRef)> action;
};

class EventTapTest : public DarwinTest {
protected:
  void TearDown() override {
    tap.end();
    DarwinTest::TearDown();
  }
  void press(const char* name = "a") { desk.press(keyboard, KeyName(name)); }
  /// Presses and releases the key, and lets that arrive.
  void strike(const char* name = "a") {
    press(name);
    desk.release(keyboard, KeyName(name));
    run();
  }
  void create() {
    ASSERT_TRUE(tap.create());
    tap.listen();
  }
  std::size_t received() { return desk.events().received().size(); }

  desk::Desk::DeviceId keyboard =
      desk.attach({.product = "Keyboard",
                   .identity = {1, 2},
                   .interfaces = {{{0x01, 0x06}}, {{0x01, 0x02}}, {{0x0C, 0x01}}}});
  Tap tap;
};
using EventTapDeathTest = EventTapTest;

TEST_F(EventTapTest, seesTheEventsOfItsMask) {
  create();
  strike();
  strike("left_shift");
  strike("mute");
  strike("button3");
  EXPECT_EQ(tap.types,
            (std::vector<CGEventType>{kCGEventKeyDown, kCGEventKeyUp, kCGEventFlagsChanged,
                                      kCGEventFlagsChanged, static_cast<CGEventType>(NX_SYSDEFINED),
                                      static_cast<CGEventType>(NX_SYSDEFINED)}));
  EXPECT_EQ(received(), 8U);
}

TEST_F(EventTapTest, hardwareEventsCarryTheirServiceAndNoProcess) {
  create();
  std::int64_t sender = 0;
  std::int64_t process = 77;
  tap.action = [&](CGEventRef event) {
    sender = CGEventGetIntegerValueField(event, static_cast<CGEventField>(87));
    process = CGEventGetIntegerValueField(event, kCGEventSourceUnixProcessID);
    return event;
  };
  strike();
  EXPECT_EQ(static_cast<desk::EntryId>(sender), desk.leafSender(keyboard, 7));
  EXPECT_EQ(process, 0);
}

TEST_F(EventTapTest, hearsNothingUntilItsSourceIsInTheRunLoop) {
  ASSERT_TRUE(tap.create());
  EXPECT_TRUE(CGEventTapIsEnabled(tap.port)); // enabled from the start
  strike();
  EXPECT_TRUE(tap.types.empty());
  tap.listen();
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
  CFRunLoopRemoveSource(CFRunLoopGetMain(), tap.source, kCFRunLoopCommonModes);
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
  EXPECT_EQ(received(), 6U);
}

TEST_F(EventTapTest, inTheDefaultModeEventsPassWhileAMenuIsOpen) {
  ASSERT_TRUE(tap.create());
  tap.listen(kCFRunLoopDefaultMode);
  desk.setTracking(true);
  strike();
  EXPECT_TRUE(tap.types.empty());
  EXPECT_EQ(received(), 2U);
  desk.setTracking(false);
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
}

TEST_F(EventTapTest, inTheCommonModesAnOpenMenuDoesNotMatter) {
  create();
  desk.setTracking(true);
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
}

TEST_F(EventTapTest, whileDisabledEventsPass) {
  create();
  CGEventTapEnable(tap.port, false);
  EXPECT_FALSE(CGEventTapIsEnabled(tap.port));
  strike();
  EXPECT_TRUE(tap.types.empty());
  EXPECT_EQ(received(), 2U);
  CGEventTapEnable(tap.port, true);
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
}

TEST_F(EventTapTest, noAnswerEndsTheEvent) {
  create();
  tap.action = [](CGEventRef) { return nullptr; };
  strike();
  EXPECT_EQ(received(), 0U);
}

TEST_F(EventTapTest, theSameEventGoesOnAsItWasChanged) {
  create();
  tap.action = [](CGEventRef event) {
    CGEventSetIntegerValueField(event, kCGKeyboardEventKeycode, 8);
    return event;
  };
  strike();
  ASSERT_EQ(received(), 2U);
  EXPECT_EQ(desk.events().received()[0].event.field(InputEvent::keyCode), 8);
}

TEST_F(EventTapTest, anotherEventGoesOnInItsPlaceAndIsReleasedOnce) {
  create();
  tap.action = [](CGEventRef) { return CGEventCreateKeyboardEvent(nullptr, 8, true); };
  press();
  run();
  ASSERT_EQ(received(), 1U);
  EXPECT_EQ(desk.events().received()[0].event.field(InputEvent::keyCode), 8);
  EXPECT_EQ(platform.liveReferences().size(), 2U); // port and source alone
}

TEST_F(EventTapTest, anotherEventThatIsKeptNeedsAReferenceMore) {
  create();
  CGEventRef kept = CGEventCreateKeyboardEvent(nullptr, 8, true);
  tap.action = [&](CGEventRef) {
    CFRetain(kept);
    return kept;
  };
  strike();
  EXPECT_EQ(received(), 2U);
  EXPECT_EQ(CGEventGetType(kept), kCGEventKeyDown);
  CFRelease(kept);
}

TEST_F(EventTapDeathTest, anotherEventWithoutAReferenceAborts) {
  create();
  CGEventRef kept = CGEventCreateKeyboardEvent(nullptr, 8, true);
  tap.action = [&](CGEventRef) { return kept; };
  EXPECT_DEATH(
      {
        strike(); // both the press and the release give away the only reference
      },
      "answer of an event tap's callback: CGEvent #[0-9]+ was released before");
  CFRelease(kept);
}

TEST_F(EventTapDeathTest, theEventThatWasPassedIsNotTheCallbacksToRelease) {
  create();
  tap.action = [](CGEventRef event) {
    CFRelease(event);
    return event;
  };
  press();
  EXPECT_DEATH(run(), "CFRelease: CGEvent #[0-9]+ is released once too often");
}

TEST_F(EventTapTest, theEventThatWasPassedLeaksWhenItIsReturnedRetained) {
  create();
  std::vector<CGEventRef> leaked;
  tap.action = [&](CGEventRef event) {
    CFRetain(event);
    leaked.push_back(event);
    return event;
  };
  strike();
  const auto live = platform.liveReferences();
  ASSERT_EQ(live.size(), 4U); // port, source and two events
  EXPECT_NE(live[2].find("CGEvent #"), std::string::npos) << live[2];
  EXPECT_NE(live[2].find("1 not released, type 10"), std::string::npos) << live[2];
  for (CGEventRef event : leaked)
    CFRelease(event);
}

TEST_F(EventTapDeathTest, theEventThatWasPassedLivesForTheCallOnly) {
  create();
  CGEventRef kept = nullptr;
  tap.action = [&](CGEventRef event) { return kept = event; };
  strike();
  EXPECT_DEATH(CGEventGetFlags(kept), "CGEventGetFlags: CGEvent #[0-9]+ was released before");
}

TEST_F(EventTapTest, theAnswerOfAListenerDoesNotCount) {
  ASSERT_TRUE(
      tap.create(keys, kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionListenOnly));
  tap.listen();
  tap.action = [](CGEventRef event) {
    CGEventSetIntegerValueField(event, kCGKeyboardEventKeycode, 8);
    return nullptr;
  };
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
  ASSERT_EQ(received(), 2U);
  EXPECT_EQ(desk.events().received()[0].event.field(InputEvent::keyCode), 0);
}

TEST_F(EventTapTest, aPostWithinTheCallbackArrivesAfterIt) {
  create();
  bool isInside = false;
  int posts = 0;
  tap.action = [&](CGEventRef event) {
    EXPECT_FALSE(isInside);
    isInside = true;
    if (posts++ == 0) {
      CGEventRef other = CGEventCreateKeyboardEvent(nullptr, 8, true);
      CGEventPost(kCGSessionEventTap, other);
      CFRelease(other);
    }
    isInside = false;
    return event;
  };
  press();
  run();
  EXPECT_EQ(tap.codes, (std::vector<std::int64_t>{0, 8})); // through the own tap as well
  EXPECT_EQ(received(), 2U);
}

TEST_F(EventTapTest, postsBehindATapDoNotReachIt) {
  create();
  CGEventRef event = CGEventCreateKeyboardEvent(nullptr, 8, true);
  CGEventPost(kCGAnnotatedSessionEventTap, event);
  CGEventPost(kCGHIDEventTap, event);
  CFRelease(event);
  run();
  EXPECT_EQ(tap.types.size(), 1U);
  EXPECT_EQ(received(), 2U);
}

TEST_F(EventTapTest, tapsStandInTheOrderOfLevelAndPlacement) {
  std::string order;
  Tap tail;
  Tap hid;
  Tap head;
  ASSERT_TRUE(tail.create(keys, kCGSessionEventTap, kCGTailAppendEventTap));
  ASSERT_TRUE(hid.create(keys, kCGHIDEventTap));
  ASSERT_TRUE(head.create(keys, kCGSessionEventTap, kCGHeadInsertEventTap));
  for (auto& [which, name] : {std::pair{&tail, 't'}, {&hid, 'i'}, {&head, 'h'}}) {
    which->listen();
    which->action = [&order, letter = name](CGEventRef event) {
      order += letter;
      return event;
    };
  }
  press();
  run();
  EXPECT_EQ(order, "iht");
}

TEST_F(EventTapTest, aNoticeComesWithoutAnEvent) {
  create();
  bool hadEvent = false;
  tap.action = [&](CGEventRef event) {
    hadEvent = true;
    return event;
  };
  desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
  run();
  EXPECT_EQ(tap.types, (std::vector<CGEventType>{kCGEventTapDisabledByTimeout}));
  EXPECT_FALSE(hadEvent);
  EXPECT_FALSE(CGEventTapIsEnabled(tap.port));
  strike();
  EXPECT_EQ(tap.types.size(), 1U);
}

TEST_F(EventTapTest, losingTrustDisablesTheTap) {
  create();
  desk.setTrusted(false);
  run();
  EXPECT_EQ(tap.types, (std::vector<CGEventType>{kCGEventTapDisabledByUserInput}));
}

TEST_F(EventTapTest, enablingATapWithoutTrustFreezesInput) {
  create();
  desk.setTrusted(false);
  run();
  CGEventTapEnable(tap.port, true);
  strike();
  EXPECT_EQ(received(), 0U);
  tap.end();
  run();
  EXPECT_EQ(received(), 2U);
}

TEST_F(EventTapTest, thereIsNoTapWithoutTrust) {
  desk.setTrusted(false);
  EXPECT_FALSE(tap.create());
}

TEST_F(EventTapTest, aTapWithoutTrustMayBeDeafForEver) {
  desk.setTrusted(false);
  platform.setUntrustedTap(Platform::UntrustedTap::deaf);
  create();
  EXPECT_TRUE(CGEventTapIsEnabled(tap.port));
  desk.setTrusted(true);
  strike();
  EXPECT_TRUE(tap.types.empty());
  EXPECT_EQ(received(), 2U);
  EXPECT_EQ(platform.taps(), 1U);
}

TEST_F(EventTapTest, creatingATapMayFailAllTheSame) {
  desk.faults().failingTaps = 1;
  EXPECT_FALSE(tap.create());
  EXPECT_TRUE(tap.create());
  tap.end();
  EXPECT_FALSE(tap.create(0)); // nothing is left to see
}

TEST_F(EventTapTest, onePortHasOneSource) {
  ASSERT_TRUE(tap.create());
  CFRunLoopSourceRef first = CFMachPortCreateRunLoopSource(nullptr, tap.port, 0);
  CFRunLoopSourceRef second = CFMachPortCreateRunLoopSource(nullptr, tap.port, 0);
  EXPECT_EQ(first, second);
  CFRelease(first);
  EXPECT_EQ(platform.liveReferences().size(), 2U); // retained again
  CFRelease(second);
  CFRunLoopSourceRef third = CFMachPortCreateRunLoopSource(nullptr, tap.port, 0);
  EXPECT_NE(third, nullptr);
  CFRelease(third);
}

TEST_F(EventTapTest, releasingThePortRemovesTheTap) {
  ASSERT_TRUE(tap.create());
  EXPECT_EQ(platform.taps(), 1U);
  EXPECT_EQ(desk.events().tapCount(), 1U);
  CFRelease(std::exchange(tap.port, nullptr));
  EXPECT_EQ(platform.taps(), 0U);
  EXPECT_EQ(desk.events().tapCount(), 0U);
}

TEST_F(EventTapTest, aSourceKeepsItsPort) {
  create();
  CFRelease(std::exchange(tap.port, nullptr));
  EXPECT_EQ(platform.taps(), 1U);
  strike();
  EXPECT_EQ(tap.types.size(), 2U);
  CFRunLoopRemoveSource(CFRunLoopGetMain(), tap.source, kCFRunLoopCommonModes);
  CFRelease(std::exchange(tap.source, nullptr));
  EXPECT_EQ(platform.taps(), 0U);
}

TEST_F(EventTapTest, aSourceThatIsLeftInTheLoopIsNamed) {
  create();
  CFRelease(tap.port);
  CFRelease(tap.source);
  const auto live = platform.liveReferences();
  ASSERT_EQ(live.size(), 1U);
  EXPECT_NE(live[0].find("CFRunLoopSource #"), std::string::npos) << live[0];
  EXPECT_NE(live[0].find("still in the main run loop"), std::string::npos) << live[0];
  CFRunLoopRemoveSource(CFRunLoopGetMain(), tap.source, kCFRunLoopCommonModes);
  tap.port = nullptr;
  tap.source = nullptr;
}

TEST_F(EventTapTest, invalidatingThePortRemovesTapAndSource) {
  create();
  EXPECT_NE(CFMachPortIsValid(tap.port), 0);
  CFMachPortInvalidate(tap.port);
  EXPECT_EQ(CFMachPortIsValid(tap.port), 0);
  EXPECT_FALSE(CGEventTapIsEnabled(tap.port));
  EXPECT_EQ(CFMachPortCreateRunLoopSource(nullptr, tap.port, 0), nullptr);
  EXPECT_EQ(platform.taps(), 0U);
  strike();
  EXPECT_TRUE(tap.types.empty());
  // Adding it again is of no use.
  CFRunLoopAddSource(CFRunLoopGetMain(), tap.source, kCFRunLoopCommonModes);
  EXPECT_EQ(platform.liveReferences().size(), 2U);
  CFMachPortInvalidate(tap.port);
}

TEST_F(EventTapTest, aTapMayBeEndedWithinItsCallback) {
  create();
  tap.action = [&](CGEventRef event) {
    tap.end();
    return event;
  };
  strike();
  EXPECT_EQ(tap.types.size(), 1U);
  EXPECT_EQ(received(), 2U);
}

TEST_F(EventTapDeathTest, thePortIsReleasedOnce) {
  EXPECT_DEATH(
      {
        tap.create();
        CFRelease(tap.port);
        CGEventTapEnable(tap.port, true);
      },
      "CGEventTapEnable: CFMachPort #[0-9]+ was released before");
}

TEST_F(EventTapTest, manyEventsLeaveNothingBehind) {
  create();
  desk.events().setRecording(false);
  CGEventRef event = CGEventCreateKeyboardEvent(nullptr, 8, true);
  for (int count = 0; count < 100; ++count) {
    for (int burst = 0; burst < 1000; ++burst)
      CGEventPost(kCGSessionEventTap, event);
    run();
    tap.codes.clear();
    tap.types.clear();
  }
  CFRelease(event);
  EXPECT_EQ(platform.liveReferences().size(), 2U);
}

TEST(PlatformEndTest, endsWhatTheProgramLeftStanding) {
  desk::Desk desk;
  Tap tap;
  {
    const Platform platform(desk);
    ASSERT_TRUE(tap.create());
    tap.listen();
  }
  EXPECT_EQ(desk.events().tapCount(), 0U);
  const Platform next(desk);
  EXPECT_TRUE(next.liveReferences().empty());
  tap.end();
}

} // namespace
} // namespace trellivar::darwin_double
