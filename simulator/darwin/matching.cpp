#include "simulator/darwin/matching.h"

#include <IOKit/hid/IOHIDKeys.h>

#include <algorithm>
#include <optional>

namespace trellivar::darwin_double {

namespace {

std::optional<std::int64_t> integer(const Object* value) {
  if (!value || value->kind() != Kind::number) return std::nullopt;
  const auto* number = std::get_if<std::int64_t>(&static_cast<const Number*>(value)->value());
  return number ? std::optional(*number) : std::nullopt;
}

Object* makeValue(const desk::Property& property) {
  if (const auto* number = std::get_if<std::int64_t>(&property)) return new Number(*number);
  if (const auto* text = std::get_if<std::string>(&property)) return new String(*text);
  return &constantBoolean(std::get<bool>(property));
}

Object* makeUsagePairs(const std::vector<desk::Usage>& pairs) {
  std::vector<Held<Object>> items;
  for (const desk::Usage& pair : pairs) {
    auto* item = new Dictionary(false);
    item->set(constantString(kIOHIDDeviceUsagePageKey), *new Number(std::int64_t{pair.page}));
    item->set(constantString(kIOHIDDeviceUsageKey), *new Number(std::int64_t{pair.usage}));
    items.emplace_back(item);
  }
  return new Array(std::move(items));
}

/// The usage keys name one collection of the device, any of them.
bool matchesUsage(const desk::Entry& entry, const Dictionary& wanted) {
  const auto page = integer(wanted.find(kIOHIDDeviceUsagePageKey));
  const auto usage = integer(wanted.find(kIOHIDDeviceUsageKey));
  if (!page && !usage) return true;
  return std::ranges::any_of(entry.usagePairs, [&](const desk::Usage& pair) {
    return (!page || *page == pair.page) && (!usage || *usage == pair.usage);
  });
}

bool matchesKey(const desk::Entry& entry, const std::string& key, const Object& value) {
  if (key == kIOHIDDeviceUsagePageKey || key == kIOHIDDeviceUsageKey)
    return value.kind() == Kind::number;
  if (key == "IOProviderClass")
    return value.kind() == Kind::string && entry.isA(static_cast<const String&>(value).text());
  if (key == "IORegistryEntryID") {
    const auto id = integer(&value);
    return id && static_cast<desk::EntryId>(*id) == entry.id;
  }
  const Held<Object> own(makeProperty(entry, key));
  return own && areEqual(*own, value);
}

} // namespace

bool matches(const desk::Entry& entry, const Dictionary& wanted) {
  return matchesUsage(entry, wanted) &&
         std::ranges::all_of(wanted.entries(), [&](const Dictionary::Entry& pair) {
           return pair.first->kind() == Kind::string &&
                  matchesKey(entry, static_cast<const String&>(*pair.first).text(), *pair.second);
         });
}

std::vector<desk::EntryId> matchingEntries(const desk::Registry& registry,
                                           const Dictionary& wanted) {
  std::vector<desk::EntryId> result = registry.all();
  std::erase_if(result, [&](desk::EntryId id) { return !matches(*registry.find(id), wanted); });
  return result;
}

Object* makeProperty(const desk::Entry& entry, const std::string& key) {
  const auto found = entry.properties.find(key);
  if (found != entry.properties.end()) return makeValue(found->second);
  if (key == kIOHIDDeviceUsagePairsKey && !entry.usagePairs.empty())
    return makeUsagePairs(entry.usagePairs);
  return nullptr;
}

} // namespace trellivar::darwin_double
