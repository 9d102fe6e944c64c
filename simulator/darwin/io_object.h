#pragma once

#include "simulator/desk/registry.h"

#include <IOKit/IOKitLib.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// I/O Kit objects by their names. Each reference that is handed out has a name of its own, which
/// is never used again, so that releasing one twice is noticed even while others remain.
namespace trellivar::darwin_double {

class IOObject {
public:
  IOObject(const IOObject&) = delete;
  IOObject& operator=(const IOObject&) = delete;
  virtual ~IOObject() = default;
  virtual std::string title() const = 0;
  /// Aborts if this is not the time to release the last reference.
  virtual void requireReleasable() const {}

  io_object_t name = 0;
  long owned = 0; ///< references of the program
  long held = 0;  ///< references of the platform

protected:
  IOObject() = default;
};

/// An entry of the registry.
class IOEntry final : public IOObject {
public:
  explicit IOEntry(desk::EntryId id) : id_(id) {}

  desk::EntryId id() const noexcept { return id_; }
  /// As it is, or as it was when it left the registry; nullptr if that is not known.
  const desk::Entry* state() const;
  void remember(const desk::Entry& last) { last_ = last; }
  std::string title() const override;

private:
  desk::EntryId id_;
  std::optional<desk::Entry> last_;
};

/// Enters the object under a new name. `owned` tells whose the first reference is.
io_object_t enter(std::unique_ptr<IOObject> object, bool owned);
/// A new object for the entry, of which the program owns a reference.
io_object_t handOutEntry(desk::EntryId id);
/// Ends the platform's reference.
void dropIOObject(io_object_t name);

/// Aborts unless the program may use the name.
IOObject& ioObject(io_object_t name, const char* call);
/// Aborts unless it is that of a registry entry.
IOEntry& ioEntry(io_object_t name, const char* call);
/// nullptr: no longer there.
IOObject* findIOObject(io_object_t name);

/// Those named after `since`.
std::vector<io_object_t> ioObjectNames(io_object_t since);
/// The last name given.
io_object_t lastIOName();
/// A line for each object that the program still owns, of those named after `since`.
std::vector<std::string> ownedIOObjects(io_object_t since);
/// For the objects of an entry that disappears.
void rememberLastState(desk::Registry::Change change, const desk::Entry& entry);

} // namespace trellivar::darwin_double
