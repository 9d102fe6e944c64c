#pragma once

// Foundation, as far as the Objective-C++ sources use it: enough to check them where there is no
// Mac, not to run them. Our own declarations of the system's interface.

#ifndef __OBJC__
#error "For Objective-C++ only."
#endif

#define nil nullptr
#define YES __objc_yes
#define NO __objc_no

using BOOL = bool;
using NSInteger = long;
using NSUInteger = unsigned long;
using NSTimeInterval = double;

using NSKeyValueObservingOptions = NSUInteger;

@class NSDictionary;
@class NSString;

__attribute__((objc_root_class))
@interface NSObject
+ (instancetype _Nonnull)alloc;
- (instancetype _Nonnull)init;
- (void)release;
- (void)addObserver:(NSObject* _Nonnull)observer
         forKeyPath:(NSString* _Nonnull)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void* _Nullable)context;
- (void)removeObserver:(NSObject* _Nonnull)observer
            forKeyPath:(NSString* _Nonnull)keyPath
               context:(void* _Nullable)context;
@end

@interface NSString : NSObject
@property(readonly, nonnull) const char* UTF8String;
- (BOOL)isEqualToString:(NSString* _Nonnull)other;
@end

// The class of literals.
@interface NXConstantString : NSString
@end

@interface NSArray : NSObject
+ (instancetype _Nonnull)arrayWithObjects:(const id _Nonnull* _Nonnull)objects
                                    count:(NSUInteger)count;
@end

@interface NSNotification : NSObject
@end

@interface NSNotificationCenter : NSObject
- (void)addObserver:(id _Nonnull)observer
           selector:(SEL _Nonnull)selector
               name:(NSString* _Nullable)name
             object:(id _Nullable)object;
- (void)removeObserver:(id _Nonnull)observer;
@end

@interface NSError : NSObject
@property(readonly) NSInteger code;
@property(readonly, nonnull) NSString* localizedDescription;
@end
