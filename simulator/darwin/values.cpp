#include "simulator/darwin/values.h"

#include <algorithm>
#include <unordered_map>

namespace trellivar::darwin_double {

namespace {

std::string count(std::size_t size) { return std::to_string(size) + " items"; }

double asDouble(const Number::Value& value) {
  return std::visit([](auto number) { return static_cast<double>(number); }, value);
}

} // namespace

bool areEqual(const Object& a, const Object& b) { return a.kind() == b.kind() && a.equals(b); }

bool String::equals(const Object& other) const {
  return text_ == static_cast<const String&>(other).text_;
}

std::string Number::description() const {
  return std::visit([](auto number) { return std::to_string(number); }, value_);
}

bool Number::equals(const Object& other) const {
  const Value& theirs = static_cast<const Number&>(other).value_;
  return value_.index() == theirs.index() ? value_ == theirs : asDouble(value_) == asDouble(theirs);
}

std::string Array::description() const { return count(items_.size()); }

bool Array::equals(const Object& other) const {
  return std::ranges::equal(items_, static_cast<const Array&>(other).items_,
                            [](const auto& a, const auto& b) { return areEqual(*a, *b); });
}

std::string Set::description() const { return count(items_.size()); }

Object* Dictionary::find(const Object& key) const {
  const auto found = std::ranges::find_if(
      entries_, [&](const Entry& entry) { return areEqual(*entry.first, key); });
  return found == entries_.end() ? nullptr : found->second.get();
}

Object* Dictionary::find(std::string_view key) const { return find(constantString(key)); }

void Dictionary::set(Object& key, Object& value) {
  for (auto& [known, old] : entries_) {
    if (!areEqual(*known, key)) continue;
    old = Held(&value);
    return;
  }
  entries_.emplace_back(Held(&key), Held(&value));
}

std::string Dictionary::description() const {
  std::string result = "{";
  for (const auto& [key, value] : entries_) {
    if (result.size() > 1) result += ", ";
    result += key->description() + ": " + value->description();
  }
  return result + "}";
}

bool Dictionary::equals(const Object& other) const {
  const auto& theirs = static_cast<const Dictionary&>(other);
  return entries_.size() == theirs.entries_.size() &&
         std::ranges::all_of(entries_, [&](const Entry& entry) {
           const Object* value = theirs.find(*entry.first);
           return value && areEqual(*entry.second, *value);
         });
}

String& constantString(std::string_view text) {
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const {
      return std::hash<std::string_view>{}(key);
    }
  };
  static auto& known = *new std::unordered_map<std::string, String*, Hash, std::equal_to<>>;
  const auto found = known.find(text);
  if (found != known.end()) return *found->second;
  auto* string = new String(std::string(text), Object::Lifetime::forever);
  known.emplace(text, string);
  return *string;
}

Truth& constantBoolean(bool value) {
  static Truth& yes = *new Truth(true);
  static Truth& no = *new Truth(false);
  return value ? yes : no;
}

} // namespace trellivar::darwin_double
