#include "core/json/parse_json.h"

#include "core/json/decoding_error.h"
#include "core/json/json_path.h"
#include "core/utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {

namespace {

/// Lines before this offset are complete; a final newline does not begin a line of its own.
std::size_t lineAt(std::string_view text, std::size_t offset) {
  offset = std::min(offset, text.size());
  if (offset == text.size() && text.ends_with('\n')) --offset;
  return 1 + static_cast<std::size_t>(std::ranges::count(text.substr(0, offset), '\n'));
}

void refuseDeepNesting(std::string_view text) {
  int depth = 0;
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      if (c == '\\') ++i;
      if (c == '"') inString = false;
    } else if (c == '"') {
      inString = true;
    } else if (c == '[' || c == '{') {
      if (++depth > maxJsonDepth)
        throw DecodingError::atLine(
            lineAt(text, i), "nested more than " + std::to_string(maxJsonDepth) + " levels deep");
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
}

/// The library takes a zero byte between values for the end of the text; what follows it would go
/// unread.
void refuseZeroByte(std::string_view text) {
  const auto zero = text.find('\0');
  if (zero != std::string_view::npos)
    throw DecodingError::atLine(lineAt(text, zero), "a byte of value zero");
}

/// Drops the library's own prefix, "[json.exception.parse_error.101] parse error at line 1, column
/// 2: ".
std::string plainReason(std::string_view message) {
  for (const std::string_view prefixEnd : {"column ", "] "}) {
    const auto found = message.find(prefixEnd);
    if (found == std::string_view::npos) continue;
    message.remove_prefix(found + prefixEnd.size());
    const auto colon = message.find(": ");
    if (prefixEnd == "column " && colon != std::string_view::npos) message.remove_prefix(colon + 2);
    break;
  }
  return utf8::replacingInvalid(message);
}

/// Builds the document and refuses repeated keys, which the library would let pass.
class DocumentBuilder {
public:
  explicit DocumentBuilder(std::string_view text) : text_(text) {}

  Json take() { return std::move(root_); }

  bool null() { return place(nullptr); }
  bool boolean(bool value) { return place(value); }
  bool number_integer(Json::number_integer_t value) { return place(value); }
  bool number_unsigned(Json::number_unsigned_t value) { return place(value); }
  bool number_float(Json::number_float_t value, const std::string&) { return place(value); }
  bool string(std::string& value) { return place(std::move(value)); }
  bool binary(Json::binary_t&) { return false; } // JSON text holds none

  bool start_object(std::size_t) { return open(Json::object()); }
  bool start_array(std::size_t) { return open(Json::array()); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }

  bool key(std::string& name) {
    const auto [member, isNew] = open_.back()->emplace(name, nullptr);
    if (!isNew) throw DecodingError::atPath(pathOf(name), "the key is there twice");
    keys_.back() = std::move(name);
    target_ = &*member;
    return true;
  }

  bool parse_error(std::size_t position, const std::string&, const Json::exception& error) {
    const std::size_t offset = position == 0 ? 0 : position - 1;
    throw DecodingError::atLine(lineAt(text_, offset), plainReason(error.what()));
  }

private:
  Json* put(Json value) {
    if (open_.empty()) {
      root_ = std::move(value);
      return &root_;
    }
    if (open_.back()->is_array()) {
      open_.back()->push_back(std::move(value));
      return &open_.back()->back();
    }
    *target_ = std::move(value);
    return target_;
  }
  bool place(Json value) {
    put(std::move(value));
    return true;
  }
  bool open(Json container) {
    Json* const placed = put(std::move(container));
    open_.push_back(placed);
    keys_.emplace_back();
    return true;
  }
  bool close() {
    open_.pop_back();
    keys_.pop_back();
    return true;
  }

  /// The path of a key of the innermost object; `keys_` says which member of each object is open.
  std::string pathOf(std::string_view key) const {
    std::string path;
    for (std::size_t level = 0; level + 1 < open_.size(); ++level) {
      if (open_[level]->is_array())
        appendIndex(path, open_[level]->size() - 1);
      else
        appendKey(path, keys_[level]);
    }
    appendKey(path, key);
    return path;
  }

  std::string_view text_;
  Json root_;
  std::vector<Json*> open_;       ///< containers being filled; parents outlive their children
  std::vector<std::string> keys_; ///< for each of them the key being filled; unused for arrays
  Json* target_ = nullptr;
};

} // namespace

Json parseJson(std::string_view text) {
  refuseDeepNesting(text);
  DocumentBuilder builder(text);
  Json::sax_parse(text, &builder);
  refuseZeroByte(text);
  return builder.take();
}

} // namespace trellivar
