#include "core/json/json_reader.h"

#include "core/json/json_path.h"

#include <utility>

namespace trellivar {

namespace {

std::string describe(const Json& value) {
  switch (value.type()) {
  case Json::value_t::null:
    return "null";
  case Json::value_t::boolean:
    return value.get<bool>() ? "true" : "false";
  case Json::value_t::string:
    return "a text";
  case Json::value_t::array:
    return "a list";
  case Json::value_t::object:
    return "an object";
  default:
    return "the number " + value.dump();
  }
}

template <class Integer> std::optional<Integer> inRange(const Json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<Json::number_unsigned_t>();
    if (std::in_range<Integer>(number)) return static_cast<Integer>(number);
  } else if (value.is_number_integer()) {
    const auto number = value.get<Json::number_integer_t>();
    if (std::in_range<Integer>(number)) return static_cast<Integer>(number);
  }
  return std::nullopt;
}

} // namespace

const std::string& JsonReader::text() const {
  if (!value_->is_string()) failExpecting("a text");
  return value_->get_ref<const std::string&>();
}

bool JsonReader::boolean() const {
  if (!value_->is_boolean()) failExpecting("true or false");
  return value_->get<bool>();
}

int JsonReader::integer() const {
  const auto number = inRange<int>(*value_);
  if (!number) failExpecting("an integer from -2147483648 to 2147483647");
  return *number;
}

std::int64_t JsonReader::integer64() const {
  const auto number = inRange<std::int64_t>(*value_);
  if (!number) failExpecting("a 64-bit integer");
  return *number;
}

double JsonReader::number() const {
  if (!value_->is_number()) failExpecting("a number");
  return value_->get<double>();
}

const JsonReader& JsonReader::object() const {
  if (!value_->is_object()) failExpecting("an object");
  return *this;
}

JsonReader JsonReader::member(std::string_view key) const {
  object();
  const auto found = value_->find(key);
  if (found == value_->end()) JsonReader(Json(), *this, key).fail("missing");
  return {*found, *this, key};
}

std::optional<JsonReader> JsonReader::optionalMember(std::string_view key) const {
  object();
  const auto found = value_->find(key);
  if (found == value_->end() || found->is_null()) return std::nullopt;
  return JsonReader(*found, *this, key);
}

bool JsonReader::has(std::string_view key) const { return object().value_->contains(key); }

std::string JsonReader::path() const {
  if (!parent_) return {};
  std::string path = parent_->path();
  if (index_)
    appendIndex(path, *index_);
  else
    appendKey(path, key_);
  return path;
}

void JsonReader::fail(const std::string& reason) const {
  throw DecodingError::atPath(path(), reason);
}

void JsonReader::failExpecting(std::string_view expected) const {
  fail("expected " + std::string(expected) + ", found " + describe(*value_));
}

const Json& JsonReader::array() const {
  if (!value_->is_array()) failExpecting("a list");
  return *value_;
}

JsonReader JsonReader::at(const Json& items, std::size_t index) const {
  JsonReader item(items[index], *this, {});
  item.index_ = index;
  return item;
}

} // namespace trellivar
