#include "core/key_name.h"

#include <mutex>
#include <shared_mutex>
#include <unordered_set>

namespace trellivar {

namespace {

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const noexcept {
    return std::hash<std::string_view>{}(text);
  }
};

/// The nodes of the set never move, so a pointer to an element is good for ever.
class NameTable {
public:
  const std::string* intern(std::string_view text) {
    {
      const std::shared_lock lock(mutex_);
      if (const auto known = texts_.find(text); known != texts_.end()) return &*known;
    }
    const std::unique_lock lock(mutex_);
    return &*texts_.emplace(text).first;
  }

private:
  std::shared_mutex mutex_;
  std::unordered_set<std::string, TextHash, std::equal_to<>> texts_;
};

/// Never destroyed: names may outlive every other static object.
NameTable& nameTable() {
  static auto& table = *new NameTable;
  return table;
}

} // namespace

KeyName::KeyName(std::string_view text) : text_(nameTable().intern(text)) {}

KeyName::KeyName() noexcept {
  static const std::string* const empty = nameTable().intern({});
  text_ = empty;
}

} // namespace trellivar
