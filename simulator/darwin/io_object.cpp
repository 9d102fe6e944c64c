#include "simulator/darwin/io_object.h"

#include "simulator/darwin/machine.h"

#include <map>

namespace trellivar::darwin_double {

namespace {

std::map<io_object_t, std::unique_ptr<IOObject>>& objects() {
  static auto& all = *new std::map<io_object_t, std::unique_ptr<IOObject>>;
  return all;
}

/// Names look like those of the system, so that no small number passes for one.
io_object_t lastName = 0x1003;
constexpr io_object_t nameStep = 0x100;

void endIfUnused(const IOObject& object) {
  if (object.owned == 0 && object.held == 0) objects().erase(object.name);
}

} // namespace

const desk::Entry* IOEntry::state() const {
  const desk::Entry* now = machine("IORegistryEntry").desk.registry().find(id_);
  if (now) return now;
  return last_ ? &*last_ : nullptr;
}

std::string IOEntry::title() const {
  return "registry entry " + std::to_string(name) + " (id " + std::to_string(id_) + ")";
}

io_object_t enter(std::unique_ptr<IOObject> object, bool owned) {
  lastName += nameStep;
  object->name = lastName;
  ++(owned ? object->owned : object->held);
  objects().emplace(lastName, std::move(object));
  return lastName;
}

io_object_t handOutEntry(desk::EntryId id) { return enter(std::make_unique<IOEntry>(id), true); }

void dropIOObject(io_object_t name) {
  IOObject* object = findIOObject(name);
  if (!object) return;
  --object->held;
  endIfUnused(*object);
}

IOObject* findIOObject(io_object_t name) {
  const auto found = objects().find(name);
  return found == objects().end() ? nullptr : found->second.get();
}

IOObject& ioObject(io_object_t name, const char* call) {
  if (IOObject* object = findIOObject(name)) return *object;
  const bool wasGiven = name > 0x1003 && name <= lastName && name % nameStep == 0x1003 % nameStep;
  fail(call, "I/O Kit object " + std::to_string(name) +
                 (wasGiven ? " was released before" : " was never given"));
}

IOEntry& ioEntry(io_object_t name, const char* call) {
  IOObject& object = ioObject(name, call);
  auto* entry = dynamic_cast<IOEntry*>(&object);
  if (!entry) fail(call, object.title() + " is no registry entry");
  return *entry;
}

io_object_t lastIOName() { return lastName; }

std::vector<io_object_t> ioObjectNames(io_object_t since) {
  std::vector<io_object_t> result;
  for (auto next = objects().upper_bound(since); next != objects().end(); ++next)
    result.push_back(next->first);
  return result;
}

std::vector<std::string> ownedIOObjects(io_object_t since) {
  std::vector<std::string> result;
  for (const auto& [name, object] : objects()) {
    if (name > since && object->owned > 0)
      result.push_back(object->title() + ": " + std::to_string(object->owned) + " not released");
  }
  return result;
}

void rememberLastState(desk::Registry::Change change, const desk::Entry& entry) {
  if (change != desk::Registry::Change::disappeared) return;
  for (const auto& [name, object] : objects()) {
    auto* known = dynamic_cast<IOEntry*>(object.get());
    if (known && known->id() == entry.id) known->remember(entry);
  }
}

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

const mach_port_t kIOMainPortDefault = 0;

kern_return_t IOObjectRetain(io_object_t object) {
  if (object == 0) return kIOReturnBadArgument;
  ++ioObject(object, "IOObjectRetain").owned;
  return kIOReturnSuccess;
}

kern_return_t IOObjectRelease(io_object_t object) {
  if (object == 0) return kIOReturnBadArgument;
  IOObject& released = ioObject(object, "IOObjectRelease");
  if (released.owned == 0)
    fail("IOObjectRelease",
         released.title() + " is released once too often: the program does not own it");
  if (--released.owned > 0) return kIOReturnSuccess;
  released.requireReleasable();
  endIfUnused(released);
  return kIOReturnSuccess;
}

} // extern "C"
