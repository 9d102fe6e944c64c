#include "core/json/json_path.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace trellivar {
namespace {

using namespace std::string_literals;

std::string afterKey(std::string path, std::string_view key) {
  appendKey(path, key);
  return path;
}

std::string afterIndex(std::string path, std::size_t index) {
  appendIndex(path, index);
  return path;
}

TEST(JsonPath, beginsWithABareKey) { EXPECT_EQ(afterKey("", "layout"), "layout"); }

TEST(JsonPath, separatesKeysByADot) {
  EXPECT_EQ(afterKey("device", "name"), "device.name");
  EXPECT_EQ(afterKey("[0]", "mappings"), "[0].mappings");
}

TEST(JsonPath, putsIndicesInBrackets) {
  EXPECT_EQ(afterIndex("", 0), "[0]");
  EXPECT_EQ(afterIndex("mappings", 2), "mappings[2]");
  EXPECT_EQ(afterIndex("[1]", 10), "[1][10]");
  EXPECT_EQ(afterIndex("", std::numeric_limits<std::size_t>::max()), "[18446744073709551615]");
}

TEST(JsonPath, leavesPlainWordsBare) {
  for (const char* key : {"_0", "keyCode", "A-Z", "zz_99", "0", "-"})
    EXPECT_EQ(afterKey("a", key), "a."s + key);
}

TEST(JsonPath, quotesEveryOtherKey) {
  EXPECT_EQ(afterKey("a", ""), R"(a[""])");
  EXPECT_EQ(afterKey("a", "b c"), R"(a["b c"])");
  EXPECT_EQ(afterKey("a", "b.c"), R"(a["b.c"])");
  EXPECT_EQ(afterKey("a", "[0]"), R"(a["[0]"])");
  EXPECT_EQ(afterKey("a", "\"]"), R"(a["\"]"])");
  EXPECT_EQ(afterKey("a", "b\\"), R"(a["b\\"])");
  EXPECT_EQ(afterKey("", "b c"), R"(["b c"])");
}

TEST(JsonPath, escapesWhateverWouldLeaveTheLineOrItsAlphabet) {
  EXPECT_EQ(afterKey("a", "b\nc\r\t"), R"(a["b\nc\r\t"])");
  EXPECT_EQ(afterKey("a", "\x1B\x7F\0"s), R"(a["\u001b\u007f\u0000"])");
  EXPECT_EQ(afterKey("a", "é⌘😀"), R"(a["\u00e9\u2318\ud83d\ude00"])");
  EXPECT_EQ(afterKey("a", "\u2028\u0085"), R"(a["\u2028\u0085"])");
}

RC_GTEST_PROP(JsonPath, staysOnOneLineOfPrintableAscii, ()) {
  const std::string path = afterKey("a", *generate::text());
  RC_ASSERT(std::ranges::all_of(path, [](char c) { return c >= ' ' && c <= '~'; }));
}

RC_GTEST_PROP(JsonPath, differsForDifferentKeys, ()) {
  const std::string a = *generate::text();
  const std::string b = *generate::text();
  RC_ASSERT((afterKey("x", a) == afterKey("x", b)) == (a == b));
}

} // namespace
} // namespace trellivar
