#pragma once

#include "core/json/coding.h"
#include "core/utf8.h"
#include "fuzz/check.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace trellivar::fuzz {

/// Whatever the bytes, an error is one line of valid text that names its place.
inline void checkError(const DecodingError& error) {
  const std::string_view message = error.what();
  FUZZ_CHECK(!error.where().empty());
  FUZZ_CHECK(!error.reason().empty());
  FUZZ_CHECK(message.find('\n') == std::string_view::npos);
  FUZZ_CHECK(utf8::isValid(message));
}

/// A list that decodes is written and read back as the same list.
template <class T> void roundTrip(const std::uint8_t* data, std::size_t size) {
  try {
    const Json document = parseJson({reinterpret_cast<const char*>(data), size});
    const auto items = JsonReader(document).list<T>();
    const std::string text = prettyPrinted(encodeList(items));
    const Json written = parseJson(text);
    FUZZ_CHECK(JsonReader(written).list<T>() == items);
  } catch (const DecodingError& error) {
    checkError(error);
  }
}

} // namespace trellivar::fuzz
