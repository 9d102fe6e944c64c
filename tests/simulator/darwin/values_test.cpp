#include "tests/simulator/darwin/fixture.h"

#include <cstring>
#include <limits>

namespace trellivar::darwin_double {
namespace {

class Values : public DarwinTest {};
using ValuesDeathTest = Values;

TEST_F(Values, whatIsCreatedIsOwnedUntilItIsReleased) {
  CFNumberRef seven = number(7);
  const auto live = platform.liveReferences();
  ASSERT_EQ(live.size(), 1U);
  EXPECT_NE(live[0].find("CFNumber #"), std::string::npos) << live[0];
  EXPECT_NE(live[0].find("1 not released, 7"), std::string::npos) << live[0];
  CFRelease(seven);
}

TEST_F(Values, eachRetainNeedsItsRelease) {
  CFNumberRef seven = number(7);
  EXPECT_EQ(CFRetain(seven), seven);
  CFRelease(seven);
  ASSERT_EQ(platform.liveReferences().size(), 1U);
  EXPECT_EQ(integer(seven), 7);
  CFRelease(seven);
}

TEST_F(ValuesDeathTest, releasingOnceTooOftenAborts) {
  EXPECT_DEATH(
      {
        CFNumberRef seven = number(7);
        CFRelease(seven);
        CFRelease(seven);
      },
      "CFRelease: CFNumber #[0-9]+ was released before");
}

TEST_F(ValuesDeathTest, releasingWhatOthersKeepAliveAborts) {
  CFMutableDictionaryRef holder = dictionary({{"seven", 7}});
  EXPECT_DEATH(CFRelease(CFDictionaryGetValue(holder, CFSTR("seven"))),
               "CFRelease: CFNumber #[0-9]+ is released once too often");
  CFRelease(holder);
}

TEST_F(ValuesDeathTest, usingWhatWasReleasedAborts) {
  EXPECT_DEATH(
      {
        CFNumberRef seven = number(7);
        CFRelease(seven);
        integer(seven);
      },
      "CFNumberGetValue: CFNumber #[0-9]+ was released before");
  EXPECT_DEATH(
      {
        CFNumberRef seven = number(7);
        CFRelease(seven);
        CFRetain(seven);
      },
      "CFRetain: CFNumber #[0-9]+ was released before");
}

TEST_F(ValuesDeathTest, aReleasedObjectIsRememberedForThousandsOfOthers) {
  EXPECT_DEATH(
      {
        CFNumberRef first = number(7);
        CFRelease(first);
        for (int count = 0; count < 4000; ++count)
          CFRelease(number(count));
        CFRelease(first);
      },
      "CFRelease: CFNumber #[0-9]+ was released before");
}

TEST_F(ValuesDeathTest, nullIsNoObject) {
  EXPECT_DEATH(CFRelease(nullptr), "CFRelease: NULL is no object");
  EXPECT_DEATH(CFRetain(nullptr), "CFRetain: NULL is no object");
  EXPECT_DEATH(CFGetTypeID(nullptr), "CFGetTypeID: NULL is no object");
  EXPECT_DEATH(CFStringGetLength(nullptr), "CFStringGetLength: NULL is no CFString");
}

TEST_F(ValuesDeathTest, takingOneTypeForAnotherAborts) {
  int value = 0;
  EXPECT_DEATH(
      CFNumberGetValue(reinterpret_cast<CFNumberRef>(CFSTR("7")), kCFNumberIntType, &value),
      "CFNumberGetValue: CFString #[0-9]+ is no CFNumber");
  CFNumberRef seven = number(7);
  EXPECT_DEATH(CFStringGetLength(reinterpret_cast<CFStringRef>(seven)),
               "CFStringGetLength: CFNumber #[0-9]+ is no CFString");
  EXPECT_DEATH(CFArrayGetCount(reinterpret_cast<CFArrayRef>(seven)), "is no CFArray");
  EXPECT_DEATH(CFDictionaryGetValue(reinterpret_cast<CFDictionaryRef>(seven), CFSTR("x")),
               "is no CFDictionary");
  EXPECT_DEATH(CFSetGetCount(reinterpret_cast<CFSetRef>(seven)), "is no CFSet");
  CFRelease(seven);
}

TEST_F(Values, constantsAreNeverReleased) {
  for (CFTypeRef constant :
       {static_cast<CFTypeRef>(CFSTR("constant")), static_cast<CFTypeRef>(kCFBooleanTrue),
        static_cast<CFTypeRef>(kCFRunLoopCommonModes)}) {
    CFRetain(constant);
    for (int times = 0; times < 3; ++times)
      CFRelease(constant);
    EXPECT_NE(CFGetTypeID(constant), 0U);
  }
  EXPECT_EQ(CFSTR("constant"), CFSTR("constant"));
}

TEST_F(Values, typesAreToldApart) {
  CFNumberRef seven = number(7);
  EXPECT_EQ(CFGetTypeID(seven), CFNumberGetTypeID());
  EXPECT_EQ(CFGetTypeID(CFSTR("x")), CFStringGetTypeID());
  EXPECT_EQ(CFGetTypeID(kCFBooleanFalse), CFBooleanGetTypeID());
  EXPECT_NE(CFNumberGetTypeID(), CFStringGetTypeID());
  EXPECT_NE(CFNumberGetTypeID(), CFBooleanGetTypeID());
  EXPECT_NE(CFBooleanGetValue(kCFBooleanTrue), 0);
  EXPECT_EQ(CFBooleanGetValue(kCFBooleanFalse), 0);
  CFRelease(seven);
}

TEST_F(Values, aNumberTellsWhenItDoesNotFit) {
  const std::int64_t big = 0x1'0000'0203;
  CFNumberRef stored = CFNumberCreate(nullptr, kCFNumberSInt64Type, &big);
  std::int64_t wide = 0;
  EXPECT_NE(CFNumberGetValue(stored, kCFNumberSInt64Type, &wide), 0);
  EXPECT_EQ(wide, big);
  int narrow = 0;
  EXPECT_EQ(CFNumberGetValue(stored, kCFNumberIntType, &narrow), 0);
  EXPECT_EQ(narrow, 0x203); // written all the same
  CFRelease(stored);

  const double half = 0.5;
  CFNumberRef fraction = CFNumberCreate(nullptr, kCFNumberFloat64Type, &half);
  EXPECT_EQ(CFNumberGetValue(fraction, kCFNumberIntType, &narrow), 0);
  double same = 0;
  EXPECT_NE(CFNumberGetValue(fraction, kCFNumberFloat64Type, &same), 0);
  EXPECT_EQ(same, 0.5);
  CFRelease(fraction);
}

TEST_F(Values, aStringGoesOnlyIntoABufferThatHoldsIt) {
  CFStringRef pad = CFStringCreateWithCString(nullptr, "Päd😀", kCFStringEncodingUTF8);
  EXPECT_EQ(CFStringGetLength(pad), 5); // in UTF-16
  EXPECT_GE(CFStringGetMaximumSizeForEncoding(5, kCFStringEncodingUTF8), 15);
  char buffer[9] = "";
  EXPECT_EQ(CFStringGetCString(pad, buffer, 8, kCFStringEncodingUTF8), 0);
  EXPECT_NE(CFStringGetCString(pad, buffer, 9, kCFStringEncodingUTF8), 0);
  EXPECT_STREQ(buffer, "Päd😀");
  EXPECT_EQ(CFStringGetCString(pad, buffer, 9, kCFStringEncodingASCII), 0);
  CFRelease(pad);
  EXPECT_EQ(CFStringCreateWithCString(nullptr, "\xFF", kCFStringEncodingUTF8), nullptr);
}

TEST_F(Values, equalityIsThatOfTheContents) {
  CFStringRef made = CFStringCreateWithCString(nullptr, "pad", kCFStringEncodingUTF8);
  EXPECT_NE(CFEqual(made, CFSTR("pad")), 0);
  EXPECT_EQ(CFEqual(made, CFSTR("Pad")), 0);
  CFNumberRef seven = number(7);
  const double alsoSeven = 7;
  CFNumberRef real = CFNumberCreate(nullptr, kCFNumberFloat64Type, &alsoSeven);
  EXPECT_NE(CFEqual(seven, real), 0);
  EXPECT_EQ(CFEqual(seven, made), 0);
  CFMutableDictionaryRef one = dictionary({{"a", 1}, {"b", 2}});
  CFMutableDictionaryRef same = dictionary({{"b", 2}, {"a", 1}});
  CFMutableDictionaryRef other = dictionary({{"a", 1}, {"b", 3}});
  EXPECT_NE(CFEqual(one, same), 0);
  EXPECT_EQ(CFEqual(one, other), 0);
  for (CFTypeRef object : std::vector<CFTypeRef>{made, seven, real, one, same, other})
    CFRelease(object);
}

TEST_F(Values, collectionsKeepTheirContents) {
  CFNumberRef seven = number(7);
  const void* values[] = {seven};
  CFArrayRef array = CFArrayCreate(nullptr, values, 1, &kCFTypeArrayCallBacks);
  CFRelease(seven);
  EXPECT_EQ(platform.liveReferences().size(), 1U); // the array alone
  ASSERT_EQ(CFArrayGetCount(array), 1);
  EXPECT_EQ(integer(CFArrayGetValueAtIndex(array, 0)), 7);

  CFTypeRef kept = CFRetain(CFArrayGetValueAtIndex(array, 0));
  CFRelease(array);
  EXPECT_EQ(integer(kept), 7);
  CFRelease(kept);
}

TEST_F(Values, aDictionaryLooksForEqualKeysAndReplacesValues) {
  CFMutableDictionaryRef held = dictionary({{"a", 1}, {"b", 2}, {"a", 3}});
  EXPECT_EQ(integer(CFDictionaryGetValue(held, CFSTR("a"))), 3);
  EXPECT_EQ(integer(CFDictionaryGetValue(held, CFSTR("b"))), 2);
  EXPECT_EQ(CFDictionaryGetValue(held, CFSTR("c")), nullptr);
  CFRelease(held);
}

TEST_F(ValuesDeathTest, collectionsAreUsedAsTheyWereMade) {
  EXPECT_DEATH(CFArrayCreate(nullptr, nullptr, 0, nullptr), "only the call-backs for CF types");
  EXPECT_DEATH(CFDictionaryCreateMutable(nullptr, 0, nullptr, &kCFTypeDictionaryValueCallBacks),
               "only the call-backs for CF types");
  const void* keys[] = {CFSTR("a")};
  const void* values[] = {kCFBooleanTrue};
  CFDictionaryRef fixed = CFDictionaryCreate(
      nullptr, keys, values, 1, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
  EXPECT_EQ(CFDictionaryGetValue(fixed, CFSTR("a")), kCFBooleanTrue);
  // The program casts constness away, which the compiler cannot prevent.
  EXPECT_DEATH(
      CFDictionarySetValue(const_cast<CFMutableDictionaryRef>(fixed), CFSTR("b"), kCFBooleanTrue),
      "is immutable");
  CFRelease(fixed);
  CFArrayRef empty = CFArrayCreate(nullptr, nullptr, 0, &kCFTypeArrayCallBacks);
  EXPECT_DEATH(CFArrayGetValueAtIndex(empty, 0), "there is no item 0");
  CFRelease(empty);
}

TEST(PlatformDeathTest, thereIsOneAtATime) {
  EXPECT_DEATH(
      {
        desk::Desk desk;
        const Platform first(desk);
        const Platform second(desk);
      },
      "Platform: there is one already");
  EXPECT_DEATH(CFAbsoluteTimeGetCurrent(), "CFAbsoluteTimeGetCurrent: there is no platform");
}

TEST(PlatformTest, countsOnlyWhatWasMadeSinceItsStart) {
  const int value = 1;
  CFNumberRef before = CFNumberCreate(nullptr, kCFNumberIntType, &value);
  desk::Desk desk;
  {
    const Platform platform(desk);
    EXPECT_TRUE(platform.liveReferences().empty());
  }
  const Platform next(desk);
  EXPECT_TRUE(next.liveReferences().empty());
  CFRelease(before);
}

} // namespace
} // namespace trellivar::darwin_double
