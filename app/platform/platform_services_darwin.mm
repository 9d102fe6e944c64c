#include "app/platform/platform_services.h"
#include "engine/darwin/cf_ref.h"

#include <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>
#include <IOKit/hidsystem/IOHIDLib.h>
#include <ServiceManagement/ServiceManagement.h>

#include <QDesktopServices>
#include <QUrl>
#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

/// Tells of changes of the appearance that the application comes to, and of how much is to move.
@interface TrellivarAppearanceObserver : NSObject {
  std::function<void()> changed_;
}
- (instancetype)initWithCallback:(std::function<void()>)changed;
- (void)stop;
@end

@implementation TrellivarAppearanceObserver
- (instancetype)initWithCallback:(std::function<void()>)changed {
  self = [super init];
  if (self) {
    changed_ = std::move(changed);
    [NSApp addObserver:self forKeyPath:@"effectiveAppearance" options:0 context:nullptr];
    [NSWorkspace.sharedWorkspace.notificationCenter
        addObserver:self
           selector:@selector(displayOptionsDidChange:)
               name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
             object:nil];
  }
  return self;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
  changed_();
}

- (void)displayOptionsDidChange:(NSNotification*)notification {
  changed_();
}

- (void)stop {
  [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:self];
  [NSApp removeObserver:self forKeyPath:@"effectiveAppearance" context:nullptr];
}
@end

namespace trellivar {

namespace {

NSAppearance* appearanceNamed(AppAppearance appearance) {
  switch (appearance) {
  case AppAppearance::dark:
    return [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
  case AppAppearance::light:
    return [NSAppearance appearanceNamed:NSAppearanceNameAqua];
  case AppAppearance::system:
    break;
  }
  return nil;
}

class DarwinServices final : public PlatformServices {
public:
  explicit DarwinServices(std::optional<QStringList> loginArguments)
      : loginArguments_(std::move(loginArguments)) {}
  DarwinServices(const DarwinServices&) = delete;
  DarwinServices& operator=(const DarwinServices&) = delete;
  ~DarwinServices() override { stopObserving(); }

  void activate() override {
    [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
    [NSApp activateIgnoringOtherApps:YES];
  }

  void setLoginItem(bool enabled) override {
    // The system starts it without arguments, and so on the data of the home folder.
    if (!loginArguments_ || !loginArguments_->isEmpty()) return;
    @autoreleasepool {
      SMAppService* const service = SMAppService.mainAppService;
      NSError* error = nil;
      const bool isDone = enabled ? [service registerAndReturnError:&error]
                                  : [service unregisterAndReturnError:&error];
      if (isDone || !error) return;
      if (error.code == (enabled ? kSMErrorAlreadyRegistered : kSMErrorJobNotFound)) return;
      throw std::runtime_error(error.localizedDescription.UTF8String);
    }
  }

  void setAppearance(AppAppearance appearance) override {
    @autoreleasepool {
      NSApp.appearance = appearanceNamed(appearance);
    }
  }

  bool isDark() const override {
    @autoreleasepool {
      NSString* const match = [NSApp.effectiveAppearance
          bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
      return [match isEqualToString:NSAppearanceNameDarkAqua];
    }
  }

  void onAppearanceChanged(std::function<void()> callback) override {
    stopObserving();
    observer_ = [[TrellivarAppearanceObserver alloc] initWithCallback:std::move(callback)];
  }

  bool isMotionReduced() const override {
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
  }

  void promptForAccessibility() override {
    std::array<const void*, 1> keys{kAXTrustedCheckOptionPrompt};
    std::array<const void*, 1> values{kCFBooleanTrue};
    const auto options = darwin::CFRef<CFDictionaryRef>::adopt(
        CFDictionaryCreate(kCFAllocatorDefault, keys.data(), values.data(), 1,
                           &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    AXIsProcessTrustedWithOptions(options.get());
  }

  void openSettings(Page page) override {
    const bool isAccessibility = page == Page::accessibility;
    // The page lists only who has asked, and the asking waits for the user's answer.
    if (!isAccessibility)
      std::thread([] { IOHIDRequestAccess(kIOHIDRequestTypeListenEvent); }).detach();
    QDesktopServices::openUrl(
        QUrl(QString("x-apple.systempreferences:com.apple.preference.security?") +
             (isAccessibility ? "Privacy_Accessibility" : "Privacy_ListenEvent")));
  }

private:
  void stopObserving() {
    [observer_ stop];
    [observer_ release];
    observer_ = nil;
  }

  std::optional<QStringList> loginArguments_;
  TrellivarAppearanceObserver* observer_ = nil;
};

} // namespace

std::unique_ptr<PlatformServices> platformServices(std::optional<QStringList> loginArguments) {
  return std::make_unique<DarwinServices>(std::move(loginArguments));
}

} // namespace trellivar
