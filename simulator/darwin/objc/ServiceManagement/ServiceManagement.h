#pragma once

// Service management, as far as the Objective-C++ sources use it. Our own declarations.

#include <Foundation/Foundation.h>

enum {
  kSMErrorJobNotFound = 6,
  kSMErrorAlreadyRegistered = 12,
};

@interface SMAppService : NSObject
@property(class, readonly, nonnull) SMAppService* mainAppService;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
@end
