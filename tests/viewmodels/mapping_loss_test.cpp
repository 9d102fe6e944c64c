#include "tests/viewmodels/mapping_moments.h"

#include <set>

namespace trellivar {
namespace {

/// The model loses its owner within one of its own steps, which keeps it until the step is over.
class MappingLoss : public MappingMoments {
protected:
  void lose() { model_.reset(); }
  Completion losing() {
    return [this] {
      ++completed_;
      lose();
    };
  }
  /// Loses the model at the next announcement of a value.
  template <class Value> void loseAt(const Published<Value>& published) {
    subscription_ = published.willChange([this](const Value& /*next*/) { lose(); });
  }

  void expectGone() {
    EXPECT_EQ(completed_, 1);
    EXPECT_TRUE(weak_.expired());
    EXPECT_EQ(queue_.pendingCount(), 0U);
    EXPECT_TRUE(capturer_->running.empty());
  }
  void expectKeyLearned() {
    expectGone();
    EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
    EXPECT_EQ(signatures_->saves, 1);
    ASSERT_EQ(engine_->applied.size(), 1U);
    EXPECT_EQ(engine_->applied[0][0].device.layout.keys[0].signature, signatureOf("q"));
  }
  void expectShortcutBound() {
    expectGone();
    ASSERT_EQ(edited_.size(), 1U);
    EXPECT_EQ(edited_[0].mappings.back(), (KeyMapping{1, typing("q"), "Cut"}));
    ASSERT_EQ(engine_->applied.size(), 1U);
    EXPECT_EQ(engine_->applied[0][0].profile, edited_[0]);
  }

  Subscription subscription_;
};

TEST_F(MappingLoss, atTheEndOfLearning) {
  make();
  reach(Moment::firstPadCapture);
  loseAt(model_->isLearning());
  capturer_->finish(tap(pad, "q"));
  expectKeyLearned();
}

TEST_F(MappingLoss, whenTheDeviceHasANewSignature) {
  make();
  reach(Moment::firstPadCapture);
  loseAt(model_->device());
  capturer_->finish(tap(pad, "q"));
  expectKeyLearned();
}

TEST_F(MappingLoss, whileTheProfilesAreCollected) {
  setup_.allProfiles = [this] {
    lose();
    return std::vector{setup_.profile};
  };
  make();
  reach(Moment::firstPadCapture);
  capturer_->finish(tap(pad, "q"));
  expectKeyLearned();
}

TEST_F(MappingLoss, whileThePortableModesAreCollected) {
  setup_.portableModes = [this] {
    lose();
    return std::set<std::string>();
  };
  make();
  reach(Moment::firstPadCapture);
  capturer_->finish(tap(pad, "q"));
  expectKeyLearned();
}

TEST_F(MappingLoss, inTheCompletionOfLearning) {
  make();
  model_->select(1);
  model_->learnKey(losing());
  learnFrom(tap(pad, "q"));
  expectKeyLearned();
}

TEST_F(MappingLoss, whenLearningHasFailed) {
  make();
  reach(Moment::lastPadCapture);
  loseAt(model_->lastError());
  capturer_->finish();
  expectGone();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_TRUE(engine_->applied.empty());
}

TEST_F(MappingLoss, whileTheEngineIsAskedAgain) {
  make();
  reach(Moment::engineHasNotLetGo);
  engine_->isReleased = [this] {
    lose();
    return false;
  };
  queue_.advance(Seconds(60));
  expectGone();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_TRUE(capturer_->started.empty());
}

TEST_F(MappingLoss, whenTheEngineHasLetGo) {
  make();
  reach(Moment::engineHasNotLetGo);
  engine_->isReleased = [this] {
    lose();
    return true;
  };
  queue_.advance(Seconds(60));
  expectGone();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_TRUE(capturer_->started.empty());
}

TEST_F(MappingLoss, whenARefusalIsReported) {
  setup_.report = [this](std::string_view /*text*/) { lose(); };
  engine_->applyError = EngineError::lintFailed("no sense");
  make();
  reach(Moment::firstPadCapture);
  capturer_->finish(tap(pad, "q"));
  expectGone();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_EQ(signatures_->saves, 1);
}

TEST_F(MappingLoss, atTheEndOfRecording) {
  make();
  reach(Moment::firstShortcutCapture);
  loseAt(model_->isRecording());
  capturer_->finish(tap(keyboard, "q"));
  expectShortcutBound();
}

TEST_F(MappingLoss, whenTheProfileHasANewBinding) {
  make();
  reach(Moment::secondShortcutCapture);
  loseAt(model_->profile());
  capturer_->finish(tap(keyboard, "q"));
  expectShortcutBound();
}

TEST_F(MappingLoss, whenTheOwnerOfTheProfileIsGivenTheEdit) {
  setup_.onProfileEdited = [this](const Profile& profile) {
    edited_.push_back(profile);
    lose();
  };
  make();
  reach(Moment::lastShortcutCapture);
  capturer_->finish(tap(keyboard, "q"));
  expectShortcutBound();
}

TEST_F(MappingLoss, inTheCompletionOfRecording) {
  make();
  model_->select(1);
  model_->record(losing());
  capturer_->finish(tap(keyboard, "q"));
  expectShortcutBound();
}

TEST_F(MappingLoss, whenTheEngineRefusesTheShortcut) {
  engine_->applyError = EngineError::lintFailed("no sense");
  make();
  reach(Moment::firstShortcutCapture);
  loseAt(model_->lastError());
  capturer_->finish(tap(keyboard, "q"));
  expectGone();
  EXPECT_EQ(reports_, Texts{"no sense"});
  EXPECT_EQ(edited_.size(), 1U);
}

TEST_F(MappingLoss, whenRecordingHasFailed) {
  make();
  reach(Moment::lastShortcutCapture);
  loseAt(model_->lastError());
  capturer_->finish();
  expectGone();
  EXPECT_TRUE(edited_.empty());
}

TEST_F(MappingLoss, whenNoKeyIsSelectedForTheNextPeriod) {
  make();
  reach(Moment::firstShortcutCapture);
  model_->select(std::nullopt);
  loseAt(model_->isRecording());
  capturer_->finish();
  expectGone();
}

TEST_F(MappingLoss, inACompletionWithinTheCall) {
  make();
  model_->learnKey(losing());
  expectGone();
  completed_ = 0;
  make();
  model_->record(losing());
  expectGone();
  EXPECT_TRUE(engine_->ignores.empty());
}

TEST_F(MappingLoss, inACompletionOfACapturerThatAnswersWithinTheCall) {
  const auto stub = std::make_shared<StubKeyCapturer>();
  stub->events = tap(keyboard, "q");
  setup_.capturer = stub;
  make();
  model_->select(1);
  model_->record(losing());
  expectShortcutBound();
}

TEST_F(MappingLoss, inACompletionThatIsStale) {
  make();
  model_->select(1);
  model_->learnKey(losing());
  model_->endActiveCapture();
  queue_.advance(Seconds(60));
  expectGone();
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
}

TEST_F(MappingLoss, aCompletionMayStartTheNextActivity) {
  make();
  model_->select(1);
  model_->learnKey([this] {
    ++completed_;
    model_->record(counted());
  });
  runOut();
  EXPECT_EQ(completed_, 2);
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
}

TEST_F(MappingLoss, anIdleModelLeavesNothingBehind) {
  make();
  model_->select(1);
  model_->assign(typing("q"));
  lose();
  EXPECT_TRUE(weak_.expired());
  EXPECT_TRUE(engine_->ignores.empty());
}

} // namespace
} // namespace trellivar
