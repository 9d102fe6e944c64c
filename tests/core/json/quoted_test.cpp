#include "core/json/quoted.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

TEST(QuotedJson, escapesWhatWouldEndTheStringOrTheLine) {
  EXPECT_EQ(quotedJson(""), R"("")");
  EXPECT_EQ(quotedJson("\"\\\t\n"), R"("\"\\\t\n")");
  EXPECT_EQ(quotedJson("音"), "\"音\"");
}

TEST(QuotedJson, replacesIllFormedText) { EXPECT_EQ(quotedJson("a\xFF z"), "\"a\xEF\xBF\xBD z\""); }

} // namespace
} // namespace trellivar
