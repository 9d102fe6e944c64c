#include "tests/viewmodels/mapping_fixture.h"

#include <span>

namespace trellivar {
namespace {

using Texts = std::vector<std::string>;

// Each of these notes what it is told and passes it on.

class NotingEngine final : public RemapEngine {
public:
  NotingEngine(std::shared_ptr<RemapEngine> next, Texts& notes)
      : next_(std::move(next)), notes_(notes) {}

  void apply(const MappingSet& set) override { next_->apply(set); }
  void applyAll(std::span<const MappingSet> sets) override {
    notes_.emplace_back("applied");
    next_->applyAll(sets);
  }
  EngineStatus status(std::string_view name) override { return next_->status(name); }
  using RemapEngine::setDeviceIgnored;
  void setDeviceIgnored(bool ignored, int vendorId, int productId) override {
    notes_.emplace_back(ignored ? "exempted" : "remapped");
    next_->setDeviceIgnored(ignored, vendorId, productId);
  }
  bool isDeviceReleased(std::string_view named) override {
    notes_.emplace_back("asked");
    return next_->isDeviceReleased(named);
  }

private:
  std::shared_ptr<RemapEngine> next_;
  Texts& notes_;
};

class NotingCapturer final : public KeyCapturing {
public:
  NotingCapturer(std::shared_ptr<KeyCapturing> next, Texts& notes)
      : next_(std::move(next)), notes_(notes) {}

  void capture(Seconds maxDuration, Completion completion) override {
    notes_.emplace_back("captures");
    next_->capture(maxDuration, std::move(completion));
  }

private:
  std::shared_ptr<KeyCapturing> next_;
  Texts& notes_;
};

class NotingSignatures final : public SignaturePersisting {
public:
  explicit NotingSignatures(Texts& notes) : notes_(notes) {}

  std::vector<StoredDeviceSignatures> load() const override { return {}; }
  void save(std::span<const StoredDeviceSignatures> /*records*/) const override {
    notes_.emplace_back("saved");
  }

private:
  Texts& notes_;
};

/// The steps of each activity in their order, announcements included.
class MappingOrder : public MappingTest {
protected:
  MappingOrder() {
    setup_.engine = std::make_shared<NotingEngine>(engine_, notes_);
    setup_.capturer = std::make_shared<NotingCapturer>(capturer_, notes_);
    setup_.signatures = std::make_shared<NotingSignatures>(notes_);
    setup_.onProfileEdited = [this](const Profile& /*profile*/) { note("edited"); };
    make();
    model_->select(3);
    model_->assign(typing("q")); // refused: there is an error to be cleared
    subscriptions_ = {
        model_->isLearning().willChange([this](bool next) { note(next ? "learning" : "learned"); }),
        model_->isRecording().willChange(
            [this](bool next) { note(next ? "recording" : "recorded"); }),
        model_->lastError().willChange(
            [this](const std::optional<std::string>& next) { note(next ? "error" : "no error"); }),
        model_->device().willChange([this](const TrellivarDevice& /*next*/) { note("device"); }),
        model_->profile().willChange([this](const Profile& /*next*/) { note("profile"); }),
    };
    notes_.clear();
  }

  void note(const std::string& text) { notes_.push_back(text); }
  Completion noted() {
    return [this] { note("completed"); };
  }
  /// What has been noted since the last call.
  Texts notes() { return std::exchange(notes_, {}); }

  Texts notes_;
  std::vector<Subscription> subscriptions_;
};

TEST_F(MappingOrder, ofLearning) {
  isReleased_ = false;
  model_->learnKey(noted());
  EXPECT_EQ(notes(), (Texts{"no error", "learning", "exempted", "asked"}));
  isReleased_ = true;
  nextCapture();
  EXPECT_EQ(notes(), (Texts{"asked", "captures"}));
  capturer_->finish();
  EXPECT_EQ(notes(), Texts{});
  nextCapture();
  EXPECT_EQ(notes(), Texts{"captures"});
  capturer_->finish(tap(pad, "q"));
  EXPECT_EQ(notes(), (Texts{"learned", "remapped", "device", "saved", "applied", "completed"}));
}

TEST_F(MappingOrder, ofLearningInVain) {
  model_->learnKey(noted());
  learnFrom({});
  learnFrom({});
  nextCapture();
  notes();
  capturer_->finish();
  EXPECT_EQ(notes(), (Texts{"learned", "remapped", "error", "completed"}));
}

TEST_F(MappingOrder, ofRecording) {
  model_->record(noted());
  EXPECT_EQ(notes(), (Texts{"no error", "recording", "captures"}));
  capturer_->finish();
  EXPECT_EQ(notes(), Texts{"captures"});
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(notes(), (Texts{"recorded", "profile", "edited", "applied", "completed"}));
}

TEST_F(MappingOrder, ofRecordingWhatTheEngineRefuses) {
  engine_->applyError = EngineError::lintFailed("no sense");
  model_->record(noted());
  notes();
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(notes(), (Texts{"recorded", "profile", "edited", "applied", "error", "completed"}));
}

TEST_F(MappingOrder, ofRecordingInVain) {
  model_->record(noted());
  capturer_->finish();
  capturer_->finish();
  notes();
  capturer_->finish();
  EXPECT_EQ(notes(), (Texts{"recorded", "error", "completed"}));
}

TEST_F(MappingOrder, ofAssigningAndRenaming) {
  model_->select(1);
  model_->assign(typing("q"));
  EXPECT_EQ(notes(), (Texts{"profile", "edited", "applied"}));
  model_->rename(1, "Name");
  EXPECT_EQ(notes(), (Texts{"profile", "edited"}));
}

TEST_F(MappingOrder, ofAnEarlyEnd) {
  model_->learnKey(noted());
  notes();
  model_->endActiveCapture();
  EXPECT_EQ(notes(), (Texts{"remapped", "learned"}));
  queue_.advance(Seconds(60));
  EXPECT_EQ(notes(), Texts{"completed"});
  model_->record(noted());
  notes();
  model_->endActiveCapture();
  EXPECT_EQ(notes(), Texts{"recorded"});
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(notes(), Texts{"completed"});
}

} // namespace
} // namespace trellivar
