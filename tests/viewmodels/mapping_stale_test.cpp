#include "tests/viewmodels/mapping_moments.h"

#include <tuple>

namespace trellivar {
namespace {

enum class Ending { switchProfile, switchDevice, endActiveCapture };

std::string nameOf(Ending ending) {
  constexpr std::array names{"switchProfile", "switchDevice", "endActiveCapture"};
  return names.at(static_cast<std::size_t>(ending));
}

/// What is under way at a given moment ends in a given way.
class MappingStale : public MappingMoments,
                     public testing::WithParamInterface<std::tuple<Moment, Ending>> {
protected:
  MappingStale() { make(); }

  Moment moment() const { return std::get<Moment>(GetParam()); }

  void end() {
    switch (std::get<Ending>(GetParam())) {
    case Ending::switchProfile:
      return model_->switchProfile(play_);
    case Ending::switchDevice:
      return model_->switchDevice(other_);
    case Ending::endActiveCapture:
      return model_->endActiveCapture();
    }
  }

  const Profile play_{UUID::random(), "Play", {{1, typing("p"), "Jump"}}};
  const TrellivarDevice other_{
      "Other pad", 3, 4, {{{1, 0, 0, signatureOf("o"), {}}, {2, 0, 1, {}, {}}}}};
};

TEST_P(MappingStale, isOverAtOnceButForTheCompletion) {
  reach(moment());
  EXPECT_EQ(*model_->isLearning(), isLearning(moment()));
  EXPECT_EQ(*model_->isRecording(), !isLearning(moment()));
  EXPECT_EQ(completed_, 0);
  end();
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(engine_->ignores, exemptions(moment()));
}

TEST_P(MappingStale, completesOnceAndLeavesEverythingAsItIs) {
  reach(moment());
  end();
  const auto device = *model_->device();
  const auto profile = *model_->profile();
  const auto started = capturer_->started.size();
  const auto polls = polls_.size();
  runOut();
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(capturer_->started.size(), started) << "nothing stale may listen";
  EXPECT_EQ(polls_.size(), polls);
  EXPECT_EQ(engine_->ignores, exemptions(moment())) << "undone once";
  EXPECT_EQ(*model_->device(), device);
  EXPECT_EQ(*model_->profile(), profile);
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_TRUE(edited_.empty());
  EXPECT_EQ(signatures_->saves, 0);
}

TEST_P(MappingStale, failsWithoutAnError) {
  reach(moment());
  end();
  queue_.advance(Seconds(60));
  while (!capturer_->running.empty())
    capturer_->finish();
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(queue_.pendingCount(), 0U);
  EXPECT_TRUE(capturer_->running.empty());
  EXPECT_EQ(lastError(), std::nullopt);
}

TEST_P(MappingStale, doesNotDisturbTheLearningThatFollows) {
  reach(moment());
  end();
  const std::size_t stale = capturer_->running.size();
  const std::size_t started = capturer_->started.size();
  isReleased_ = true;
  int learned = 0;
  model_->select(2);
  model_->learnKey([&] { ++learned; });
  queue_.advance(Seconds(60));
  EXPECT_EQ(capturer_->started.size(), started + 1);
  const DeviceIdentity device = model_->device()->identity();
  for (std::size_t i = 0; i < stale; ++i)
    capturer_->finish(tap(device, "stale"));
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(learned, 0);
  EXPECT_TRUE(*model_->isLearning());
  EXPECT_EQ(engine_->ignored.size(), 1U);
  const auto first = signature(0);
  capturer_->finish(tap(device, "new"));
  EXPECT_EQ(learned, 1);
  EXPECT_EQ(signature(0), first);
  EXPECT_EQ(signature(1), signatureOf("new"));
  EXPECT_TRUE(engine_->ignored.empty());
}

INSTANTIATE_TEST_SUITE_P(AtEachMoment, MappingStale,
                         testing::Combine(testing::ValuesIn(allMoments),
                                          testing::Values(Ending::switchProfile,
                                                          Ending::switchDevice,
                                                          Ending::endActiveCapture)),
                         [](const auto& each) {
                           return nameOf(std::get<Moment>(each.param)) + "_" +
                                  nameOf(std::get<Ending>(each.param));
                         });

class MappingOverlap : public MappingMoments {
protected:
  MappingOverlap() { make(); }
};

TEST_F(MappingOverlap, twoLearningsShareAGenerationAndBothRunToTheirEnd) {
  learn(1);
  learn(3);
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "+7:9"}));
  queue_.advance(Seconds(1));
  ASSERT_EQ(capturer_->running.size(), 2U);
  capturer_->finish(tap(pad, "q"));
  EXPECT_EQ(signature(0), signatureOf("q"));
  EXPECT_EQ(completed_, 1);
  EXPECT_FALSE(*model_->isLearning()) << "the first one that ends, ends learning";
  capturer_->finish(tap(pad, "r"));
  EXPECT_EQ(signature(0), signatureOf("q"));
  EXPECT_EQ(signature(2), signatureOf("r"));
  EXPECT_EQ(completed_, 2);
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "+7:9", "-7:9", "-7:9"}));
  EXPECT_EQ(signatures_->saves, 2);
  EXPECT_EQ(engine_->applied.size(), 2U);
}

TEST_F(MappingOverlap, bothLearningsAreEndedTogether) {
  learn(1);
  learn(3);
  model_->endActiveCapture();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "+7:9", "-7:9"}));
  runOut();
  EXPECT_EQ(completed_, 2);
  EXPECT_TRUE(capturer_->started.empty());
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "+7:9", "-7:9"}));
}

TEST_F(MappingOverlap, whatTheFirstLearningHasUndoneIsNotUndoneAgainByTheEnd) {
  learn(1);
  learn(3);
  learnFrom(tap(pad, "q"));
  model_->endActiveCapture();
  model_.reset();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "+7:9", "-7:9"}));
}

TEST_F(MappingOverlap, aLearningAndARecordingBothRunToTheirEnd) {
  learn(1);
  model_->record(counted());
  EXPECT_TRUE(*model_->isLearning());
  EXPECT_TRUE(*model_->isRecording());
  runOut();
  EXPECT_EQ(completed_, 2);
  EXPECT_EQ(signature(0), signatureOf("q"));
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_TRUE(engine_->ignored.empty());
}

TEST_F(MappingOverlap, endingTwiceUndoesOnce) {
  learn(1);
  model_->endActiveCapture();
  model_->endActiveCapture();
  model_->switchProfile(setup_.profile);
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
}

TEST_F(MappingOverlap, endingWhatIsNotUnderWayTellsNobody) {
  model_->select(1);
  model_->endActiveCapture();
  EXPECT_TRUE(engine_->ignores.empty());
  EXPECT_EQ(*model_->selectedKeyId(), 1) << "only switching deselects";
}

TEST_F(MappingOverlap, anEngineThatCannotUndoTheExemptionIsReported) {
  learn(1);
  engine_->ignoreError = EngineError::lintFailed("not now");
  model_->endActiveCapture();
  EXPECT_EQ(reports_, Texts{"not now"});
  EXPECT_FALSE(*model_->isLearning());
  model_->endActiveCapture();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"})) << "it is not tried again";
}

} // namespace
} // namespace trellivar
