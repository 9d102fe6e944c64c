#pragma once

#include "engine/darwin/cf_ref.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

namespace trellivar::darwin {

/// None when `value` is NULL, no number or beyond the range.
std::optional<std::int64_t> integer(CFTypeRef value);
/// None when `value` is NULL or no string.
std::optional<std::string> text(CFTypeRef value);

/// A dictionary of numbers, such as device matching takes.
CFRef<CFMutableDictionaryRef>
numbers(std::initializer_list<std::pair<CFStringRef, std::int64_t>> entries);

} // namespace trellivar::darwin
