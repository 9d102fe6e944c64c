#include "simulator/darwin/io_object.h"
#include "simulator/darwin/machine.h"
#include "simulator/darwin/matching.h"
#include "simulator/darwin/notifications.h"

#include <IOKit/IOKitLib.h>

#include <cstring>
#include <functional>

namespace trellivar::darwin_double {

namespace {

/// An iteration over entries that are there.
class RegistryIterator final : public IOObject {
public:
  using Listing = std::function<std::vector<desk::EntryId>()>;
  explicit RegistryIterator(Listing listing) : listing_(std::move(listing)) { reset(); }

  bool isValid() const {
    const Machine& here = machine("IOIteratorIsValid");
    return !here.desk.faults().brokenIterators || generation_ == here.desk.registry().generation();
  }

  void reset() {
    generation_ = machine("IOIteratorReset").desk.registry().generation();
    entries_ = listing_();
    next_ = 0;
  }

  io_object_t next() {
    Machine& here = machine("IOIteratorNext");
    if (next_ > 0 && here.duringIteration) std::exchange(here.duringIteration, nullptr)();
    if (!isValid()) return 0;
    return next_ < entries_.size() ? handOutEntry(entries_[next_++]) : 0;
  }

  std::string title() const override { return "registry iterator " + std::to_string(name); }

private:
  Listing listing_;
  std::uint64_t generation_ = 0;
  std::vector<desk::EntryId> entries_;
  std::size_t next_ = 0;
};

desk::Registry& deskRegistry(const char* call) { return machine(call).desk.registry(); }

/// Aborts for what is no iterator.
RegistryIterator* registryIterator(io_iterator_t iterator, const char* call) {
  IOObject& object = ioObject(iterator, call);
  auto* result = dynamic_cast<RegistryIterator*>(&object);
  if (!result && !dynamic_cast<Notification*>(&object))
    fail(call, object.title() + " is no iterator");
  return result;
}

void requireServicePlane(const char* plane, const char* call) {
  if (std::strcmp(plane, kIOServicePlane) != 0)
    fail(call, std::string("only the plane IOService is known here, not ") + plane);
}

/// What an iterator with these options gives out, as it is now.
std::vector<desk::EntryId> relatives(desk::EntryId id, IOOptionBits options) {
  const desk::Registry& registry = deskRegistry("IORegistryEntryCreateIterator");
  const desk::Entry* entry = registry.find(id);
  if (!entry) return {};
  const bool isRecursive = (options & kIORegistryIterateRecursively) != 0;
  if ((options & kIORegistryIterateParents) == 0)
    return isRecursive ? registry.descendants(id) : entry->children;
  std::vector<desk::EntryId> result;
  for (desk::EntryId parent = entry->parent; parent != 0;
       parent = isRecursive ? registry.find(parent)->parent : 0)
    result.push_back(parent);
  return result;
}

CFTypeRef createProperty(const desk::Entry* entry, const std::string& key) {
  Object* value = entry ? makeProperty(*entry, key) : nullptr;
  return value ? handedOut<CFTypeRef>(value) : nullptr;
}

kern_return_t matchingServices(const Dictionary& wanted, io_iterator_t* existing) {
  constexpr const char* call = "IOServiceGetMatchingServices";
  *existing = 0;
  desk::Registry& registry = deskRegistry(call);
  if (desk::Faults::strikes(machine(call).desk.faults().failingMatches)) return kIOReturnError;
  if (matchingEntries(registry, wanted).empty()) return kIOReturnSuccess;
  // Only read from now on.
  const Held kept(const_cast<Dictionary*>(&wanted)); // NOLINT(*-const-cast)
  *existing = enter(std::make_unique<RegistryIterator>(
                        [kept, &registry] { return matchingEntries(registry, *kept); }),
                    true);
  return kIOReturnSuccess;
}

} // namespace

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

CFMutableDictionaryRef IOServiceMatching(const char* className) {
  auto* dictionary = new Dictionary(true);
  dictionary->set(constantString("IOProviderClass"), *new String(className));
  return handedOut<CFMutableDictionaryRef>(dictionary);
}

CFMutableDictionaryRef IORegistryEntryIDMatching(std::uint64_t entryId) {
  auto* dictionary = new Dictionary(true);
  dictionary->set(constantString("IORegistryEntryID"),
                  *new Number(static_cast<std::int64_t>(entryId)));
  return handedOut<CFMutableDictionaryRef>(dictionary);
}

kern_return_t IOServiceGetMatchingServices(mach_port_t, CFDictionaryRef matching,
                                           io_iterator_t* existing) {
  constexpr const char* call = "IOServiceGetMatchingServices";
  if (matching == nullptr) return kIOReturnBadArgument;
  const Held wanted(&as<Dictionary>(matching, call));
  wanted->release(call);
  return matchingServices(*wanted, existing);
}

io_object_t IOIteratorNext(io_iterator_t iterator) {
  constexpr const char* call = "IOIteratorNext";
  if (auto* entries = registryIterator(iterator, call)) return entries->next();
  return static_cast<Notification&>(ioObject(iterator, call)).next();
}

void IOIteratorReset(io_iterator_t iterator) {
  if (auto* entries = registryIterator(iterator, "IOIteratorReset")) entries->reset();
}

boolean_t IOIteratorIsValid(io_iterator_t iterator) {
  const auto* entries = registryIterator(iterator, "IOIteratorIsValid");
  return !entries || entries->isValid() ? 1 : 0;
}

CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t entry, CFStringRef key,
                                          CFAllocatorRef, IOOptionBits) {
  constexpr const char* call = "IORegistryEntryCreateCFProperty";
  return createProperty(ioEntry(entry, call).state(), as<String>(key, call).text());
}

