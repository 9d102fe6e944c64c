#pragma once

#include "simulator/darwin/object.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// Strings, numbers, booleans and collections.
namespace trellivar::darwin_double {

class String final : public Object {
public:
  static constexpr Kind ownKind = Kind::string;
  explicit String(std::string text, Lifetime lifetime = Lifetime::counted)
      : Object(ownKind, lifetime), text_(std::move(text)) {}

  const std::string& text() const noexcept { return text_; } ///< UTF-8
  std::string description() const override { return '"' + text_ + '"'; }
  bool equals(const Object& other) const override;

private:
  std::string text_;
};

class Truth final : public Object {
public:
  static constexpr Kind ownKind = Kind::boolean;
  explicit Truth(bool value) : Object(ownKind, Lifetime::forever), value_(value) {}
  bool value() const noexcept { return value_; }

private:
  bool value_;
};

class Number final : public Object {
public:
  static constexpr Kind ownKind = Kind::number;
  using Value = std::variant<std::int64_t, double>;
  explicit Number(Value value) : Object(ownKind), value_(value) {}

  const Value& value() const noexcept { return value_; }
  std::string description() const override;
  bool equals(const Object& other) const override;

private:
  Value value_;
};

class Array final : public Object {
public:
  static constexpr Kind ownKind = Kind::array;
  explicit Array(std::vector<Held<Object>> items) : Object(ownKind), items_(std::move(items)) {}

  const std::vector<Held<Object>>& items() const noexcept { return items_; }
  std::string description() const override;
  bool equals(const Object& other) const override;

private:
  std::vector<Held<Object>> items_;
};

class Set final : public Object {
public:
  static constexpr Kind ownKind = Kind::set;
  explicit Set(std::vector<Held<Object>> items) : Object(ownKind), items_(std::move(items)) {}

  const std::vector<Held<Object>>& items() const noexcept { return items_; }
  std::string description() const override;

private:
  std::vector<Held<Object>> items_;
};

class Dictionary final : public Object {
public:
  static constexpr Kind ownKind = Kind::dictionary;
  using Entry = std::pair<Held<Object>, Held<Object>>;
  explicit Dictionary(bool isMutable) : Object(ownKind), isMutable_(isMutable) {}

  bool isMutable() const noexcept { return isMutable_; }
  const std::vector<Entry>& entries() const noexcept { return entries_; }
  Object* find(const Object& key) const;
  Object* find(std::string_view key) const;
  void set(Object& key, Object& value);
  std::string description() const override;
  bool equals(const Object& other) const override;

private:
  bool isMutable_;
  std::vector<Entry> entries_;
};

/// Of a kind and equal.
bool areEqual(const Object& a, const Object& b);

/// The one string with this text that is never released.
String& constantString(std::string_view text);
Truth& constantBoolean(bool value);

} // namespace trellivar::darwin_double
