#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace trellivar {

/// A hash map for look-ups on the event path: one array, linear probing, never more than half full,
/// so that a look-up touches one or two neighbouring slots. It grows but has no erase; rebuild it
/// instead.
///
/// A map that was moved from may only be assigned to or destroyed. `Hash` gives 64 bits whose high
/// bits are well spread. `Key` and `Value` are default-constructible.
template <class Key, class Value, class Hash> class FlatMap {
public:
  FlatMap() : slots_(2) {}

  Value* find(const Key& key) noexcept {
    Slot& slot = slots_[indexOf(key)];
    return slot.used ? &slot.value : nullptr;
  }
  const Value* find(const Key& key) const noexcept {
    const Slot& slot = slots_[indexOf(key)];
    return slot.used ? &slot.value : nullptr;
  }

  /// The value of `key`, a fresh one if it was absent. Ends pointers to other values.
  Value& operator[](const Key& key) {
    Slot* slot = &slots_[indexOf(key)];
    if (slot->used) return slot->value;
    if ((count_ + 1) * 2 > slots_.size()) {
      grow();
      slot = &slots_[indexOf(key)];
    }
    ++count_;
    slot->key = key;
    slot->used = true;
    return slot->value;
  }

private:
  struct Slot {
    Key key{};
    Value value{};
    bool used = false;
  };

  /// The slot that holds `key`, or the free one where it would go.
  std::size_t indexOf(const Key& key) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    auto index = static_cast<std::size_t>(Hash{}(key) >> shift_);
    while (slots_[index].used && !(slots_[index].key == key))
      index = (index + 1) & mask;
    return index;
  }

  void grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    --shift_;
    for (Slot& slot : old) {
      if (slot.used) slots_[indexOf(slot.key)] = std::move(slot);
    }
  }

  std::vector<Slot> slots_; ///< a power of two of them
  int shift_ = 63;          ///< 64 - log2(slots_.size())
  std::size_t count_ = 0;
};

} // namespace trellivar
