#pragma once

// AppKit, as far as the Objective-C++ sources use it: enough to check them where there is no Mac,
// not to run them. Our own declarations of the system's interface.

#include <ApplicationServices/ApplicationServices.h>
#include <Foundation/Foundation.h>

using NSPoint = CGPoint;
constexpr NSPoint NSZeroPoint{0, 0};

enum NSEventType : NSUInteger {
  NSEventTypeSystemDefined = 14,
};
enum NSEventModifierFlags : NSUInteger {};
enum NSEventSubtype : short {};

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

enum NSApplicationActivationPolicy : NSInteger {
  NSApplicationActivationPolicyRegular = 0,
};

extern NSString* const _Nonnull NSAppearanceNameAqua;
extern NSString* const _Nonnull NSAppearanceNameDarkAqua;

@interface NSAppearance : NSObject
+ (NSAppearance* _Nullable)appearanceNamed:(NSString* _Nonnull)name;
- (NSString* _Nullable)bestMatchFromAppearancesWithNames:(NSArray* _Nonnull)names;
@end

@interface NSApplication : NSObject
@property(strong, nullable) NSAppearance* appearance;
@property(readonly, nonnull) NSAppearance* effectiveAppearance;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoresOthers;
@end

extern NSApplication* _Null_unspecified NSApp;

extern NSString* const _Nonnull NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

@interface NSWorkspace : NSObject
@property(class, readonly, nonnull) NSWorkspace* sharedWorkspace;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property(readonly, nonnull) NSNotificationCenter* notificationCenter;
@end
