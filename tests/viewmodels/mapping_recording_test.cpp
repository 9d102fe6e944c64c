#include "core/l10n.h"
#include "tests/viewmodels/mapping_fixture.h"

namespace trellivar {
namespace {

class MappingRecording : public MappingTest {
protected:
  static constexpr auto noCatch =
      "Didn't catch a shortcut — press the keys you want, then release.";
  using Mappings = std::vector<KeyMapping>;
};

TEST_F(MappingRecording, withoutASelectedKeyOnlyCompletes) {
  make();
  model_->select(3);
  model_->assign(typing("q"));
  const auto error = lastError();
  ASSERT_TRUE(error);
  model_->select(std::nullopt);
  model_->record(counted());
  EXPECT_EQ(completed_, 1);
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(lastError(), error);
  EXPECT_TRUE(capturer_->started.empty());
}

TEST_F(MappingRecording, clearsTheLastErrorAndListensAtOnce) {
  make();
  model_->select(3);
  model_->assign(typing("q"));
  ASSERT_TRUE(lastError());
  model_->record(counted());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_TRUE(*model_->isRecording());
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_EQ(capturer_->started, std::vector{Seconds(8)});
  EXPECT_EQ(completed_, 0);
}

TEST_F(MappingRecording, doesNotConcernTheEngineBeforeItsEnd) {
  make();
  record(1);
  queue_.advance(Seconds(20));
  EXPECT_TRUE(engine_->ignores.empty()) << "the pad goes on being remapped";
  EXPECT_TRUE(polls_.empty());
  EXPECT_TRUE(engine_->applied.empty());
}

TEST_F(MappingRecording, bindsTheShortcutToTheSelectedKey) {
  make();
  record(1);
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(mappings(), (Mappings{{2, typing("c"), {}}, {1, typing("q"), "Cut"}}));
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(*model_->selectedKeyId(), 1);
}

TEST_F(MappingRecording, givesTheEditToItsOwnerAndToTheEngineOnce) {
  make();
  record(1);
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(edited_, std::vector{*model_->profile()});
  ASSERT_EQ(engine_->applied.size(), 1U);
  EXPECT_EQ(engine_->applied[0],
            (std::vector{MappingSet{unknownPad(), *model_->profile(), false}}));
  EXPECT_TRUE(engine_->ignores.empty());
  EXPECT_EQ(signatures_->saves, 0);
}

TEST_F(MappingRecording, understandsAShortcutWithModifiers) {
  make();
  record(2);
  const auto at = [](double time, std::string_view name, KeyEvent::Phase phase, bool isModifier) {
    return DeviceKeyEvent{{plainKey(name), phase, time, isModifier}, 1, 2};
  };
  capturer_->finish(
      {at(1, "left_command", KeyEvent::Phase::down, true), at(2, "k", KeyEvent::Phase::down, false),
       at(3, "k", KeyEvent::Phase::up, false), at(4, "left_command", KeyEvent::Phase::up, true)});
  EXPECT_EQ(model_->mapping(2)->output,
            (Output{Output::Chord{{*Modifier::fromRawValue("left_command")}, plainKey("k")}}));
}

TEST_F(MappingRecording, bindsAKeyThatHasNotBeenLearned) {
  make();
  record(3);
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(model_->mapping(3), (KeyMapping{3, typing("q"), {}}));
}

TEST_F(MappingRecording, thePadsOwnEventsAreIgnored) {
  make();
  record(1);
  std::vector<DeviceKeyEvent> events = tap(pad, "p");
  for (const DeviceKeyEvent& event : tap(keyboard, "q"))
    events.push_back(event);
  capturer_->finish(events);
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
}

TEST_F(MappingRecording, aDeviceThatSharesOnlyOneIdWithThePadIsAnother) {
  make();
  record(1);
  capturer_->finish(tap({pad.vendorId, 1}, "v"));
  EXPECT_EQ(model_->mapping(1)->output, typing("v"));
  record(1);
  capturer_->finish(tap({1, pad.productId}, "p"));
  EXPECT_EQ(model_->mapping(1)->output, typing("p"));
}

TEST_F(MappingRecording, aPeriodWithoutAShortcutIsFollowedByAnotherAtOnce) {
  make();
  record(1);
  capturer_->finish();
  EXPECT_EQ(capturer_->started.size(), 2U) << "no time has passed, nothing was queued";
  EXPECT_EQ(queue_.pendingCount(), 0U);
  capturer_->finish(tap(pad, "q"));
  EXPECT_EQ(capturer_->started, std::vector(3, Seconds(8)));
  EXPECT_TRUE(*model_->isRecording());
  EXPECT_EQ(completed_, 0);
}

TEST_F(MappingRecording, eachOfThreePeriodsWillDo) {
  for (int silent = 0; silent < 3; ++silent) {
    make();
    record(1);
    for (int i = 0; i < silent; ++i)
      capturer_->finish();
    capturer_->finish(tap(keyboard, "q"));
    EXPECT_EQ(model_->mapping(1)->output, typing("q")) << silent;
    EXPECT_EQ(completed_, silent + 1);
  }
}

TEST_F(MappingRecording, failsAfterThreePeriodsWithoutAShortcut) {
  make();
  record(1);
  for (int i = 0; i < 3; ++i)
    capturer_->finish(tap(pad, "q"));
  EXPECT_EQ(lastError(), noCatch);
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(capturer_->started.size(), 3U);
  EXPECT_TRUE(capturer_->running.empty());
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_TRUE(edited_.empty());
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_TRUE(reports_.empty());
}

TEST_F(MappingRecording, theErrorIsInTheLanguageOfTheMoment) {
  make();
  record(1);
  L10n::setCurrent(AppLanguage::zhHans);
  for (int i = 0; i < 3; ++i)
    capturer_->finish();
  L10n::setCurrent(AppLanguage::en);
  EXPECT_EQ(lastError(), L10n::text(L10n::Key::errNoCatchShortcut, AppLanguage::zhHans));
  EXPECT_NE(lastError(), noCatch);
}

TEST_F(MappingRecording, bindsTheKeyThatIsSelectedByThen) {
  make();
  record(1);
  model_->select(3);
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(mappings(),
            (Mappings{{1, typing("x"), "Cut"}, {2, typing("c"), {}}, {3, typing("q"), {}}}));
}

TEST_F(MappingRecording, endsQuietlyWhenNoKeyIsSelectedForTheNextPeriod) {
  make();
  record(1);
  model_->select(std::nullopt);
  EXPECT_TRUE(*model_->isRecording()) << "until the period has passed";
  capturer_->finish();
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(capturer_->started.size(), 1U);
}

TEST_F(MappingRecording, aShortcutForNoKeyIsLost) {
  make();
  record(1);
  model_->select(std::nullopt);
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_TRUE(edited_.empty());
  EXPECT_TRUE(engine_->applied.empty());
}

TEST_F(MappingRecording, whatTheEngineRefusesIsShownAndReportedAndTheEditStays) {
  engine_->applyError = EngineError::lintFailed("no sense");
  make();
  record(1);
  capturer_->finish(tap(keyboard, "q"));
  EXPECT_EQ(lastError(), "no sense");
  EXPECT_EQ(reports_, Texts{"no sense"});
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
  EXPECT_EQ(edited_, std::vector{*model_->profile()});
  EXPECT_FALSE(*model_->isRecording());
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingRecording, worksWithACapturerThatAnswersWithinTheCall) {
  const auto stub = std::make_shared<StubKeyCapturer>();
  setup_.capturer = stub;
  make();
  record(1);
  EXPECT_EQ(lastError(), noCatch);
  EXPECT_EQ(completed_, 1);
  stub->events = tap(keyboard, "q");
  record(1);
  EXPECT_EQ(model_->mapping(1)->output, typing("q"));
  EXPECT_EQ(completed_, 2);
}

} // namespace
} // namespace trellivar
