#include "files/temporary_name.h"
#include "tests/support/child_process.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <limits>

namespace trellivar {
namespace {

TEST(TemporaryName, isHiddenAndTellsFileProcessAndCounter) {
  EXPECT_EQ((TemporaryName{12, 3}.text("a.json")), ".a.json.12-3.tmp");
}

TEST(TemporaryName, belongsToThisProcessAndIsNewEachTime) {
  const auto first = TemporaryName::next();
  const auto second = TemporaryName::next();
  EXPECT_EQ(first.process, ::getpid());
  EXPECT_NE(first, second);
}

TEST(TemporaryName, belongsToTheChildAfterAFork) {
  TemporaryName::next();
  EXPECT_EQ(exitStatusOf([] { return TemporaryName::next().process == ::getpid() ? 0 : 1; }), 0);
}

TEST(TemporaryName, isOfNoProcessThatCannotExist) {
  EXPECT_EQ(TemporaryName::parse(".a.0-1.tmp", "a"), std::nullopt);
  EXPECT_EQ(TemporaryName::parse(".a.-1-1.tmp", "a"), std::nullopt);
  EXPECT_NE(TemporaryName::parse(".a.1-1.tmp", "a"), std::nullopt);
}

TEST(TemporaryName, isNotParsedFromWhatIsTooShort) {
  for (const char* text : {"", ".", ".a", ".a.", ".a.tmp", ".a..tmp"}) {
    EXPECT_EQ(TemporaryName::parse(text, "a"), std::nullopt) << text;
  }
}

RC_GTEST_PROP(TemporaryName, isParsedFromItsText, (std::string fileName, std::uint64_t counter)) {
  const auto process = *rc::gen::inRange<pid_t>(1, std::numeric_limits<pid_t>::max());
  const TemporaryName name{process, counter};
  RC_ASSERT(TemporaryName::parse(name.text(fileName), fileName) == name);
  RC_ASSERT(TemporaryName::parse(name.text(fileName), fileName + "x") == std::nullopt);
}

RC_GTEST_PROP(TemporaryName, isParsedFromNoOtherText, ()) {
  const auto digits =
      rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789")));
  const std::string text = ".f." + *digits + "-" + *digits + ".tmp";
  const auto name = TemporaryName::parse(text, "f");
  const bool isSame = !name || name->text("f") == text;
  RC_ASSERT(isSame);
}

} // namespace
} // namespace trellivar
