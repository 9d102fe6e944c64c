#include "engine/darwin/aux_event.h"
#include "simulator/desk/key_codes.h"
#include "tests/simulator/darwin/fixture.h"

#include <ApplicationServices/ApplicationServices.h>
#include <IOKit/hidsystem/IOHIDLib.h>
#include <IOKit/hidsystem/IOLLEvent.h>

namespace trellivar::darwin_double {
namespace {

using desk::InputEvent;

constexpr auto senderField = static_cast<CGEventField>(87);
const KeyName leftShift("left_shift");

class EventTest : public DarwinTest {
protected:
  desk::Desk::DeviceId keyboard =
      desk.attach({.product = "Keyboard", .identity = {1, 2}, .interfaces = {{{0x01, 0x06}}}});

  static CGEventRef key(CGKeyCode code, bool down = true) {
    return CGEventCreateKeyboardEvent(nullptr, code, down);
  }
  void post(CGEventRef event, CGEventTapLocation location = kCGSessionEventTap) {
    CGEventPost(location, event);
    CFRelease(event);
  }
  const std::vector<desk::Received>& received() { return desk.events().received(); }
};
using EventDeathTest = EventTest;

TEST_F(EventTest, keyboardEventsNameKeyAndDirection) {
  CGEventRef down = key(8);
  EXPECT_EQ(CGEventGetType(down), kCGEventKeyDown);
  EXPECT_EQ(CGEventGetIntegerValueField(down, kCGKeyboardEventKeycode), 8);
  EXPECT_EQ(CGEventGetFlags(down), 0U);
  CGEventRef up = key(8, false);
  EXPECT_EQ(CGEventGetType(up), kCGEventKeyUp);
  CFRelease(down);
  CFRelease(up);
}

TEST_F(EventTest, modifierKeyCodesGiveChangesOfFlags) {
  for (const int code : {54, 55, 56, 58, 59, 60, 61, 62}) {
    for (const bool down : {true, false}) {
      CGEventRef event = key(static_cast<CGKeyCode>(code), down);
      EXPECT_EQ(CGEventGetType(event), kCGEventFlagsChanged) << code;
      CFRelease(event);
    }
  }
}

TEST_F(EventTest, newEventsStartWithTheModifiersThatAreDown) {
  desk.press(keyboard, leftShift);
  run();
  CGEventRef event = key(0);
  EXPECT_EQ(CGEventGetFlags(event), kCGEventFlagMaskShift | NX_DEVICELSHIFTKEYMASK);
  CFRelease(event);
}

TEST_F(EventTest, someKeysAddFlagsByThemselves) {
  CGEventRef arrow = key(123);
  EXPECT_EQ(CGEventGetFlags(arrow), kCGEventFlagMaskNumericPad | kCGEventFlagMaskSecondaryFn);
  CGEventRef function = key(122);
  EXPECT_EQ(CGEventGetFlags(function), std::uint64_t{kCGEventFlagMaskSecondaryFn});
  CFRelease(arrow);
  CFRelease(function);
}

TEST_F(EventTest, anEmptyEventStandsAtThePointer) {
  platform.setPointer(12, 34);
  CGEventRef event = CGEventCreate(nullptr);
  EXPECT_EQ(CGEventGetLocation(event).x, 12);
  EXPECT_EQ(CGEventGetLocation(event).y, 34);
  CFRelease(event);
}

TEST_F(EventTest, theTypeOfAMouseEventDecidesOverItsButton) {
  struct Row {
    CGEventType type;
    int button;
  };
  for (const Row& row :
       {Row{kCGEventLeftMouseDown, 0}, {kCGEventRightMouseUp, 1}, {kCGEventOtherMouseDown, 4}}) {
    CGEventRef event =
        CGEventCreateMouseEvent(nullptr, row.type, {5, 6}, static_cast<CGMouseButton>(4));
    EXPECT_EQ(CGEventGetType(event), row.type);
    EXPECT_EQ(CGEventGetIntegerValueField(event, kCGMouseEventButtonNumber), row.button);
    EXPECT_EQ(CGEventGetIntegerValueField(event, kCGMouseEventClickState), 0);
    EXPECT_EQ(CGEventGetLocation(event).y, 6);
    CFRelease(event);
  }
  EXPECT_EQ(CGEventCreateMouseEvent(nullptr, kCGEventKeyDown, {}, kCGMouseButtonLeft), nullptr);
}

TEST_F(EventTest, whatWasSetIsReadBack) {
  CGEventRef event = key(0);
  EXPECT_EQ(CGEventGetIntegerValueField(event, senderField), 0); // never set
  for (int field = 100; field < 120; ++field)
    CGEventSetIntegerValueField(event, static_cast<CGEventField>(field), field * 1'000'000'000LL);
  CGEventSetIntegerValueField(event, senderField, -5);
  CGEventSetIntegerValueField(event, senderField, -6);
  CGEventSetType(event, kCGEventFlagsChanged);
  CGEventSetFlags(event, 0x20002);
  CGEventSetLocation(event, {1, 2});
  for (int field = 100; field < 120; ++field)
    EXPECT_EQ(CGEventGetIntegerValueField(event, static_cast<CGEventField>(field)),
              field * 1'000'000'000LL);
  EXPECT_EQ(CGEventGetIntegerValueField(event, senderField), -6);
  EXPECT_EQ(CGEventGetType(event), kCGEventFlagsChanged);
  EXPECT_EQ(CGEventGetFlags(event), 0x20002U);
  EXPECT_EQ(CGEventGetLocation(event).x, 1);
  CFRelease(event);
}

TEST_F(EventTest, aCopyIsIndependent) {
  CGEventRef event = key(8);
  CGEventRef copy = CGEventCreateCopy(event);
  CGEventSetFlags(event, 1);
  EXPECT_NE(copy, event);
  EXPECT_EQ(CGEventGetFlags(copy), 0U);
  EXPECT_EQ(CGEventGetIntegerValueField(copy, kCGKeyboardEventKeycode), 8);
  CFRelease(event);
  CFRelease(copy);
}

TEST_F(EventTest, ofNoEventEverythingIsZero) {
  EXPECT_EQ(CGEventGetType(nullptr), kCGEventNull);
  EXPECT_EQ(CGEventGetFlags(nullptr), 0U);
  EXPECT_EQ(CGEventGetIntegerValueField(nullptr, kCGKeyboardEventKeycode), 0);
  EXPECT_EQ(CGEventCreateCopy(nullptr), nullptr);
}

TEST_F(EventDeathTest, aReleasedEventIsNotUsed) {
  EXPECT_DEATH(
      {
        CGEventRef event = key(8);
        CFRelease(event);
        CGEventSetFlags(event, 0);
      },
      "CGEventSetFlags: CGEvent #[0-9]+ was released before");
  EXPECT_DEATH(
      {
        CGEventRef event = key(8);
        CFRelease(event);
        CGEventGetIntegerValueField(event, senderField);
      },
      "CGEventGetIntegerValueField: CGEvent #[0-9]+ was released before");
  EXPECT_DEATH(
      {
        CGEventRef event = key(8);
        CFRelease(event);
        CGEventPost(kCGSessionEventTap, event);
      },
      "CGEventPost: CGEvent #[0-9]+ was released before");
}

TEST_F(EventTest, aPostedEventStaysTheProgramsOwn) {
  CGEventRef event = key(8);
  CGEventPost(kCGSessionEventTap, event);
  CGEventSetIntegerValueField(event, kCGKeyboardEventKeycode, 9); // too late for that one
  EXPECT_EQ(platform.liveReferences().size(), 1U);
  CFRelease(event);
  EXPECT_TRUE(received().empty()); // later, not within the call
  run();
  ASSERT_EQ(received().size(), 1U);
  EXPECT_EQ(received()[0].event.field(InputEvent::keyCode), 8);
}

TEST_F(EventTest, postedEventsCarryTheProcessAndKeepTheMark) {
  platform.setProcessId(99);
  CGEventRef event = key(8);
  CGEventSetIntegerValueField(event, kCGEventSourceUserData, 0x1122334455667788);
  post(event);
  run();
  ASSERT_EQ(received().size(), 1U);
  EXPECT_EQ(received()[0].event.field(41), 99);
  EXPECT_EQ(received()[0].event.field(42), 0x1122334455667788);
  EXPECT_EQ(received()[0].event.field(87), 0);
}

TEST_F(EventTest, postedEventsMayCarryAForeignSender) {
  platform.setPostedSender(555);
  post(key(8));
  CGEventRef stamped = key(8);
  CGEventSetIntegerValueField(stamped, senderField, 666);
  post(stamped);
  run();
  ASSERT_EQ(received().size(), 2U);
  EXPECT_EQ(received()[0].event.field(87), 555);
  EXPECT_EQ(received()[1].event.field(87), 666);
}

TEST_F(EventTest, nothingIsPostedWithoutTrust) {
  desk.setTrusted(false);
  post(key(8));
  run();
  desk.setTrusted(true);
  run();
  EXPECT_TRUE(received().empty());
}

TEST_F(EventTest, auxiliaryEventsCarryTheirKeyAndState) {
  CGEventRef down = darwin::createAuxEvent(NX_KEYTYPE_PLAY, true);
  CGEventRef up = darwin::createAuxEvent(NX_KEYTYPE_PLAY, false);
  EXPECT_EQ(CGEventGetType(down), static_cast<CGEventType>(NX_SYSDEFINED));
  EXPECT_EQ(darwin::systemDefinedData(down)->subtype, NX_SUBTYPE_AUX_CONTROL_BUTTONS);
  EXPECT_EQ(darwin::systemDefinedData(down)->data1, 0x100A00);
  EXPECT_EQ(darwin::systemDefinedData(up)->data1, 0x100B00);
  post(down);
  post(up);
  run();
  ASSERT_EQ(received().size(), 2U);
  EXPECT_EQ(desk::named(received()[0].event)->name, KeyName("play_or_pause"));
  EXPECT_EQ(desk::named(received()[1].event)->kind, TapEvent::Kind::consumerUp);
}

TEST_F(EventTest, onlySystemDefinedEventsHaveSuchData) {
  CGEventRef event = key(8);
  EXPECT_EQ(darwin::systemDefinedData(event), std::nullopt);
  EXPECT_EQ(darwin::systemDefinedData(nullptr), std::nullopt);
  CFRelease(event);
}

TEST_F(EventTest, trustIsReadWhenItIsAskedFor) {
  EXPECT_NE(AXIsProcessTrusted(), 0);
  desk.setTrusted(false);
  EXPECT_EQ(AXIsProcessTrusted(), 0);
}

TEST_F(EventTest, askingForTrustShowsThePanelAndAnswersTheStateAsItIs) {
  desk.setTrusted(false);
  const auto ask = [&](CFTypeRef prompt) {
    CFMutableDictionaryRef options = dictionary();
    CFDictionarySetValue(options, kAXTrustedCheckOptionPrompt, prompt);
    const bool trusted = AXIsProcessTrustedWithOptions(options) != 0;
    CFRelease(options);
    return trusted;
  };
  EXPECT_FALSE(ask(kCFBooleanFalse));
  EXPECT_EQ(AXIsProcessTrustedWithOptions(nullptr), 0);
  EXPECT_TRUE(platform.prompts().empty());
  EXPECT_FALSE(ask(kCFBooleanTrue));
  EXPECT_EQ(platform.prompts(), (std::vector{Platform::Prompt::accessibility}));
  desk.setTrusted(true);
  EXPECT_TRUE(ask(kCFBooleanTrue));
  EXPECT_EQ(platform.prompts().size(), 1U);
}

TEST_F(EventTest, accessToInputIsThatOfTheDesk) {
  const auto listen = [] { return IOHIDCheckAccess(kIOHIDRequestTypeListenEvent); };
  EXPECT_EQ(listen(), kIOHIDAccessTypeGranted);
  desk.setInputMonitoring(desk::Access::denied);
  EXPECT_EQ(listen(), kIOHIDAccessTypeDenied);
  EXPECT_FALSE(IOHIDRequestAccess(kIOHIDRequestTypeListenEvent));
  EXPECT_TRUE(platform.prompts().empty());
  desk.setInputMonitoring(desk::Access::unknown);
  EXPECT_EQ(listen(), kIOHIDAccessTypeUnknown);
  EXPECT_TRUE(platform.prompts().empty());
  EXPECT_FALSE(IOHIDRequestAccess(kIOHIDRequestTypeListenEvent));
  EXPECT_EQ(platform.prompts(), (std::vector{Platform::Prompt::inputMonitoring}));
  EXPECT_EQ(IOHIDCheckAccess(kIOHIDRequestTypePostEvent), kIOHIDAccessTypeGranted);
}

} // namespace
} // namespace trellivar::darwin_double
