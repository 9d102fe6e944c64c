#pragma once

// Access to input. Our own declarations of the system's interface, for machines without it.

enum IOHIDRequestType {
  kIOHIDRequestTypePostEvent,
  kIOHIDRequestTypeListenEvent,
};

enum IOHIDAccessType {
  kIOHIDAccessTypeGranted,
  kIOHIDAccessTypeDenied,
  kIOHIDAccessTypeUnknown,
};

extern "C" {

IOHIDAccessType IOHIDCheckAccess(IOHIDRequestType type);
bool IOHIDRequestAccess(IOHIDRequestType type);

} // extern "C"
