#include "simulator/darwin/hid_device.h"

#include "simulator/darwin/io_object.h"
#include "simulator/darwin/machine.h"
#include "simulator/darwin/matching.h"

#include <algorithm>
#include <array>

namespace trellivar::darwin_double {

namespace {

constexpr std::array protectedCollections{
    desk::Usage{kHIDPage_GenericDesktop, kHIDUsage_GD_Keyboard},
    desk::Usage{kHIDPage_GenericDesktop, kHIDUsage_GD_Keypad},
    desk::Usage{kHIDPage_GenericDesktop, kHIDUsage_GD_Mouse},
    desk::Usage{kHIDPage_Digitizer, 0x05}, // touchpad
};

desk::Desk& deskOf(const char* call) { return machine(call).desk; }

} // namespace

std::string HIDElement::description() const {
  return "page " + std::to_string(usage.page) + " usage " + std::to_string(usage.usage);
}

HIDDevice::HIDDevice(desk::EntryId entry)
    : Object(ownKind), entry_(entry), service_(enter(std::make_unique<IOEntry>(entry), false)) {}

HIDDevice::~HIDDevice() {
  for (auto& [usage, element] : elements_)
    element->device = nullptr;
  dropIOObject(service_);
}

std::string HIDDevice::description() const { return "entry " + std::to_string(entry_); }

Object* HIDDevice::property(const std::string& key) {
  const auto known = properties_.find(key);
  if (known != properties_.end()) return known->second.get();
  const desk::Registry& registry = deskOf("IOHIDDeviceGetProperty").registry();
  const desk::Entry* entry = ioEntry(service_, "IOHIDDeviceGetProperty").state();
  for (; entry; entry = registry.find(entry->parent)) {
    if (Object* value = makeProperty(*entry, key))
      return properties_.emplace(key, Held(value)).first->second.get();
  }
  return nullptr;
}

HIDElement& HIDDevice::element(desk::Usage usage) {
  Held<HIDElement>& element = elements_[{usage.page, usage.usage}];
  if (!element) element = Held(new HIDElement(this, usage));
  return *element;
}

bool HIDDevice::isProtected() const {
  const desk::Entry* entry = deskOf("IOHIDManagerOpen").registry().find(entry_);
  return entry && std::ranges::any_of(entry->usagePairs, [](const desk::Usage& usage) {
           return std::ranges::find(protectedCollections, usage) != protectedCollections.end();
         });
}

IOReturn HIDDevice::open() {
  const desk::Desk& desk = deskOf("IOHIDManagerOpen");
  if (refusal_ == kIOReturnSuccess && isProtected() &&
      desk.inputMonitoring() != desk::Access::granted)
    refusal_ = kIOReturnNotPermitted;
  if (refusal_ != kIOReturnSuccess) return refusal_;
  isOpen_ = true;
  isDeaf_ = deskOf("IOHIDManagerOpen").faults().deafOpens;
  return kIOReturnSuccess;
}

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

CFTypeID IOHIDDeviceGetTypeID() { return static_cast<CFTypeID>(Kind::hidDevice); }

CFTypeRef IOHIDDeviceGetProperty(IOHIDDeviceRef device, CFStringRef key) {
  constexpr const char* call = "IOHIDDeviceGetProperty";
  return as<HIDDevice>(device, call).property(as<String>(key, call).text());
}

io_service_t IOHIDDeviceGetService(IOHIDDeviceRef device) {
  return as<HIDDevice>(device, "IOHIDDeviceGetService").service();
}

std::uint32_t IOHIDElementGetUsagePage(IOHIDElementRef element) {
  return static_cast<std::uint32_t>(as<HIDElement>(element, "IOHIDElementGetUsagePage").usage.page);
}

std::uint32_t IOHIDElementGetUsage(IOHIDElementRef element) {
  return static_cast<std::uint32_t>(as<HIDElement>(element, "IOHIDElementGetUsage").usage.usage);
}

IOHIDDeviceRef IOHIDElementGetDevice(IOHIDElementRef element) {
  return reference<IOHIDDeviceRef>(as<HIDElement>(element, "IOHIDElementGetDevice").device);
}

IOHIDElementRef IOHIDValueGetElement(IOHIDValueRef value) {
  return reference<IOHIDElementRef>(as<HIDValue>(value, "IOHIDValueGetElement").element.get());
}

CFIndex IOHIDValueGetIntegerValue(IOHIDValueRef value) {
  return as<HIDValue>(value, "IOHIDValueGetIntegerValue").value;
}

std::uint64_t IOHIDValueGetTimeStamp(IOHIDValueRef value) {
  return as<HIDValue>(value, "IOHIDValueGetTimeStamp").timeStamp;
}

} // extern "C"
