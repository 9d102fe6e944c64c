#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <type_traits>
#include <utility>

namespace trellivar::darwin {

/// Owns one reference to a Core Foundation object, or none. `T` is the reference type, such as
/// CFStringRef or IOHIDManagerRef.
template <class T> class CFRef {
public:
  CFRef() noexcept = default;
  /// Takes over the reference that a function with Create or Copy in its name returned; NULL is
  /// none.
  static CFRef adopt(T object) noexcept { return CFRef(object); }
  /// Adds a reference to a borrowed object.
  static CFRef retain(T object) noexcept {
    if (object) CFRetain(object);
    return CFRef(object);
  }

  CFRef(CFRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  CFRef& operator=(CFRef&& other) noexcept {
    CFRef taken(std::move(other));
    std::swap(object_, taken.object_);
    return *this;
  }
  CFRef(const CFRef&) = delete;
  CFRef& operator=(const CFRef&) = delete;
  ~CFRef() {
    if (object_) CFRelease(object_);
  }

  /// Still owned by this.
  T get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  void reset() noexcept { *this = CFRef(); }

private:
  explicit CFRef(T object) noexcept : object_(object) {}

  T object_ = nullptr;
};

} // namespace trellivar::darwin
