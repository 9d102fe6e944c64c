#pragma once

// HID devices, their elements and values, as far as the engine uses them. Our own declarations of
// the system's interface, for machines without it.

#include <IOKit/IOKitLib.h>
#include <IOKit/hid/IOHIDKeys.h>
#include <IOKit/hid/IOHIDUsageTables.h>

#include <cstdint>

using IOHIDDeviceRef = struct __IOHIDDevice*;
using IOHIDElementRef = struct __IOHIDElement*;
using IOHIDValueRef = struct __IOHIDValue*;

/// `sender` is the device, an IOHIDDeviceRef.
using IOHIDValueCallback = void (*)(void* context, IOReturn result, void* sender,
                                    IOHIDValueRef value);

extern "C" {

CFTypeID IOHIDDeviceGetTypeID();
CFTypeRef IOHIDDeviceGetProperty(IOHIDDeviceRef device, CFStringRef key);
io_service_t IOHIDDeviceGetService(IOHIDDeviceRef device);

std::uint32_t IOHIDElementGetUsagePage(IOHIDElementRef element);
std::uint32_t IOHIDElementGetUsage(IOHIDElementRef element);
IOHIDDeviceRef IOHIDElementGetDevice(IOHIDElementRef element);

IOHIDElementRef IOHIDValueGetElement(IOHIDValueRef value);
CFIndex IOHIDValueGetIntegerValue(IOHIDValueRef value);
std::uint64_t IOHIDValueGetTimeStamp(IOHIDValueRef value); ///< as of mach_absolute_time

} // extern "C"
