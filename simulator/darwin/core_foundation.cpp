#include "core/utf8.h"
#include "simulator/darwin/values.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

namespace {

/// The only way of keeping the contents of collections that is known here.
void requireTypeCallBacks(const void* given, const void* wanted, const char* call) {
  if (given != wanted) fail(call, "only the call-backs for CF types are supported");
}

std::vector<Held<Object>> contents(const void** values, CFIndex count, const char* call) {
  std::vector<Held<Object>> result;
  for (CFIndex index = 0; index < count; ++index)
    result.emplace_back(&alive(values[index], call));
  return result;
}

bool isASCII(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// UTF-16 units of valid UTF-8: one for each character, two for those of four bytes.
CFIndex utf16Length(std::string_view text) {
  CFIndex result = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0U) != 0x80U) result += byte >= 0xF0U ? 2 : 1;
  }
  return result;
}

/// Writes what fits; answers whether it is the same number.
template <class To> bool store(const Number::Value& value, void* target) {
  To result{};
  const bool isSame = std::visit(
      [&](auto number) {
        if constexpr (std::is_integral_v<To> && std::is_floating_point_v<decltype(number)>) {
          const bool fits = number >= -9223372036854775808.0 && number < 9223372036854775808.0;
          const auto whole = fits ? static_cast<std::int64_t>(number) : std::int64_t{0};
          result = static_cast<To>(whole);
          return fits && static_cast<double>(result) == number;
        } else {
          result = static_cast<To>(number);
          return static_cast<decltype(number)>(result) == number;
        }
      },
      value);
  std::memcpy(target, &result, sizeof result);
  return isSame;
}

template <class From> From load(const void* source) {
  From result{};
  std::memcpy(&result, source, sizeof result);
  return result;
}

CFTypeID typeOf(Kind kind) { return static_cast<CFTypeID>(kind); }

} // namespace

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = reference<CFBooleanRef>(&constantBoolean(true));
const CFBooleanRef kCFBooleanFalse = reference<CFBooleanRef>(&constantBoolean(false));
const CFArrayCallBacks kCFTypeArrayCallBacks{0};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{0};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{0};

CFTypeRef CFRetain(CFTypeRef object) {
  alive(object, "CFRetain").retain();
  return object;
}

void CFRelease(CFTypeRef object) { alive(object, "CFRelease").release("CFRelease"); }

CFTypeID CFGetTypeID(CFTypeRef object) { return typeOf(alive(object, "CFGetTypeID").kind()); }

Boolean CFEqual(CFTypeRef a, CFTypeRef b) {
  return areEqual(alive(a, "CFEqual"), alive(b, "CFEqual")) ? 1 : 0;
}

CFTypeID CFBooleanGetTypeID() { return typeOf(Kind::boolean); }
CFTypeID CFNumberGetTypeID() { return typeOf(Kind::number); }
CFTypeID CFStringGetTypeID() { return typeOf(Kind::string); }
CFTypeID CFArrayGetTypeID() { return typeOf(Kind::array); }
CFTypeID CFDictionaryGetTypeID() { return typeOf(Kind::dictionary); }
CFTypeID CFSetGetTypeID() { return typeOf(Kind::set); }

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
  return as<Truth>(boolean, "CFBooleanGetValue").value() ? 1 : 0;
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
  Number::Value stored;
  switch (type) {
  case kCFNumberSInt32Type:
  case kCFNumberIntType:
    stored = std::int64_t{load<std::int32_t>(value)};
    break;
  case kCFNumberSInt64Type:
  case kCFNumberLongLongType:
  case kCFNumberCFIndexType:
    stored = load<std::int64_t>(value);
    break;
  case kCFNumberFloat64Type:
  case kCFNumberDoubleType:
    stored = load<double>(value);
    break;
  default:
    fail("CFNumberCreate", "unknown type of number");
  }
  return handedOut<CFNumberRef>(new Number(stored));
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
  const Number::Value& stored = as<Number>(number, "CFNumberGetValue").value();
  switch (type) {
  case kCFNumberSInt32Type:
  case kCFNumberIntType:
    return store<std::int32_t>(stored, value) ? 1 : 0;
  case kCFNumberSInt64Type:
  case kCFNumberLongLongType:
  case kCFNumberCFIndexType:
    return store<std::int64_t>(stored, value) ? 1 : 0;
  case kCFNumberFloat64Type:
  case kCFNumberDoubleType:
    return store<double>(stored, value) ? 1 : 0;
  }
  fail("CFNumberGetValue", "unknown type of number");
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
  if (text == nullptr) fail("CFStringCreateWithCString", "NULL is no text");
  const bool isValid =
      encoding == kCFStringEncodingASCII ? isASCII(text) : trellivar::utf8::isValid(text);
  return isValid ? handedOut<CFStringRef>(new String(text)) : nullptr;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding) {
  const std::string& text = as<String>(string, "CFStringGetCString").text();
  if (encoding == kCFStringEncodingASCII && !isASCII(text)) return 0;
  if (static_cast<CFIndex>(text.size()) >= size) return 0;
  std::memcpy(buffer, text.c_str(), text.size() + 1);
  return 1;
}

