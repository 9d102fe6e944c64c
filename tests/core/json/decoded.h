#pragma once

#include "core/json/coding.h"

#include <gtest/gtest.h>

#include <optional>
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

/// The DecodingError that `work` throws; fails the test if it throws none, or something else.
template <class Work> std::optional<DecodingError> decodingErrorOf(const Work& work) {
  try {
    work();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const DecodingError& error) {
    return error;
  } catch (const std::exception& error) {
    ADD_FAILURE() << "something else was thrown: " << error.what();
  }
  return std::nullopt;
}

/// Checks that `work` fails at exactly this place for exactly this reason.
template <class Work>
void expectFailure(const Work& work, std::string_view where, std::string_view reason) {
  const auto error = decodingErrorOf(work);
  if (!error) return;
  EXPECT_EQ(error->where(), where);
  EXPECT_EQ(error->reason(), reason);
}

template <class T>
void expectFailure(std::string_view text, std::string_view where, std::string_view reason) {
  SCOPED_TRACE(text.substr(0, 200));
  expectFailure([&] { decoded<T>(text); }, where, reason);
}

} // namespace trellivar
