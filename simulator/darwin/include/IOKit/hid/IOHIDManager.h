#pragma once

// The HID manager, as far as the engine uses it. Our own declarations of the system's interface,
// for machines without it.

#include <IOKit/hid/IOHIDLib.h>

using IOHIDManagerRef = struct __IOHIDManager*;

enum : IOOptionBits { kIOHIDManagerOptionNone = 0 };

extern "C" {

CFTypeID IOHIDManagerGetTypeID();
IOHIDManagerRef IOHIDManagerCreate(CFAllocatorRef allocator, IOOptionBits options);
void IOHIDManagerSetDeviceMatching(IOHIDManagerRef manager, CFDictionaryRef matching);
void IOHIDManagerSetDeviceMatchingMultiple(IOHIDManagerRef manager, CFArrayRef matchings);
void IOHIDManagerRegisterInputValueCallback(IOHIDManagerRef manager, IOHIDValueCallback callback,
                                            void* context);
void IOHIDManagerScheduleWithRunLoop(IOHIDManagerRef manager, CFRunLoopRef loop, CFStringRef mode);
void IOHIDManagerUnscheduleFromRunLoop(IOHIDManagerRef manager, CFRunLoopRef loop,
                                       CFStringRef mode);
IOReturn IOHIDManagerOpen(IOHIDManagerRef manager, IOOptionBits options);
IOReturn IOHIDManagerClose(IOHIDManagerRef manager, IOOptionBits options);
CFSetRef IOHIDManagerCopyDevices(IOHIDManagerRef manager);

} // extern "C"
