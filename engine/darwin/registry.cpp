#include "engine/darwin/registry.h"

#include "engine/darwin/cf_values.h"

namespace trellivar::darwin {

namespace {

CFRef<CFTypeRef> property(io_registry_entry_t entry, CFStringRef key) {
  return CFRef<CFTypeRef>::adopt(
      IORegistryEntryCreateCFProperty(entry, key, kCFAllocatorDefault, 0));
}

/// An iteration that a change of the registry has cut short starts again, this many times at most.
constexpr int attempts = 8;

std::vector<IoObject> all(const IoObject& iterator) {
  std::vector<IoObject> result;
  for (int attempt = 1; iterator; ++attempt) {
    while (IoObject object = next(iterator))
      result.push_back(std::move(object));
    if (IOIteratorIsValid(iterator.get()) || attempt == attempts) break;
    result.clear();
    IOIteratorReset(iterator.get());
  }
  return result;
}

} // namespace

std::vector<IoObject> services(const char* className) {
  IoObject iterator;
  // The look-up consumes the dictionary, whether it succeeds or not.
  CFMutableDictionaryRef matching = IOServiceMatching(className);
  if (!matching) return {};
  if (IOServiceGetMatchingServices(MACH_PORT_NULL, matching, iterator.out()) != kIOReturnSuccess)
    return {};
  return all(iterator);
}

std::optional<std::int64_t> integerProperty(io_registry_entry_t entry, CFStringRef key) {
  return integer(property(entry, key).get());
}

std::optional<std::string> textProperty(io_registry_entry_t entry, CFStringRef key) {
  return text(property(entry, key).get());
}

std::optional<std::uint64_t> entryId(io_registry_entry_t entry) {
  std::uint64_t id = 0;
  if (IORegistryEntryGetRegistryEntryID(entry, &id) != kIOReturnSuccess) return std::nullopt;
  return id;
}

std::vector<std::uint64_t> entryIdsOfSubtree(io_registry_entry_t entry) {
  std::vector<std::uint64_t> ids;
  if (const auto id = entryId(entry)) ids.push_back(*id);
  IoObject iterator;
  if (IORegistryEntryCreateIterator(entry, kIOServicePlane, kIORegistryIterateRecursively,
                                    iterator.out()) != kIOReturnSuccess)
    return ids;
  for (const IoObject& object : all(iterator)) {
    if (const auto id = entryId(object.get())) ids.push_back(*id);
  }
  return ids;
}

IoObject parent(io_registry_entry_t entry) {
  IoObject result;
  if (IORegistryEntryGetParentEntry(entry, kIOServicePlane, result.out()) != kIOReturnSuccess)
    return {};
  return result;
}

} // namespace trellivar::darwin
