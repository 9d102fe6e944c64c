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

void HIDManager::hear(const desk::HIDValue& value) {
  if (!isOpen_ || !isScheduled()) return;
  Machine& here = machine("IOHIDManager");
  for (const Known& known : known_) {
    if (known.device->entry() != value.device || !known.device->delivers()) continue;
    const Held arrived(new HIDValue(Held(&known.device->element(value.usage)), value.value,
                                    ticksOf(here.desk.queue().now())));
    here.inModes(modes_, [self = Held(this), device = known.device, arrived] {
      self->deliver(device, arrived);
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

HIDManager& target(IOHIDManagerRef manager, const char* call) {
  return as<HIDManager>(manager, call);
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

void IOHIDManagerSetDeviceMatching(IOHIDManagerRef manager, CFDictionaryRef matching) {
  constexpr const char* call = "IOHIDManagerSetDeviceMatching";
  auto* wanted = matching ? &as<Dictionary>(matching, call) : new Dictionary(false);
  target(manager, call).setMatching({Held(wanted)});
}

void IOHIDManagerSetDeviceMatchingMultiple(IOHIDManagerRef manager, CFArrayRef matchings) {
  constexpr const char* call = "IOHIDManagerSetDeviceMatchingMultiple";
  if (matchings == nullptr) {
    IOHIDManagerSetDeviceMatching(manager, nullptr);
    return;
  }
  std::vector<Held<Dictionary>> wanted;
  for (const auto& item : as<Array>(matchings, call).items())
    wanted.emplace_back(&as<Dictionary>(item.get(), call));
  target(manager, call).setMatching(std::move(wanted));
}

void IOHIDManagerRegisterInputValueCallback(IOHIDManagerRef manager, IOHIDValueCallback callback,
                                            void* context) {
  target(manager, "IOHIDManagerRegisterInputValueCallback").setCallback(callback, context);
}

void IOHIDManagerScheduleWithRunLoop(IOHIDManagerRef manager, CFRunLoopRef loop, CFStringRef mode) {
  constexpr const char* call = "IOHIDManagerScheduleWithRunLoop";
  requireMainLoop(loop, call);
  target(manager, call).schedule(mode);
}

void IOHIDManagerUnscheduleFromRunLoop(IOHIDManagerRef manager, CFRunLoopRef loop,
                                       CFStringRef mode) {
  constexpr const char* call = "IOHIDManagerUnscheduleFromRunLoop";
  HIDManager& scheduled = target(manager, call);
  requireMainLoop(loop, call);
  scheduled.unschedule(mode);
}

IOReturn IOHIDManagerOpen(IOHIDManagerRef manager, IOOptionBits) {
  return target(manager, "IOHIDManagerOpen").open();
}

IOReturn IOHIDManagerClose(IOHIDManagerRef manager, IOOptionBits) {
  return target(manager, "IOHIDManagerClose").close();
}

CFSetRef IOHIDManagerCopyDevices(IOHIDManagerRef manager) {
  Set* devices = target(manager, "IOHIDManagerCopyDevices").devices();
  return devices ? handedOut<CFSetRef>(devices) : nullptr;
}

} // extern "C"