CFTypeRef IORegistryEntrySearchCFProperty(io_registry_entry_t entry, const io_name_t plane,
                                          CFStringRef key, CFAllocatorRef, IOOptionBits options) {
  constexpr const char* call = "IORegistryEntrySearchCFProperty";
  requireServicePlane(plane, call);
  const IOEntry& start = ioEntry(entry, call);
  const std::string& name = as<String>(key, call).text();
  if (CFTypeRef own = createProperty(start.state(), name)) return own;
  if ((options & kIORegistryIterateRecursively) == 0) return nullptr;
  for (const trellivar::desk::EntryId id : relatives(start.id(), options)) {
    if (CFTypeRef found = createProperty(deskRegistry(call).find(id), name)) return found;
  }
  return nullptr;
}

kern_return_t IORegistryEntryGetRegistryEntryID(io_registry_entry_t entry, std::uint64_t* entryId) {
  *entryId = ioEntry(entry, "IORegistryEntryGetRegistryEntryID").id();
  return kIOReturnSuccess;
}

kern_return_t IORegistryEntryGetParentEntry(io_registry_entry_t entry, const io_name_t plane,
                                            io_registry_entry_t* parent) {
  constexpr const char* call = "IORegistryEntryGetParentEntry";
  requireServicePlane(plane, call);
  const auto* state = ioEntry(entry, call).state();
  *parent = 0;
  if (!state || !deskRegistry(call).find(state->parent)) return kIOReturnNoDevice;
  *parent = handOutEntry(state->parent);
  return kIOReturnSuccess;
}

kern_return_t IORegistryEntryCreateIterator(io_registry_entry_t entry, const io_name_t plane,
                                            IOOptionBits options, io_iterator_t* iterator) {
  constexpr const char* call = "IORegistryEntryCreateIterator";
  requireServicePlane(plane, call);
  const trellivar::desk::EntryId id = ioEntry(entry, call).id();
  *iterator = enter(
      std::make_unique<RegistryIterator>([id, options] { return relatives(id, options); }), true);
  return kIOReturnSuccess;
}

} // extern "C"
