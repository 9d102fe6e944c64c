#pragma once

#include "engine/darwin/cf_ref.h"

#include <IOKit/hid/IOHIDManager.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace trellivar::darwin {

/// One element of a HID device that has changed; valid within the callback.
struct HIDInput {
  IOHIDDeviceRef device;
  std::uint32_t usagePage;
  std::uint32_t usage;
  CFIndex value;

  /// Properties of the device or of what it hangs on; none when missing or of another type.
  std::optional<std::int64_t> integer(CFStringRef key) const;
  std::optional<std::string> text(CFStringRef key) const;
};

/// What to match, as an HID manager takes it.
using Matching = std::vector<CFRef<CFMutableDictionaryRef>>;

/// Devices with a keyboard, a mouse or a consumer control among their collections.
Matching keyboardsMiceAndConsumerControls();

/// Listens to devices from its creation until it is destroyed, on the main run loop in its default
/// mode. Must not be destroyed by its own callback. Main thread.
///
/// A refused device stays refused for the life of a manager: to try again takes a new one.
class HIDListener {
public:
  using Callback = std::function<void(const HIDInput&)>;

  /// Hears devices that match any of the dictionaries.
  HIDListener(const Matching& matching, Callback callback);
  HIDListener(const HIDListener&) = delete;
  HIDListener& operator=(const HIDListener&) = delete;
  ~HIDListener();

  /// What opening answered: 0, or the error of the first device that refused. Others may be open
  /// all the same, and 0 does not say that anything will be heard.
  IOReturn openResult() const noexcept { return openResult_; }

private:
  IOReturn open(const Matching& matching);
  static void received(void* context, IOReturn result, void* sender, IOHIDValueRef value) noexcept;
  bool isRepeated(IOHIDDeviceRef device);

  struct Heard {
    std::uint64_t entryId;
    IOHIDDeviceRef device; ///< only to be compared
  };

  Callback callback_;
  CFRef<IOHIDManagerRef> manager_;
  std::vector<Heard> heard_;
  IOReturn openResult_; ///< opening may bring values already: the last to be initialised
};

} // namespace trellivar::darwin
