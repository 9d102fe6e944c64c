#include "engine/darwin/iokit_device_identifier.h"

#include "engine/darwin/cf_values.h"
#include "engine/hid_usages.h"

#include <utility>

namespace trellivar {

namespace {

/// Arrays of keys report their error states, and an element for the array itself, on this page too.
constexpr bool isKey(std::uint32_t usagePage, std::uint32_t usage) {
  constexpr std::uint32_t first = 0x04;
  constexpr std::uint32_t last = 0xE7;
  return usagePage == hid::keyboardPage && usage >= first && usage <= last;
}

} // namespace

void IOKitDeviceIdentifier::identifyNextKeyDevice(Seconds timeout, Completion completion) {
  if (completion_) {
    std::erase_if(superseded_, [](const WorkItem& work) { return !work.isPending(); });
    superseded_.push_back(
        queue_.asyncAfter(Seconds::zero(), [earlier = std::exchange(completion_, nullptr)] {
          earlier(std::nullopt);
        }));
  }
  listener_.reset();
  found_.reset();
  completion_ = std::move(completion);
  darwin::Matching matching;
  matching.push_back(darwin::numbers({{CFSTR(kIOHIDDeviceUsagePageKey), hid::genericDesktopPage}}));
  listener_.emplace(matching, [this](const darwin::HIDInput& input) { handle(input); });
  finishWork_ = queue_.asyncAfter(timeout, [this] { finish(); });
}

void IOKitDeviceIdentifier::handle(const darwin::HIDInput& input) {
  if (found_ || !isKey(input.usagePage, input.usage) || input.value != 1) return;
  found_ =
      IdentifiedDevice{input.text(CFSTR(kIOHIDProductKey)).value_or("Unknown"),
                       static_cast<int>(input.integer(CFSTR(kIOHIDVendorIDKey)).value_or(-1)),
                       static_cast<int>(input.integer(CFSTR(kIOHIDProductIDKey)).value_or(-1))};
  // The listener must not end within its own callback.
  finishWork_ = queue_.asyncAfter(Seconds::zero(), [this] { finish(); });
}

void IOKitDeviceIdentifier::finish() {
  listener_.reset();
  finishWork_.cancel();
  std::exchange(completion_, nullptr)(std::exchange(found_, std::nullopt));
}

} // namespace trellivar
