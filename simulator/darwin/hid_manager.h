#pragma once

#include "simulator/darwin/hid_device.h"
#include "simulator/darwin/machine.h"
#include "simulator/darwin/values.h"

#include <IOKit/hid/IOHIDManager.h>

#include <optional>
#include <vector>

namespace trellivar::darwin_double {

/// The devices that match any of its dictionaries, and their values once it is open and scheduled.
/// It learns of devices that come and go from the run loop, hence only while it is scheduled.
class HIDManager final : public Object {
public:
  static constexpr Kind ownKind = Kind::hidManager;
  HIDManager();
  ~HIDManager() override;
  std::string description() const override { return isOpen_ ? "open" : "not open"; }

  /// Looks for devices at once, and forgets those found before. An empty dictionary matches all.
  void setMatching(std::vector<Held<Dictionary>> wanted);
  void setCallback(IOHIDValueCallback callback, void* context);
  void schedule(CFStringRef mode);
  void unschedule(CFStringRef mode);
  IOReturn open();
  IOReturn close();
  /// nullptr: none has ever matched.
  Set* devices() const;

  /// The registry has changed.
  void devicesChanged();
  void hear(const desk::HIDValue& value);

protected:
  void abandoned(const char* call) override;

private:
  void update();
  void removeGone();
  void addNew();
  void addDevice(desk::EntryId id, std::size_t dictionary);
  void askForAccess() const;
  bool isScheduled() const noexcept { return modes_.any(); }
  void deliver(const Held<HIDDevice>& device, const Held<HIDValue>& value);

  struct Known {
    Held<HIDDevice> device;
    std::size_t dictionary; ///< by which it was found
  };

  std::vector<Held<Dictionary>> wanted_;
  std::vector<Known> known_;
  bool hasMatched_ = false;
  bool isOutdated_ = false;
  bool isOpen_ = false;
  Modes modes_;
  IOHIDValueCallback callback_ = nullptr;
  void* context_ = nullptr;
  int callDepth_ = 0;
};

} // namespace trellivar::darwin_double
