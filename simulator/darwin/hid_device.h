#pragma once

#include "simulator/darwin/object.h"
#include "simulator/desk/hid_bus.h"

#include <IOKit/hid/IOHIDLib.h>

#include <map>
#include <string>
#include <utility>

namespace trellivar::darwin_double {

class HIDDevice;

class HIDElement final : public Object {
public:
  static constexpr Kind ownKind = Kind::hidElement;
  HIDElement(HIDDevice* owner, desk::Usage what) : Object(ownKind), device(owner), usage(what) {}
  std::string description() const override;

  HIDDevice* device; ///< nullptr: gone
  desk::Usage usage;
};

class HIDValue final : public Object {
public:
  static constexpr Kind ownKind = Kind::hidValue;
  HIDValue(Held<HIDElement> of, std::int64_t number, std::uint64_t time)
      : Object(ownKind), element(std::move(of)), value(number), timeStamp(time) {}
  std::string description() const override { return std::to_string(value); }

  Held<HIDElement> element;
  std::int64_t value;
  std::uint64_t timeStamp;
};

/// One of the objects by which a program speaks to an entry of class "IOHIDDevice".
class HIDDevice final : public Object {
public:
  static constexpr Kind ownKind = Kind::hidDevice;
  explicit HIDDevice(desk::EntryId entry);
  ~HIDDevice() override;

  desk::EntryId entry() const noexcept { return entry_; }
  io_service_t service() const noexcept { return service_; }
  std::string description() const override;

  /// Of the device or what it hangs on; kept, so that the program need not own it.
  Object* property(const std::string& key);
  HIDElement& element(desk::Usage usage);

  /// A keyboard, mouse or touchpad: opening it takes the permission to watch input.
  bool isProtected() const;
  void refuse(IOReturn error) noexcept { refusal_ = error; }
  /// What it answered when it was refused before stays its answer.
  IOReturn open();
  void close() noexcept { isOpen_ = false; }
  bool delivers() const noexcept { return isOpen_ && !isDeaf_; }

private:
  desk::EntryId entry_;
  io_service_t service_;
  IOReturn refusal_ = kIOReturnSuccess;
  bool isOpen_ = false;
  bool isDeaf_ = false;
  std::map<std::string, Held<Object>> properties_;
  std::map<std::pair<int, int>, Held<HIDElement>> elements_;
};

} // namespace trellivar::darwin_double
