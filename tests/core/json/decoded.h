#pragma once

#include "core/json/coding.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Shared by the tests of decoding: documents go in as text, because numbers such as 1.0, repeated
/// keys and broken characters exist only there.
namespace trellivar {

template <class T> T decoded(std::string_view text) {
  const Json document = parseJson(text);
  return JsonReader(document).as<T>();
}

template <class T> std::vector<T> decodedList(std::string_view text) {
  const Json document = parseJson(text);
  return JsonReader(document).list<T>();
}

/// The error with which `work` refuses something; anything else fails the test.
template <class Work> DecodingError decodingErrorOf(const Work& work) {
  try {
    work();
  } catch (const DecodingError& error) {
    return error;
  }
  throw std::logic_error("nothing was refused");
}

/// Checks that `work` fails at exactly this place for exactly this reason.
template <class Work>
void expectFailure(const Work& work, std::string_view where, std::string_view reason) {
  const DecodingError error = decodingErrorOf(work);
  EXPECT_EQ(error.where(), where);
  EXPECT_EQ(error.reason(), reason);
}

template <class T>
void expectFailure(std::string_view text, std::string_view where, std::string_view reason) {
  SCOPED_TRACE(text.substr(0, 200));
  expectFailure([&] { decoded<T>(text); }, where, reason);
}

} // namespace trellivar
