#include "engine/darwin/permissions.h"

#include <ApplicationServices/ApplicationServices.h>
#include <IOKit/hidsystem/IOHIDLib.h>

namespace trellivar::darwin {

bool isAccessibilityGranted() { return AXIsProcessTrusted() != 0; }

bool isInputMonitoringGranted() {
  return IOHIDCheckAccess(kIOHIDRequestTypeListenEvent) == kIOHIDAccessTypeGranted;
}

} // namespace trellivar::darwin
