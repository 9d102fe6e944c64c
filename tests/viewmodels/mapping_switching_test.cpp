#include "tests/viewmodels/mapping_fixture.h"

namespace trellivar {
namespace {

class MappingSwitching : public MappingTest {
protected:
  MappingSwitching() { make(); }

  /// Notes what is announced, and the selection of that moment.
  void watch() {
    subscriptions_ = {
        model_->isLearning().willChange([this](bool next) { note(next ? "learning" : "idle"); }),
        model_->isRecording().willChange([this](bool next) { note(next ? "recording" : "idle"); }),
        model_->device().willChange([this](const TrellivarDevice& next) { note(next.name); }),
        model_->profile().willChange([this](const Profile& next) { note(next.name); }),
        model_->selectedKeyId().willChange(
            [this](std::optional<int> next) { note(next ? "selected" : "none selected"); }),
    };
  }
  void note(const std::string& text) { seen_.push_back(text); }

  const Profile play_{UUID::random(), "Play", {}};
  const TrellivarDevice other_{"Other pad", 3, 4, {{{1, 0, 0, {}, {}}}}};
  Texts seen_;
  std::vector<Subscription> subscriptions_;
};

TEST_F(MappingSwitching, worksOnAnotherProfileWithNoKeySelected) {
  model_->select(1);
  model_->switchProfile(play_);
  EXPECT_EQ(*model_->profile(), play_);
  EXPECT_EQ(*model_->selectedKeyId(), std::nullopt);
  EXPECT_EQ(*model_->device(), unknownPad());
}

TEST_F(MappingSwitching, worksOnAnotherDeviceWithNoKeySelected) {
  model_->select(1);
  model_->switchDevice(other_);
  EXPECT_EQ(*model_->device(), other_);
  EXPECT_EQ(*model_->selectedKeyId(), std::nullopt);
  EXPECT_EQ(*model_->profile(), setup_.profile);
}

TEST_F(MappingSwitching, isNoEditAndDoesNotConcernTheEngine) {
  model_->switchProfile(play_);
  model_->switchDevice(other_);
  EXPECT_TRUE(edited_.empty());
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_TRUE(engine_->ignores.empty());
  EXPECT_EQ(signatures_->saves, 0);
}

TEST_F(MappingSwitching, keepsTheLastError) {
  model_->select(3);
  model_->assign(typing("q"));
  const auto error = lastError();
  ASSERT_TRUE(error);
  model_->switchProfile(play_);
  EXPECT_EQ(lastError(), error);
  model_->switchDevice(other_);
  EXPECT_EQ(lastError(), error);
}

TEST_F(MappingSwitching, givesTheNewDeviceWhatWasLearnedAboutIt) {
  signatures_->records = {{3, 4, {{1, signatureOf("q")}}, "M"}};
  model_->switchDevice(other_);
  EXPECT_EQ(signature(0), signatureOf("q"));
}

TEST_F(MappingSwitching, takesTheNewDeviceAsItIsWithoutAStore) {
  setup_.signatures = nullptr;
  make().switchDevice(other_);
  EXPECT_EQ(*model_->device(), other_);
}

TEST_F(MappingSwitching, toTheSameDeviceReadsTheStoreAgain) {
  signatures_->records = {{pad.vendorId, pad.productId, {{3, signatureOf("q")}}, {}}};
  model_->switchDevice(*model_->device());
  EXPECT_EQ(signature(0), signatureOf("a"));
  EXPECT_EQ(signature(2), signatureOf("q"));
}

TEST_F(MappingSwitching, toTheSameProfileEndsWhatIsUnderWay) {
  learn(1);
  model_->switchProfile(setup_.profile);
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_EQ(*model_->selectedKeyId(), std::nullopt);
}

TEST_F(MappingSwitching, endsWhatIsUnderWayThenSwitchesThenDeselects) {
  learn(1);
  watch();
  model_->switchProfile(play_);
  EXPECT_EQ(seen_, (Texts{"idle", "Play", "none selected"}));
  seen_.clear();
  model_->select(1);
  model_->record(counted());
  model_->switchDevice(other_);
  EXPECT_EQ(seen_, (Texts{"selected", "recording", "idle", "Other pad", "none selected"}));
}

TEST_F(MappingSwitching, theEngineRemapsThePadAgainBeforeLearningIsSaidToHaveEnded) {
  learn(1);
  std::vector<Texts> ignores;
  const auto subscription =
      model_->isLearning().willChange([&](bool /*next*/) { ignores.push_back(engine_->ignores); });
  model_->switchDevice(other_);
  EXPECT_EQ(ignores, (std::vector<Texts>{{"+7:9", "-7:9"}})) << "the pad that was being learned";
}

TEST_F(MappingSwitching, afterwardsTheOtherPadIsLearned) {
  model_->switchDevice(other_);
  learn(1);
  EXPECT_EQ(engine_->released, Texts{"Other pad"});
  learnFrom(tap(pad, "p"));
  learnFrom(tap({3, 4}, "q"));
  EXPECT_EQ(signature(0), signatureOf("q"));
  EXPECT_EQ(engine_->ignores, (Texts{"+3:4", "-3:4"}));
}

} // namespace
} // namespace trellivar
