#include "simulator/darwin/object.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

namespace trellivar::darwin_double {

/// What is left in the place of an object that was released, so that its use is noticed.
class Remains final : public Object {
public:
  explicit Remains(const std::pair<Kind, std::uint64_t>& former) noexcept : Object(former) {}
};
static_assert(sizeof(Remains) == sizeof(Object));

/// All objects: the living, in a ring, and the remains of the last ones released.
class Objects {
public:
  static void enter(Object& object) noexcept {
    Object& head = ring();
    object.previous_ = head.previous_;
    object.next_ = &head;
    head.previous_->next_ = &object;
    head.previous_ = &object;
  }
  static void leave(Object& object) noexcept {
    object.previous_->next_ = object.next_;
    object.next_->previous_ = object.previous_;
  }
  static void bury(void* remains) {
    static auto& graves = *new std::array<void*, 4096>{};
    static std::size_t next = 0;
    ::operator delete(std::exchange(graves[next], remains));
    next = (next + 1) % graves.size();
  }
  template <class Function> static void each(const Function& function) {
    for (const Object* object = ring().next_; object != &ring(); object = object->next_)
      function(*object);
  }
  static std::uint64_t count;

private:
  static Object& ring() {
    static Object& head = *new Remains({Kind::released, 0});
    return head;
  }
};

std::uint64_t Objects::count = 0;

void fail(const char* call, const std::string& what) {
  std::fprintf(stderr, "%s: %s\n", call, what.c_str());
  std::abort();
}

const char* nameOf(Kind kind) {
  static constexpr std::array names{
      "CFString",       "CFBoolean",    "CFNumber",   "CFArray",
      "CFDictionary",   "CFSet",        "CFRunLoop",  "CFRunLoopSource",
      "CFRunLoopTimer", "CFMachPort",   "CGEvent",    "IOHIDManager",
      "IOHIDDevice",    "IOHIDElement", "IOHIDValue", "released"};
  static_assert(names.size() == static_cast<std::size_t>(Kind::released) -
                                    static_cast<std::size_t>(Kind::string) + 1);
  return names.at(static_cast<std::size_t>(kind) - static_cast<std::size_t>(Kind::string));
}

Object::Object(Kind kind, Lifetime lifetime)
    : kind_(kind), formerKind_(kind), lifetime_(lifetime), number_(++Objects::count) {
  Objects::enter(*this);
}

Object::Object(const std::pair<Kind, std::uint64_t>& former) noexcept
    : kind_(Kind::released), formerKind_(former.first), number_(former.second) {}

Object::~Object() {
  if (kind_ != Kind::released) Objects::leave(*this);
}

std::string Object::title() const {
  return std::string(nameOf(formerKind_)) + " #" + std::to_string(number_);
}

void Object::release(const char* call) {
  if (lifetime_ == Lifetime::forever) return;
  if (owned_ == 0) fail(call, title() + " is released once too often: the program does not own it");
  if (--owned_ > 0) return;
  abandoned(call);
  if (held_ == 0) destroy();
}

void Object::destroy() noexcept {
  if (lifetime_ == Lifetime::forever) return;
  const std::pair former{kind_, number_};
  held_ = 1; // what is done in the end must not end it again
  std::destroy_at(this);
  Objects::bury(new (static_cast<void*>(this)) Remains(former));
}

std::uint64_t lastObjectNumber() { return Objects::count; }

std::vector<std::string> ownedObjects(std::uint64_t since) {
  std::vector<std::string> result;
  Objects::each([&](const Object& object) {
    if (object.number() <= since || object.owned() == 0) return;
    std::string line = object.title() + ": " + std::to_string(object.owned()) + " not released";
    if (const std::string description = object.description(); !description.empty())
      line += ", " + description;
    result.push_back(std::move(line));
  });
  return result;
}

void refuse(const void* reference, const char* wanted, const char* call) {
  if (reference == nullptr) fail(call, "NULL is no " + std::string(wanted));
  const Object& object = *static_cast<const Object*>(reference);
  if (object.kind() == Kind::released) fail(call, object.title() + " was released before");
  if (object.kind() < Kind::string || object.kind() > Kind::released)
    fail(call, "this is no " + std::string(wanted));
  fail(call, object.title() + " is no " + wanted);
}

} // namespace trellivar::darwin_double
