#include "tests/viewmodels/mapping_moments.h"

namespace trellivar {
namespace {

/// The model goes while something is under way.
class MappingDestruction : public MappingMoments, public testing::WithParamInterface<Moment> {};

TEST_P(MappingDestruction, nothingUnderWayKeepsTheModelAndThePadIsRemappedAgain) {
  make();
  reach(GetParam());
  EXPECT_EQ(engine_->ignored.size(), isLearning(GetParam()) ? 1U : 0U);
  model_.reset();
  EXPECT_TRUE(weak_.expired());
  EXPECT_EQ(engine_->ignores, exemptions(GetParam()));
  EXPECT_TRUE(engine_->ignored.empty());
}

TEST_P(MappingDestruction, theCompletionIsCalledOnceAndNothingElseHappens) {
  make();
  reach(GetParam());
  const auto started = capturer_->started.size();
  const auto polls = polls_.size();
  model_.reset();
  runOut();
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(capturer_->started.size(), started);
  EXPECT_EQ(polls_.size(), polls);
  EXPECT_EQ(engine_->ignores, exemptions(GetParam()));
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_TRUE(edited_.empty());
  EXPECT_TRUE(reports_.empty());
  EXPECT_EQ(signatures_->saves, 0);
}

TEST_P(MappingDestruction, anEngineThatRefusesIsReported) {
  make();
  reach(GetParam());
  engine_->ignoreError = EngineError::lintFailed("not now");
  model_.reset();
  EXPECT_EQ(reports_, isLearning(GetParam()) ? Texts{"not now"} : Texts{});
}

INSTANTIATE_TEST_SUITE_P(AtEachMoment, MappingDestruction, testing::ValuesIn(allMoments),
                         [](const auto& each) { return nameOf(each.param); });

} // namespace
} // namespace trellivar
