#pragma once

#include "core/device_identity.h"
#include "core/inline_vector.h"
#include "core/key_name.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace trellivar {

/// Which keys people hold down on pads, and as which keys the applications know them: what has to
/// be released should the release of the pad's key never come.
class PadKeys {
public:
  struct Key {
    std::int64_t sender = 0;
    DeviceIdentity device; ///< of the sender
    KeyName name;
    std::optional<KeyName> deliveredAs; ///< none: applications have not seen it
    bool isPosted = false;              ///< applications got its press from the engine
    bool isUncertain = false;           ///< its release may have gone by unseen
  };
  using Keys = InlineVector<Key, 8>;

  const Keys& all() const noexcept { return keys_; }

  Key* find(std::int64_t sender, KeyName name) noexcept {
    Key* const found = std::ranges::find_if(
        keys_, [&](const Key& key) { return key.sender == sender && key.name == name; });
    return found == keys_.end() ? nullptr : found;
  }

  /// Nothing changes if the key is down already.
  Key& press(std::int64_t sender, DeviceIdentity device, KeyName name) {
    if (Key* key = find(sender, name)) return *key;
    keys_.push_back({.sender = sender, .device = device, .name = name, .deliveredAs = {}});
    return keys_.back();
  }

  /// Nothing changes if the key is not down.
  void release(std::int64_t sender, KeyName name) noexcept {
    if (Key* key = find(sender, name)) keys_.eraseUnordered(key);
  }

private:
  Keys keys_;
};

} // namespace trellivar
