#include "simulator/darwin/hid_manager.h"

#include "simulator/darwin/clock.h"
#include "simulator/darwin/matching.h"
#include "simulator/darwin/run_loop.h"

#include <algorithm>

namespace trellivar::darwin_double {

HIDManager::HIDManager() : Object(ownKind) {
  machine("IOHIDManagerCreate").managers.push_back(this);
}

HIDManager::~HIDManager() {
  if (Machine* machine = currentMachine()) std::erase(machine->managers, this);
}

void HIDManager::abandoned(const char* call) {
  if (callDepth_ > 0) fail(call, title() + " is released within its own value callback");
  close();
}

void HIDManager::setMatching(std::vector<Held<Dictionary>> wanted) {
  for (const Known& known : known_)
    known.device->close();
  known_.clear();
  wanted_ = std::move(wanted);
  addNew();
}

void HIDManager::setCallback(IOHIDValueCallback callback, void* context) {
  callback_ = callback;
  context_ = context;
}

void HIDManager::schedule(CFStringRef mode) {
  constexpr const char* call = "IOHIDManagerScheduleWithRunLoop";
  if (isScheduled()) fail(call, title() + " is scheduled already");
  add(modes_, mode, call);
  if (isOutdated_) devicesChanged();
}

void HIDManager::unschedule(CFStringRef mode) {
  remove(modes_, mode, "IOHIDManagerUnscheduleFromRunLoop");
}

void HIDManager::devicesChanged() {
  isOutdated_ = true;
  if (!isScheduled()) return;
  machine("IOHIDManager").inModes(modes_, [self = Held(this)] {
    if (self->isScheduled() && self->isOutdated_) self->update();
  });
}

void HIDManager::update() {
  removeGone();
  addNew();
}

void HIDManager::removeGone() {
  const desk::Registry& registry = machine("IOHIDManager").desk.registry();
  std::erase_if(known_, [&](const Known& known) {
    const bool isGone = !registry.find(known.device->entry());
    if (isGone) known.device->close();
    return isGone;
  });
}

void HIDManager::addNew() {
  isOutdated_ = false;
  const Machine& here = machine("IOHIDManagerSetDeviceMatching");
  const desk::Registry& registry = here.desk.registry();
  for (std::size_t index = 0; index < wanted_.size(); ++index) {
    for (const desk::EntryId id : registry.ofClass(kIOHIDDeviceKey)) {
      if (matches(*registry.find(id), *wanted_[index])) addDevice(id, index);
    }
  }
}

void HIDManager::addDevice(desk::EntryId id, std::size_t dictionary) {
  const bool perDictionary = machine("IOHIDManager").devicePerDictionary;
  const bool isKnown = std::ranges::any_of(known_, [&](const Known& known) {
    return known.device->entry() == id && (!perDictionary || known.dictionary == dictionary);
  });
  if (isKnown) return;
  hasMatched_ = true;
  known_.push_back({Held(new HIDDevice(id)), dictionary});
  if (!isOpen_) return;
  known_.back().device->open();
}

void HIDManager::askForAccess() const {
  Machine& here = machine("IOHIDManagerOpen");
  const bool asks =
      here.desk.inputMonitoring() == desk::Access::unknown &&
      std::ranges::any_of(known_, [](const Known& known) { return known.device->isProtected(); });
  if (asks) here.prompts.push_back(Platform::Prompt::inputMonitoring);
}

IOReturn HIDManager::open() {
  if (std::exchange(isOpen_, true)) return kIOReturnSuccess;
  if (known_.empty()) return kIOReturnSuccess;
  askForAccess();
  Machine& here = machine("IOHIDManagerOpen");
  const bool fails = desk::Faults::strikes(here.desk.faults().failingOpens);
  IOReturn result = kIOReturnSuccess;
  for (const Known& known : known_) {
    if (fails) known.device->refuse(here.openError);
    const IOReturn error = known.device->open();
    if (result == kIOReturnSuccess) result = error;
  }
  return result;
}

IOReturn HIDManager::close() {
  if (!std::exchange(isOpen_, false)) return kIOReturnNotOpen;
  modes_ = {};
  for (const Known& known : known_)
    known.device->close();
  return kIOReturnSuccess;
}

Set* HIDManager::devices() const {
  if (!hasMatched_) return nullptr;
  std::vector<Held<Object>> items;
  for (const Known& known : known_)
    items.emplace_back(known.device.get());
  return new Set(std::move(items));
}

void HIDManager::hear(const desk::HIDValue& report) {
  if (!isOpen_ || !isScheduled()) return;
  Machine& here = machine("IOHIDManager");
  for (const Known& known : known_) {
    if (known.device->entry() != report.device || !known.device->delivers()) continue;
    const Held value(new HIDValue(Held(&known.device->element(report.usage)), report.value,
                                  ticksOf(here.desk.queue().now())));
    here.inModes(modes_, [self = Held(this), device = known.device, value] {
      self->deliver(device, value);
    });
  }
}

void HIDManager::deliver(const Held<HIDDevice>& device, const Held<HIDValue>& value) {
  const bool isWanted = isOpen_ && isScheduled() && callback_ && device->delivers();
  if (!isWanted) return;
  const CallbackScope scope(machine("IOHIDManager"));
  ++callDepth_;
  callback_(context_, kIOReturnSuccess, reference<void*>(device.get()),
            reference<IOHIDValueRef>(value.get()));
  --callDepth_;
}

namespace {

HIDManager& manager(IOHIDManagerRef reference, const char* call) {
  return as<HIDManager>(reference, call);
}

} // namespace

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

CFTypeID IOHIDManagerGetTypeID() { return static_cast<CFTypeID>(Kind::hidManager); }

IOHIDManagerRef IOHIDManagerCreate(CFAllocatorRef, IOOptionBits) {
  return handedOut<IOHIDManagerRef>(new HIDManager);
}

void IOHIDManagerSetDeviceMatching(IOHIDManagerRef reference, CFDictionaryRef matching) {
  constexpr const char* call = "IOHIDManagerSetDeviceMatching";
  auto* wanted = matching ? &as<Dictionary>(matching, call) : new Dictionary(false);
  manager(reference, call).setMatching({Held(wanted)});
}

void IOHIDManagerSetDeviceMatchingMultiple(IOHIDManagerRef reference, CFArrayRef matchings) {
  constexpr const char* call = "IOHIDManagerSetDeviceMatchingMultiple";
  if (matchings == nullptr) {
    IOHIDManagerSetDeviceMatching(reference, nullptr);
    return;
  }
  std::vector<Held<Dictionary>> wanted;
  for (const auto& item : as<Array>(matchings, call).items())
    wanted.emplace_back(&as<Dictionary>(item.get(), call));
  manager(reference, call).setMatching(std::move(wanted));
}

void IOHIDManagerRegisterInputValueCallback(IOHIDManagerRef reference, IOHIDValueCallback callback,
                                            void* context) {
  manager(reference, "IOHIDManagerRegisterInputValueCallback").setCallback(callback, context);
}

void IOHIDManagerScheduleWithRunLoop(IOHIDManagerRef reference, CFRunLoopRef loop,
                                     CFStringRef mode) {
  constexpr const char* call = "IOHIDManagerScheduleWithRunLoop";
  requireMainLoop(loop, call);
  manager(reference, call).schedule(mode);
}

void IOHIDManagerUnscheduleFromRunLoop(IOHIDManagerRef reference, CFRunLoopRef loop,
                                       CFStringRef mode) {
  constexpr const char* call = "IOHIDManagerUnscheduleFromRunLoop";
  HIDManager& target = manager(reference, call);
  requireMainLoop(loop, call);
  target.unschedule(mode);
}

IOReturn IOHIDManagerOpen(IOHIDManagerRef reference, IOOptionBits) {
  return manager(reference, "IOHIDManagerOpen").open();
}

IOReturn IOHIDManagerClose(IOHIDManagerRef reference, IOOptionBits) {
  return manager(reference, "IOHIDManagerClose").close();
}

CFSetRef IOHIDManagerCopyDevices(IOHIDManagerRef reference) {
  Set* devices = manager(reference, "IOHIDManagerCopyDevices").devices();
  return devices ? handedOut<CFSetRef>(devices) : nullptr;
}

} // extern "C"
