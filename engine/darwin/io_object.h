#pragma once

#include <IOKit/IOKitLib.h>

#include <utility>

namespace trellivar::darwin {

/// Owns one reference to an object of the I/O registry, or none.
class IoObject {
public:
  IoObject() noexcept = default;
  /// Takes over a reference; 0 is none.
  static IoObject adopt(io_object_t object) noexcept { return IoObject(object); }

  IoObject(IoObject&& other) noexcept : object_(std::exchange(other.object_, 0)) {}
  IoObject& operator=(IoObject&& other) noexcept {
    IoObject taken(std::move(other));
    std::swap(object_, taken.object_);
    return *this;
  }
  IoObject(const IoObject&) = delete;
  IoObject& operator=(const IoObject&) = delete;
  ~IoObject() {
    if (object_ != 0) IOObjectRelease(object_);
  }

  /// Still owned by this.
  io_object_t get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != 0; }
  /// For functions that hand out a reference through a pointer. Requires: none is owned.
  io_object_t* out() noexcept { return &object_; }

private:
  explicit IoObject(io_object_t object) noexcept : object_(object) {}

  io_object_t object_ = 0;
};

/// The next object of an iterator; none at its end, and when the registry has changed below it.
inline IoObject next(const IoObject& iterator) noexcept {
  return IoObject::adopt(IOIteratorNext(iterator.get()));
}

} // namespace trellivar::darwin