CFIndex CFStringGetLength(CFStringRef string) {
  return utf16Length(as<String>(string, "CFStringGetLength").text());
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
  return encoding == kCFStringEncodingUTF8 ? length * 3 : length;
}

CFStringRef __CFStringMakeConstantString(const char* text) {
  return reference<CFStringRef>(&constantString(text));
}

CFArrayRef CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks) {
  requireTypeCallBacks(callBacks, &kCFTypeArrayCallBacks, "CFArrayCreate");
  return handedOut<CFArrayRef>(new Array(contents(values, count, "CFArrayCreate")));
}

CFIndex CFArrayGetCount(CFArrayRef array) {
  return static_cast<CFIndex>(as<Array>(array, "CFArrayGetCount").items().size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  const auto& items = as<Array>(array, "CFArrayGetValueAtIndex").items();
  if (index < 0 || static_cast<std::size_t>(index) >= items.size())
    fail("CFArrayGetValueAtIndex", "there is no item " + std::to_string(index));
  return items[static_cast<std::size_t>(index)].get();
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
  constexpr const char* call = "CFDictionaryCreate";
  requireTypeCallBacks(keyCallBacks, &kCFTypeDictionaryKeyCallBacks, call);
  requireTypeCallBacks(valueCallBacks, &kCFTypeDictionaryValueCallBacks, call);
  auto* dictionary = new Dictionary(false);
  for (CFIndex index = 0; index < count; ++index)
    dictionary->set(alive(keys[index], call), alive(values[index], call));
  return handedOut<CFDictionaryRef>(dictionary);
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex,
                                                 const CFDictionaryKeyCallBacks* keyCallBacks,
                                                 const CFDictionaryValueCallBacks* valueCallBacks) {
  constexpr const char* call = "CFDictionaryCreateMutable";
  requireTypeCallBacks(keyCallBacks, &kCFTypeDictionaryKeyCallBacks, call);
  requireTypeCallBacks(valueCallBacks, &kCFTypeDictionaryValueCallBacks, call);
  return handedOut<CFMutableDictionaryRef>(new Dictionary(true));
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
  constexpr const char* call = "CFDictionarySetValue";
  auto& target = as<Dictionary>(dictionary, call);
  if (!target.isMutable()) fail(call, target.title() + " is immutable");
  target.set(alive(key, call), alive(value, call));
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
  constexpr const char* call = "CFDictionaryGetValue";
  return as<Dictionary>(dictionary, call).find(alive(key, call));
}

CFIndex CFSetGetCount(CFSetRef set) {
  return static_cast<CFIndex>(as<Set>(set, "CFSetGetCount").items().size());
}

void CFSetGetValues(CFSetRef set, const void** values) {
  for (const auto& item : as<Set>(set, "CFSetGetValues").items())
    *values++ = item.get();
}

} // extern "C"
