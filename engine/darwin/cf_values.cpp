#include "engine/darwin/cf_values.h"

#include <cstring>

namespace trellivar::darwin {

std::optional<std::int64_t> integer(CFTypeRef value) {
  std::int64_t number = 0;
  if (!value || CFGetTypeID(value) != CFNumberGetTypeID()) return std::nullopt;
  if (CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt64Type, &number) == 0)
    return std::nullopt;
  return number;
}

std::optional<std::string> text(CFTypeRef value) {
  if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
  const auto string = static_cast<CFStringRef>(value);
  const CFIndex size =
      CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
  std::string result(static_cast<std::size_t>(size), '\0');
  if (CFStringGetCString(string, result.data(), size, kCFStringEncodingUTF8) == 0)
    return std::nullopt;
  result.resize(std::strlen(result.c_str()));
  return result;
}

CFRef<CFMutableDictionaryRef>
numbers(std::initializer_list<std::pair<CFStringRef, std::int64_t>> entries) {
  auto dictionary = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
      kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
  for (const auto& [key, value] : entries) {
    const auto number =
        CFRef<CFNumberRef>::adopt(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &value));
    CFDictionarySetValue(dictionary.get(), key, number.get());
  }
  return dictionary;
}

} // namespace trellivar::darwin
