#include "tests/viewmodels/mapping_fixture.h"

namespace trellivar {
namespace {

/// What happens from the wish to learn a key until the capture starts.
class MappingRelease : public MappingTest {
protected:
  void learnAfter(Seconds delay) {
    setup_.learnReleaseDelay = delay;
    make();
    learn(1);
  }
  /// What the engine will answer before it says that it has let go.
  void refuse(int times) {
    engine_->isReleased = [this, times]() mutable {
      polls_.push_back(now());
      return times-- <= 0;
    };
  }
};

TEST_F(MappingRelease, withoutASelectedKeyOnlyCompletes) {
  make();
  model_->select(3);
  model_->assign(typing("q"));
  const auto error = lastError();
  ASSERT_TRUE(error);
  model_->select(std::nullopt);
  model_->learnKey(counted());
  EXPECT_EQ(completed_, 1);
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_EQ(lastError(), error);
  queue_.advance(Seconds(60));
  EXPECT_TRUE(engine_->ignores.empty());
  EXPECT_TRUE(polls_.empty());
  EXPECT_TRUE(capturer_->started.empty());
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingRelease, learningClearsTheLastError) {
  make();
  model_->select(3);
  model_->assign(typing("q"));
  ASSERT_TRUE(lastError());
  model_->learnKey(counted());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_TRUE(*model_->isLearning());
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(completed_, 0);
}

TEST_F(MappingRelease, theEngineIsAskedAtOnceByTheNameOfTheDevice) {
  make();
  learn(1);
  EXPECT_EQ(polls_, Times{0});
  EXPECT_EQ(engine_->released, Texts{"Some pad"});
}

TEST_F(MappingRelease, thePadIsExemptedBeforeTheEngineIsAsked) {
  Texts ignores;
  engine_->isReleased = [&] {
    ignores = engine_->ignores;
    return true;
  };
  make();
  learn(1);
  EXPECT_EQ(ignores, Texts{"+7:9"});
}

TEST_F(MappingRelease, theCaptureStartsOnePauseAfterTheRelease) {
  learnAfter(Seconds(0.125));
  EXPECT_EQ(nextCapture(), 0.125);
  EXPECT_EQ(polls_, Times{0}) << "who has let go is not asked again";
  EXPECT_EQ(capturer_->started, std::vector{Seconds(12)});
}

TEST_F(MappingRelease, theEngineIsAskedUntilItHasLetGo) {
  refuse(3);
  learnAfter(Seconds(0.25));
  EXPECT_EQ(nextCapture(), 1.0);
  EXPECT_EQ(polls_, (Times{0, 0.25, 0.5, 0.75}));
}

TEST_F(MappingRelease, withoutAPauseTheEngineIsAskedEvery50Milliseconds) {
  refuse(3);
  learnAfter(Seconds(0));
  const double third = 0.05 + 0.05 + 0.05;
  EXPECT_EQ(nextCapture(), third) << "and the capture starts with no pause";
  EXPECT_EQ(polls_, (Times{0, 0.05, 0.05 + 0.05, third}));
}

TEST_F(MappingRelease, withoutAPauseTheCaptureStillDoesNotStartWithinTheCall) {
  learnAfter(Seconds(0));
  EXPECT_TRUE(capturer_->started.empty());
  queue_.run();
  EXPECT_EQ(capturer_->started, std::vector{Seconds(12)});
  EXPECT_EQ(now(), 0);
}

TEST_F(MappingRelease, onlyThePollIsClamped) {
  refuse(1);
  learnAfter(Seconds(0.03125));
  EXPECT_EQ(nextCapture(), 0.05 + 0.03125);
  EXPECT_EQ(polls_, (Times{0, 0.05}));
}

TEST_F(MappingRelease, aLongerPauseIsNotClamped) {
  refuse(1);
  learnAfter(Seconds(0.0625));
  EXPECT_EQ(nextCapture(), 0.125);
  EXPECT_EQ(polls_, (Times{0, 0.0625}));
}

TEST_F(MappingRelease, anEngineThatNeverLetsGoIsWaitedForUntilTheDeadline) {
  isReleased_ = false;
  learnAfter(Seconds(0.5));
  EXPECT_EQ(nextCapture(), 8.5) << "the deadline itself is no longer earlier than the deadline";
  ASSERT_GE(polls_.size(), 16U);
  for (std::size_t i = 0; i < 16; ++i)
    EXPECT_EQ(polls_[i], 0.5 * static_cast<double>(i));
  EXPECT_EQ(lastError(), std::nullopt) << "a timeout is no error";
  EXPECT_TRUE(*model_->isLearning());
  capturer_->finish(tap(pad, "q"));
  EXPECT_EQ(signature(0), signatureOf("q"));
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingRelease, theDeadlineCutsNoPollShort) {
  isReleased_ = false;
  learnAfter(Seconds(3));
  EXPECT_EQ(nextCapture(), 12) << "polls at 0, 3, 6 and 9, then the pause";
}

TEST_F(MappingRelease, theDeadlineCountsFromTheCall) {
  isReleased_ = false;
  setup_.learnReleaseDelay = Seconds(0.5);
  make();
  queue_.advance(Seconds(100));
  learn(1);
  EXPECT_EQ(nextCapture(), 108.5);
}

TEST_F(MappingRelease, anEngineThatLetsGoJustBeforeTheDeadlineIsNotWaitedForLonger) {
  refuse(15);
  learnAfter(Seconds(0.5));
  EXPECT_EQ(nextCapture(), 8.0);
}

TEST_F(MappingRelease, theDeadlineIsTheOneOfTheSetup) {
  isReleased_ = false;
  setup_.learnReleaseTimeout = Seconds(1);
  learnAfter(Seconds(0.25));
  EXPECT_EQ(nextCapture(), 1.25);
}

TEST_F(MappingRelease, withoutATimeoutTheEngineIsNotWaitedFor) {
  isReleased_ = false;
  setup_.learnReleaseTimeout = Seconds(0);
  learnAfter(Seconds(0.25));
  EXPECT_EQ(nextCapture(), 0.25);
}

TEST_F(MappingRelease, anEngineThatCannotExemptThePadIsReportedAndLearningGoesOn) {
  engine_->ignoreError = EngineError::lintFailed("not now");
  make();
  learn(3);
  EXPECT_EQ(reports_, Texts{"not now"});
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(reports_, (Texts{"not now", "not now"}));
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_EQ(signature(2), signatureOf("q"));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(completed_, 1);
}

} // namespace
} // namespace trellivar
