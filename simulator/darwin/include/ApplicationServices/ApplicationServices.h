#pragma once

// Input events, event taps and the Accessibility permission, as far as the engine uses them. Our
// own declarations of the system's interface, for machines without it.

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>

using CGFloat = double;
struct CGPoint {
  CGFloat x;
  CGFloat y;
};

using CGEventRef = struct __CGEvent*;
using CGEventSourceRef = struct __CGEventSource*;
using CGEventTapProxy = struct __CGEventTapProxy*;
using CGEventMask = std::uint64_t;
using CGKeyCode = std::uint16_t;

#define CGEventMaskBit(eventType) (CGEventMask{1} << (eventType))

enum CGEventType : std::uint32_t {
  kCGEventNull = 0,
  kCGEventLeftMouseDown = 1,
  kCGEventLeftMouseUp = 2,
  kCGEventRightMouseDown = 3,
  kCGEventRightMouseUp = 4,
  kCGEventKeyDown = 10,
  kCGEventKeyUp = 11,
  kCGEventFlagsChanged = 12,
  kCGEventOtherMouseDown = 25,
  kCGEventOtherMouseUp = 26,
  kCGEventOtherMouseDragged = 27,
  kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
  kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};

enum CGEventField : std::uint32_t {
  kCGMouseEventClickState = 1,
  kCGMouseEventButtonNumber = 3,
  kCGKeyboardEventAutorepeat = 8,
  kCGKeyboardEventKeycode = 9,
  kCGKeyboardEventKeyboardType = 10,
  kCGEventSourceUnixProcessID = 41,
  kCGEventSourceUserData = 42,
  kCGEventSourceStateID = 45,
};

enum CGMouseButton : std::uint32_t {
  kCGMouseButtonLeft = 0,
  kCGMouseButtonRight = 1,
  kCGMouseButtonCenter = 2,
};

enum CGEventTapLocation : std::uint32_t {
  kCGHIDEventTap = 0,
  kCGSessionEventTap = 1,
  kCGAnnotatedSessionEventTap = 2,
};

enum CGEventTapPlacement : std::uint32_t {
  kCGHeadInsertEventTap = 0,
  kCGTailAppendEventTap = 1,
};

enum CGEventTapOptions : std::uint32_t {
  kCGEventTapOptionDefault = 0,
  kCGEventTapOptionListenOnly = 1,
};

using CGEventFlags = std::uint64_t;
enum : CGEventFlags {
  kCGEventFlagMaskNonCoalesced = 0x100,
  kCGEventFlagMaskAlphaShift = 0x10000,
  kCGEventFlagMaskShift = 0x20000,
  kCGEventFlagMaskControl = 0x40000,
  kCGEventFlagMaskAlternate = 0x80000,
  kCGEventFlagMaskCommand = 0x100000,
  kCGEventFlagMaskNumericPad = 0x200000,
  kCGEventFlagMaskHelp = 0x400000,
  kCGEventFlagMaskSecondaryFn = 0x800000,
};

/// Answers the event that it was given, NULL, or another event together with a reference to it.
using CGEventTapCallBack = CGEventRef (*)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                          void* context);

extern "C" {

CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask mask,
                               CGEventTapCallBack callback, void* context);
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGEventTapIsEnabled(CFMachPortRef tap);

CFTypeID CGEventGetTypeID();
CGEventRef CGEventCreate(CGEventSourceRef source);
CGEventRef CGEventCreateCopy(CGEventRef event);
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode keyCode, bool keyDown);
CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type, CGPoint location,
                                   CGMouseButton button);
CGEventType CGEventGetType(CGEventRef event);
void CGEventSetType(CGEventRef event, CGEventType type);
CGEventFlags CGEventGetFlags(CGEventRef event);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
CGPoint CGEventGetLocation(CGEventRef event);
void CGEventSetLocation(CGEventRef event, CGPoint location);
std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field);
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value);
void CGEventPost(CGEventTapLocation location, CGEventRef event);

Boolean AXIsProcessTrusted();
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);
extern CFStringRef kAXTrustedCheckOptionPrompt;

} // extern "C"
