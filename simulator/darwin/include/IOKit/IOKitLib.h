#pragma once

// The registry of devices and drivers, as far as the engine uses it. Our own declarations of the
// system's interface, for machines without it.

#include <CoreFoundation/CoreFoundation.h>
#include <dispatch/dispatch.h>

#include <cstdint>

using boolean_t = int;
using kern_return_t = int;
using IOReturn = kern_return_t;
using IOOptionBits = std::uint32_t;
using mach_port_t = unsigned int;
using io_object_t = mach_port_t;
using io_iterator_t = io_object_t;
using io_registry_entry_t = io_object_t;
using io_service_t = io_object_t;
using io_name_t = char[128];
using io_string_t = char[512];

#define MACH_PORT_NULL 0
#define IO_OBJECT_NULL 0
#define KERN_SUCCESS 0

inline constexpr IOReturn kIOReturnSuccess = 0;
inline constexpr IOReturn kIOReturnError = static_cast<IOReturn>(0xE00002BC);
inline constexpr IOReturn kIOReturnNoDevice = static_cast<IOReturn>(0xE00002C0);
inline constexpr IOReturn kIOReturnNotPrivileged = static_cast<IOReturn>(0xE00002C1);
inline constexpr IOReturn kIOReturnBadArgument = static_cast<IOReturn>(0xE00002C2);
inline constexpr IOReturn kIOReturnExclusiveAccess = static_cast<IOReturn>(0xE00002C5);
inline constexpr IOReturn kIOReturnUnsupported = static_cast<IOReturn>(0xE00002C7);
inline constexpr IOReturn kIOReturnNotOpen = static_cast<IOReturn>(0xE00002CD);
inline constexpr IOReturn kIOReturnNotPermitted = static_cast<IOReturn>(0xE00002E2);
inline constexpr IOReturn kIOReturnNotFound = static_cast<IOReturn>(0xE00002F0);

#define kIOServicePlane "IOService"
#define kIOFirstMatchNotification "IOServiceFirstMatch"
#define kIOTerminatedNotification "IOServiceTerminate"

enum : IOOptionBits {
  kIORegistryIterateRecursively = 1,
  kIORegistryIterateParents = 2,
};

extern "C" {

extern const mach_port_t kIOMainPortDefault; ///< 0

// Both give a dictionary that the caller owns, and that the functions below use up.
CFMutableDictionaryRef IOServiceMatching(const char* className);
CFMutableDictionaryRef IORegistryEntryIDMatching(std::uint64_t entryId);

/// Consumes one reference of `matching` in every case.
kern_return_t IOServiceGetMatchingServices(mach_port_t mainPort, CFDictionaryRef matching,
                                           io_iterator_t* existing);

using IOServiceMatchingCallback = void (*)(void* context, io_iterator_t iterator);
using IONotificationPortRef = struct IONotificationPort*; ///< not a CF object
IONotificationPortRef IONotificationPortCreate(mach_port_t mainPort);
void IONotificationPortSetDispatchQueue(IONotificationPortRef port, dispatch_queue_t queue);
CFRunLoopSourceRef IONotificationPortGetRunLoopSource(IONotificationPortRef port);
void IONotificationPortDestroy(IONotificationPortRef port);
/// Consumes one reference of `matching` in every case. Armed once `notification` was read to its
/// end.
kern_return_t IOServiceAddMatchingNotification(IONotificationPortRef port, const io_name_t type,
                                               CFDictionaryRef matching,
                                               IOServiceMatchingCallback callback, void* context,
                                               io_iterator_t* notification);

io_object_t IOIteratorNext(io_iterator_t iterator);
void IOIteratorReset(io_iterator_t iterator);
boolean_t IOIteratorIsValid(io_iterator_t iterator);
kern_return_t IOObjectRetain(io_object_t object);
kern_return_t IOObjectRelease(io_object_t object);

CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t entry, CFStringRef key,
                                          CFAllocatorRef allocator, IOOptionBits options);
CFTypeRef IORegistryEntrySearchCFProperty(io_registry_entry_t entry, const io_name_t plane,
                                          CFStringRef key, CFAllocatorRef allocator,
                                          IOOptionBits options);
kern_return_t IORegistryEntryGetRegistryEntryID(io_registry_entry_t entry, std::uint64_t* entryId);
kern_return_t IORegistryEntryGetParentEntry(io_registry_entry_t entry, const io_name_t plane,
                                            io_registry_entry_t* parent);
kern_return_t IORegistryEntryCreateIterator(io_registry_entry_t entry, const io_name_t plane,
                                            IOOptionBits options, io_iterator_t* iterator);

} // extern "C"
