#pragma once

#include "core/json/decoding_error.h"
#include "core/json/parse_json.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

class JsonReader;

/// How a type is read; specialised once for each persisted type. Throws DecodingError.
template <class T> T decode(const JsonReader& reader);

/// A value within a document, together with its place there, which is spelled out only for an
/// error. Reading is strict: an integer is an integer (not 1.0, not true) within the range of its
/// type. Keys that nobody asks for are ignored. A reader must not outlive the one that it came
/// from.
class JsonReader {
public:
  /// The root of a document, which must outlive the reader.
  explicit JsonReader(const Json& document) : value_(&document) {}

  const std::string& text() const;
  bool boolean() const;
  int integer() const;
  std::int64_t integer64() const;
  /// A finite number, written as an integer or not.
  double number() const;

  /// Fails unless the value is an object.
  const JsonReader& object() const;

  /// The member of an object; its absence is an error.
  JsonReader member(std::string_view key) const;
  /// None when the member is absent or null.
  std::optional<JsonReader> optionalMember(std::string_view key) const;
  bool has(std::string_view key) const;

  template <class T> T as() const { return decode<T>(*this); }

  template <class T> std::vector<T> list() const {
    const Json& items = array();
    std::vector<T> result;
    result.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
      result.push_back(at(items, i).as<T>());
    return result;
  }

  /// Calls `visit(key, reader)` for each member of an object, in the order of the keys.
  template <class Visit> void forEachMember(const Visit& visit) const {
    object();
    for (const auto& entry : value_->items())
      visit(entry.key(), JsonReader(entry.value(), *this, entry.key()));
  }

  const Json& json() const noexcept { return *value_; }
  std::string path() const;
  [[noreturn]] void fail(const std::string& reason) const;

private:
  JsonReader(const Json& value, const JsonReader& parent, std::string_view key)
      : value_(&value), parent_(&parent), key_(key) {}

  const Json& array() const;
  JsonReader at(const Json& items, std::size_t index) const;
  [[noreturn]] void failExpecting(std::string_view expected) const;

  const Json* value_;
  const JsonReader* parent_ = nullptr;
  std::string_view key_;
  std::optional<std::size_t> index_; ///< instead of the key, for an element of a list
};

} // namespace trellivar
