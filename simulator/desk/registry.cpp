#include "simulator/desk/registry.h"

#include <algorithm>
#include <utility>

namespace trellivar::desk {

bool Entry::isA(std::string_view className) const {
  return std::ranges::find(classes, className) != classes.end();
}

EntryId Registry::add(EntryId parent, Entry entry) {
  entry.id = nextId_++;
  entry.parent = parent;
  entry.children.clear();
  if (parent != 0) entries_.at(parent).children.push_back(entry.id);
  const EntryId id = entry.id;
  const auto added = entries_.emplace(id, std::move(entry)).first;
  ++generation_;
  announce(Change::appeared, Entry(added->second));
  return id;
}

void Registry::remove(EntryId id) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  for (const EntryId child : std::vector(found->second.children))
    remove(child);
  const Entry gone = std::move(found->second);
  entries_.erase(found);
  if (const auto parent = entries_.find(gone.parent); parent != entries_.end())
    std::erase(parent->second.children, id);
  ++generation_;
  announce(Change::disappeared, gone);
}

const Entry* Registry::find(EntryId id) const {
  const auto found = entries_.find(id);
  return found == entries_.end() ? nullptr : &found->second;
}

std::vector<EntryId> Registry::all() const {
  std::vector<EntryId> result;
  for (const auto& [id, entry] : entries_)
    result.push_back(id);
  return result;
}

std::vector<EntryId> Registry::ofClass(std::string_view className) const {
  std::vector<EntryId> result;
  for (const auto& [id, entry] : entries_) {
    if (entry.isA(className)) result.push_back(id);
  }
  return result;
}

std::vector<EntryId> Registry::descendants(EntryId id) const {
  std::vector<EntryId> result;
  const Entry* entry = find(id);
  if (!entry) return result;
  for (const EntryId child : entry->children) {
    result.push_back(child);
    for (const EntryId below : descendants(child))
      result.push_back(below);
  }
  return result;
}

const Property* Registry::property(EntryId id, std::string_view key) const {
  const Entry* entry = find(id);
  if (!entry) return nullptr;
  const auto found = entry->properties.find(std::string(key));
  return found == entry->properties.end() ? nullptr : &found->second;
}

std::shared_ptr<void> Registry::observe(Observer observer) {
  auto shared = std::make_shared<Observer>(std::move(observer));
  observers_.push_back(shared);
  return shared;
}

void Registry::announce(Change change, const Entry& entry) {
  std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
  for (const auto& weak : std::vector(observers_)) {
    if (const auto observer = weak.lock()) (*observer)(change, entry);
  }
}

} // namespace trellivar::desk
