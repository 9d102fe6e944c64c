#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace trellivar::desk {

/// Identifies an entry for as long as the desk exists; ids of removed entries are not used again.
/// 0 is no entry.
using EntryId = std::uint64_t;

/// A usage of the USB HID usage tables.
struct Usage {
  int page = 0;
  int usage = 0;
  friend bool operator==(const Usage&, const Usage&) = default;
};

using Property = std::variant<std::int64_t, std::string, bool>;

/// One object of the tree of hardware and drivers.
struct Entry {
  /// Class names, the most derived first: {"AppleUserHIDDevice", "IOHIDDevice"} is an IOHIDDevice.
  std::vector<std::string> classes;
  std::map<std::string, Property> properties;
  std::vector<Usage> usagePairs; ///< of an HID device: all its collections, the primary one first

  EntryId id = 0;     ///< given by the registry
  EntryId parent = 0; ///< given by the registry; 0: a root
  std::vector<EntryId> children;

  bool isA(std::string_view className) const;
};

/// The tree of hardware and drivers, and who wants to know when it changes.
class Registry {
public:
  enum class Change : std::uint8_t { appeared, disappeared };
  /// When an entry disappears it has left the registry already; its last state comes along.
  using Observer = std::function<void(Change, const Entry&)>;

  /// `parent` 0 makes a root. `entry` needs no id, parent or children. Tells the observers.
  EntryId add(EntryId parent, Entry entry);
  /// Takes the entry and all below it away, the leaves first. Tells the observers. An unknown id is
  /// ignored.
  void remove(EntryId id);

  /// None for an entry that is gone. Valid until the registry changes.
  const Entry* find(EntryId id) const;
  /// All entries, in the order in which they appeared.
  std::vector<EntryId> all() const;
  /// In the order in which they appeared.
  std::vector<EntryId> ofClass(std::string_view className) const;
  /// All below the entry, without itself.
  std::vector<EntryId> descendants(EntryId id) const;
  /// The property of the entry itself; none when missing.
  const Property* property(EntryId id, std::string_view key) const;
  /// How often the tree has changed: iterations over an older tree are no longer valid.
  std::uint64_t generation() const noexcept { return generation_; }

  /// Until the returned handle is destroyed.
  [[nodiscard]] std::shared_ptr<void> observe(Observer observer);

private:
  void announce(Change change, const Entry& entry);

  EntryId nextId_ = 0x1'0000'0200;
  std::uint64_t generation_ = 0;
  std::map<EntryId, Entry> entries_;
  std::vector<std::weak_ptr<Observer>> observers_;
};

} // namespace trellivar::desk
