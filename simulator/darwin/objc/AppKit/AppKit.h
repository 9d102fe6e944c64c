#pragma once

// AppKit, as far as the Objective-C++ sources use it: enough to check them where there is no Mac,
// not to run them. Our own declarations of the system's interface.

#include <ApplicationServices/ApplicationServices.h>

#ifndef __OBJC__
#error "For Objective-C++ only."
#endif

#define nil nullptr

using BOOL = bool;
using NSInteger = long;
using NSUInteger = unsigned long;
using NSTimeInterval = double;
using NSPoint = CGPoint;
constexpr NSPoint NSZeroPoint{0, 0};

enum NSEventType : NSUInteger {
  NSEventTypeSystemDefined = 14,
};
enum NSEventModifierFlags : NSUInteger {};
enum NSEventSubtype : short {};

__attribute__((objc_root_class))
@interface NSObject
@end

@class NSGraphicsContext;

@interface NSEvent : NSObject
+ (NSEvent* _Nullable)otherEventWithType:(NSEventType)type
                                location:(NSPoint)location
                           modifierFlags:(NSEventModifierFlags)flags
                               timestamp:(NSTimeInterval)time
                            windowNumber:(NSInteger)windowNumber
                                 context:(NSGraphicsContext* _Nullable)context
                                 subtype:(short)subtype
                                   data1:(NSInteger)data1
                                   data2:(NSInteger)data2;
+ (NSEvent* _Nullable)eventWithCGEvent:(CGEventRef _Nonnull)event;
@property(readonly) NSEventType type;
@property(readonly) NSEventSubtype subtype;
@property(readonly) NSInteger data1;
@property(readonly, nullable) CGEventRef CGEvent;
@end
