#include "engine/darwin/aux_event.h"

#include <AppKit/AppKit.h>

namespace trellivar::darwin {

CGEventRef createAuxEvent(int auxKey, bool isDown) {
  @autoreleasepool {
    const NSInteger state = isDown ? auxKeyDownState : auxKeyUpState;
    NSEvent* const event =
        [NSEvent otherEventWithType:NSEventTypeSystemDefined
                           location:NSZeroPoint
                      modifierFlags:static_cast<NSEventModifierFlags>(state << 8)
                          timestamp:0
                       windowNumber:0
                            context:nil
                            subtype:auxControlSubtype
                              data1:(static_cast<NSInteger>(auxKey) << 16) | (state << 8)
                              data2:-1];
    // Borrowed from the NSEvent, which ends with the pool.
    const CGEventRef result = event.CGEvent;
    if (result) CFRetain(result);
    return result;
  }
}

std::optional<SystemDefinedData> systemDefinedData(CGEventRef event) {
  // Asked of any other type of event, its subtype is an Objective-C exception.
  if (!event || CGEventGetType(event) != static_cast<CGEventType>(NSEventTypeSystemDefined))
    return std::nullopt;
  @autoreleasepool {
    NSEvent* const wrapped = [NSEvent eventWithCGEvent:event];
    if (!wrapped || wrapped.type != NSEventTypeSystemDefined) return std::nullopt;
    return SystemDefinedData{static_cast<int>(wrapped.subtype), static_cast<long>(wrapped.data1)};
  }
}

} // namespace trellivar::darwin
