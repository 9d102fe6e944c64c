#include "core/json/decoding_error.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

TEST(DecodingError, tellsTheLineOfBrokenText) {
  const auto error = DecodingError::atLine(3, "unexpected end");
  EXPECT_EQ(error.where(), "3");
  EXPECT_EQ(error.reason(), "unexpected end");
  EXPECT_FALSE(error.isAtPath());
  EXPECT_STREQ(error.what(), "3: unexpected end");
}

TEST(DecodingError, tellsThePathOfAMember) {
  const auto error = DecodingError::atPath("[0].mappings[2].output", "missing");
  EXPECT_EQ(error.where(), "[0].mappings[2].output");
  EXPECT_EQ(error.reason(), "missing");
  EXPECT_TRUE(error.isAtPath());
  EXPECT_STREQ(error.what(), "[0].mappings[2].output: missing");
}

TEST(DecodingError, countsTheRootAsTheFirstLine) {
  const auto error = DecodingError::atPath("", "expected a list, found null");
  EXPECT_EQ(error.where(), "1");
  EXPECT_FALSE(error.isAtPath());
  EXPECT_STREQ(error.what(), "1: expected a list, found null");
}

} // namespace
} // namespace trellivar
