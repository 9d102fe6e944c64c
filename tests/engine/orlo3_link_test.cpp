#include "engine/orlo3_link.h"
#include "engine/orlo3_protocol.h"
#include "tests/engine/link_words.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using namespace words;

/// A link that can only query.
class QueryOnlyLink : public Orlo3Linking {
public:
  std::optional<std::string> discoverPort() override { return "/dev/pad"; }
  std::optional<Orlo3Reply> query(std::string_view line, double timeoutSeconds) override {
    queries.emplace_back(line, timeoutSeconds);
    const int number = static_cast<int>(queries.size());
    if (number == failsAt) throw Orlo3Error(Orlo3Error::Io{"open /dev/pad: busy"});
    if (number == silentAt) return std::nullopt;
    return Orlo3Reply{"get", "firmware", "1.0." + std::to_string(number)};
  }

  std::vector<std::pair<std::string, double>> queries;
  int silentAt = 0;
  int failsAt = 0;
};

TEST(LinkThatOnlyQueries, asksBeforeAndAfterAndSendsEachFrameInBetween) {
  QueryOnlyLink link;
  const std::string longLine(64, 'x');
  EXPECT_EQ(link.writeMacros({"short", longLine}), "1.0.5");
  EXPECT_EQ(link.queries, (std::vector<std::pair<std::string, double>>{
                              {firmwareQuery, 3.0},
                              {"short", 0.2},
                              {"S2[1/2]" + longLine.substr(0, 55), 0.2},
                              {"S2[2/2]" + longLine.substr(55), 0.2},
                              {firmwareQuery, 3.0},
                          }));
}

TEST(LinkThatOnlyQueries, asksTwiceEvenWithNothingToWrite) {
  QueryOnlyLink link;
  EXPECT_EQ(link.writeMacros({}), "1.0.2");
  EXPECT_EQ(link.queries.size(), 2U);
}

TEST(LinkThatOnlyQueries, numbersTheTenthCommandLikeTheFirst) {
  QueryOnlyLink link;
  link.writeMacros(std::vector<std::string>(10, std::string(64, 'x')));
  std::string numbers;
  for (std::size_t i = 1; i + 1 < link.queries.size(); i += 2)
    numbers += link.queries[i].first[1];
  EXPECT_EQ(numbers, "1234567891");
}

TEST(LinkThatOnlyQueries, isDormantWhenTheFirstQueryIsNotAnswered) {
  QueryOnlyLink link;
  link.silentAt = 1;
  EXPECT_EQ(errorOf([&] { link.writeMacros({"line"}); }), dormant);
  EXPECT_EQ(link.queries.size(), 1U);
}

TEST(LinkThatOnlyQueries, doesNotMindAFrameWithoutReply) {
  QueryOnlyLink link;
  link.silentAt = 2;
  EXPECT_EQ(link.writeMacros({"line"}), "1.0.3");
}

TEST(LinkThatOnlyQueries, failsTheHealthCheckWhenTheLastQueryIsNotAnswered) {
  QueryOnlyLink link;
  link.silentAt = 3;
  EXPECT_EQ(errorOf([&] { link.writeMacros({"line"}); }), healthCheckFailed);
}

TEST(LinkThatOnlyQueries, passesErrorsOnWhereverTheyHappen) {
  for (int query = 1; query <= 3; ++query) {
    QueryOnlyLink link;
    link.failsAt = query;
    EXPECT_EQ(errorOf([&] { link.writeMacros({"line"}); }), io("open /dev/pad: busy"));
    EXPECT_EQ(static_cast<int>(link.queries.size()), query);
  }
}

TEST(Orlo3Error, isComparedByCaseAndMessage) {
  EXPECT_EQ(Orlo3Error(io("a")), Orlo3Error(io("a")));
  EXPECT_NE(Orlo3Error(io("a")), Orlo3Error(io("b")));
  EXPECT_NE(Orlo3Error(dormant), Orlo3Error(healthCheckFailed));
  EXPECT_EQ(Orlo3Error(noPort), Orlo3Error(noPort));
}

TEST(Orlo3Error, describesItselfByItsMessage) {
  EXPECT_STREQ(Orlo3Error(io("open /dev/pad: busy")).what(), "open /dev/pad: busy");
  for (const auto& other : {noPort, dormant, healthCheckFailed})
    EXPECT_STRNE(Orlo3Error(other).what(), "");
}

} // namespace
} // namespace trellivar
