#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Reference counting that forgives nothing. One thread.
///
/// Each object counts two sorts of references: those that the program owns, because a Create or
/// Copy function gave them to it or because it retained the object, and those by which the platform
/// and other objects hold it. So it is known at once when the program releases what it does not
/// own, even while somebody else keeps the object alive.
namespace trellivar::darwin_double {

/// Says on standard error what a call did wrong, and aborts.
[[noreturn]] void fail(const char* call, const std::string& what);

/// The types of objects; the numbers are those that CFGetTypeID gives. They start high, so that
/// what is no object at all is hardly taken for one.
enum class Kind : std::uint32_t {
  string = 0x43460001,
  boolean,
  number,
  array,
  dictionary,
  set,
  runLoop,
  runLoopSource,
  runLoopTimer,
  machPort,
  event,
  hidManager,
  hidDevice,
  hidElement,
  hidValue,
  released, ///< what remains of an object of any kind
};
const char* nameOf(Kind kind);

class Object {
public:
  enum class Lifetime : std::uint8_t { counted, forever };

  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object();

  Kind kind() const noexcept { return kind_; }
  std::uint64_t number() const noexcept { return number_; }
  long owned() const noexcept { return owned_; }
  /// "CFNumber #12"
  std::string title() const;
  /// The value in a few words; may be empty.
  virtual std::string description() const { return {}; }
  /// Requires: `other` is of the same kind.
  virtual bool equals(const Object& other) const { return this == &other; }

  /// References of the program.
  void retain() noexcept { owned_ += lifetime_ == Lifetime::counted; }
  void release(const char* call);
  /// References of the platform and of other objects.
  void hold() noexcept { ++held_; }
  void drop() noexcept {
    if (--held_ == 0 && owned_ == 0) destroy();
  }

protected:
  explicit Object(Kind kind, Lifetime lifetime = Lifetime::counted);
  /// The program has given up its last reference.
  virtual void abandoned(const char* /*call*/) {}

private:
  friend class Remains;
  friend class Objects;
  explicit Object(const std::pair<Kind, std::uint64_t>& former) noexcept;

  void destroy() noexcept;

  Kind kind_;
  Kind formerKind_;
  Lifetime lifetime_ = Lifetime::counted;
  long owned_ = 0;
  long held_ = 0;
  std::uint64_t number_;
  Object* previous_ = this; ///< in the ring of all living objects
  Object* next_ = this;
};

/// A line for each object that the program still owns, of those made after the object with number
/// `since`.
std::vector<std::string> ownedObjects(std::uint64_t since);
std::uint64_t lastObjectNumber();

/// Names what is wrong with a reference that is not to an object of the wanted kind.
[[noreturn]] void refuse(const void* reference, const char* wanted, const char* call);

/// The object behind a reference, which must be alive.
inline Object& alive(const void* reference, const char* call) {
  const auto* object = static_cast<const Object*>(reference);
  if (object == nullptr || object->kind() < Kind::string || object->kind() >= Kind::released)
      [[unlikely]]
    refuse(reference, "object", call);
  return *const_cast<Object*>(object); // NOLINT(*-const-cast): that is what references look like
}

/// The same, which must be a `T`.
template <class T> T& as(const void* reference, const char* call) {
  const auto* object = static_cast<const Object*>(reference);
  if (object == nullptr || object->kind() != T::ownKind) [[unlikely]]
    refuse(reference, nameOf(T::ownKind), call);
  return *const_cast<T*>(static_cast<const T*>(object)); // NOLINT(*-const-cast)
}

/// How the object looks to the program.
template <class Reference> Reference reference(const Object* object) {
  // NOLINTNEXTLINE(*-const-cast): mutable and immutable references are one object
  return reinterpret_cast<Reference>(const_cast<Object*>(object));
}

/// The same, with a reference that the program owns from now on.
template <class Reference> Reference handedOut(Object* object) {
  object->retain();
  return reference<Reference>(object);
}

/// A reference that is the platform's, or another object's.
template <class T> class Held {
public:
  Held() noexcept = default;
  explicit Held(T* object) noexcept : object_(object) {
    if (object_) object_->hold();
  }
  Held(const Held& other) noexcept : Held(other.object_) {}
  Held(Held&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Held& operator=(Held other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Held() {
    if (object_) object_->drop();
  }

  T* get() const noexcept { return object_; }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

private:
  T* object_ = nullptr;
};

} // namespace trellivar::darwin_double
