#include "simulator/darwin/machine.h"
#include "simulator/darwin/values.h"

#include <ApplicationServices/ApplicationServices.h>
#include <IOKit/hidsystem/IOHIDLib.h>

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

namespace {

trellivar::desk::Desk& desk(const char* call) { return machine(call).desk; }

/// Posting events is part of Accessibility; it is never undecided here.
IOHIDAccessType access(IOHIDRequestType type, const char* call) {
  using trellivar::desk::Access;
  if (type == kIOHIDRequestTypePostEvent)
    return desk(call).isTrusted() ? kIOHIDAccessTypeGranted : kIOHIDAccessTypeDenied;
  switch (desk(call).inputMonitoring()) {
  case Access::granted:
    return kIOHIDAccessTypeGranted;
  case Access::denied:
    return kIOHIDAccessTypeDenied;
  case Access::unknown:
    return kIOHIDAccessTypeUnknown;
  }
  return kIOHIDAccessTypeUnknown;
}

} // namespace

extern "C" {

CFStringRef kAXTrustedCheckOptionPrompt =
    reference<CFStringRef>(&constantString("AXTrustedCheckOptionPrompt"));

Boolean AXIsProcessTrusted() { return desk("AXIsProcessTrusted").isTrusted() ? 1 : 0; }

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
  constexpr const char* call = "AXIsProcessTrustedWithOptions";
  const bool isTrusted = desk(call).isTrusted();
  const Object* prompt =
      options ? as<Dictionary>(options, call).find("AXTrustedCheckOptionPrompt") : nullptr;
  if (!isTrusted && prompt == &constantBoolean(true))
    machine(call).prompts.push_back(Platform::Prompt::accessibility);
  return isTrusted ? 1 : 0;
}

IOHIDAccessType IOHIDCheckAccess(IOHIDRequestType type) { return access(type, "IOHIDCheckAccess"); }

bool IOHIDRequestAccess(IOHIDRequestType type) {
  constexpr const char* call = "IOHIDRequestAccess";
  const IOHIDAccessType answer = access(type, call);
  if (answer == kIOHIDAccessTypeUnknown)
    machine(call).prompts.push_back(Platform::Prompt::inputMonitoring);
  return answer == kIOHIDAccessTypeGranted;
}

} // extern "C"
