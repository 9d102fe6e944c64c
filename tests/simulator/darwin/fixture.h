#pragma once

#include "simulator/darwin/platform.h"
#include "simulator/desk/desk.h"

#include <CoreFoundation/CoreFoundation.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar::darwin_double {

/// A machine with nothing on its desk. A test ends with every reference released, or says which are
/// not.
class DarwinTest : public testing::Test {
protected:
  void TearDown() override {
    EXPECT_EQ(platform.liveReferences(), std::vector<std::string>{});
    EXPECT_EQ(platform.taps(), 0U);
    EXPECT_EQ(platform.scheduledTimers(), 0U);
  }

  void run() { desk.queue().run(); }
  void pass(double seconds) { desk.queue().advance(Seconds(seconds)); }

  static CFNumberRef number(int value) { return CFNumberCreate(nullptr, kCFNumberIntType, &value); }
  static int integer(CFTypeRef object) {
    int value = 0;
    EXPECT_NE(CFNumberGetValue(static_cast<CFNumberRef>(object), kCFNumberIntType, &value), 0);
    return value;
  }
  static std::string text(CFTypeRef object) {
    char buffer[256] = "";
    EXPECT_NE(CFStringGetCString(static_cast<CFStringRef>(object), buffer, sizeof buffer,
                                 kCFStringEncodingUTF8),
              0);
    return buffer;
  }
  static CFMutableDictionaryRef dictionary() {
    return CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks,
                                     &kCFTypeDictionaryValueCallBacks);
  }
  /// Of numbers.
  static CFMutableDictionaryRef
  dictionary(std::initializer_list<std::pair<const char*, int>> entries) {
    CFMutableDictionaryRef result = dictionary();
    for (const auto& [key, value] : entries) {
      CFStringRef name = CFStringCreateWithCString(nullptr, key, kCFStringEncodingUTF8);
      CFNumberRef stored = number(value);
      CFDictionarySetValue(result, name, stored);
      CFRelease(name);
      CFRelease(stored);
    }
    return result;
  }

  desk::Desk desk;
  Platform platform{desk};
};

/// A keyboard and a mouse in one, with a media interface.
inline desk::DeviceDescription pad() {
  using Description = desk::DeviceDescription;
  return {
      .product = "Pad",
      .identity = {0x4C4A, 0x4155},
      .interfaces = {{Description::keyboard}, {Description::mouse}, {Description::consumerControl}},
      .calloutPath = "/dev/cu.usbmodem1101"};
}

} // namespace trellivar::darwin_double
