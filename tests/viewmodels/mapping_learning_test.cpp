#include "core/l10n.h"
#include "tests/viewmodels/mapping_fixture.h"

namespace trellivar {
namespace {

/// What comes of the captures of learning.
class MappingLearning : public MappingTest {
protected:
  static constexpr auto noCatch =
      "Didn't catch that key — make sure the device is selected, then press it again.";

  void learnFromSilence(int periods) {
    for (int i = 0; i < periods; ++i)
      learnFrom({});
  }
  std::vector<StoredDeviceSignatures> records() const { return signatures_->records; }
};

TEST_F(MappingLearning, theKeyGetsWhatThePadSent) {
  make();
  learn(3);
  learnFrom(tap(pad, "q"));
  TrellivarDevice expected = unknownPad();
  expected.layout.keys[2].signature = signatureOf("q");
  EXPECT_EQ(*model_->device(), expected);
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingLearning, aKeyThatIsLearnedAnewLosesItsAlternatives) {
  make();
  learn(1);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(signature(0), signatureOf("q"));
  EXPECT_TRUE(model_->device()->layout.keys[0].altSignatures.empty());
}

TEST_F(MappingLearning, keysThatThePadSendsTogetherAreAChord) {
  make();
  learn(3);
  learnFrom({{{plainKey("z"), KeyEvent::Phase::down, 1, false}, pad.vendorId, pad.productId},
             {{plainKey("y"), KeyEvent::Phase::down, 2, false}, pad.vendorId, pad.productId}});
  EXPECT_EQ(signature(2), (KeySignature{{plainKey("z"), plainKey("y")}, true}));
}

TEST_F(MappingLearning, onlyEventsOfThePadCount) {
  make();
  learn(3);
  learnFrom(tap(keyboard, "k"));
  learnFrom(tap({pad.vendorId, 8}, "v"));
  std::vector<DeviceKeyEvent> events = tap({8, pad.productId}, "p");
  for (const DeviceKeyEvent& event : tap(pad, "q"))
    events.push_back(event);
  learnFrom(events);
  EXPECT_EQ(signature(2), signatureOf("q"));
  EXPECT_EQ(capturer_->started.size(), 3U) << "the first two periods heard nothing of the pad";
}

TEST_F(MappingLearning, aPeriodInWhichNothingIsHeardIsFollowedByAnotherAfterThePause) {
  make();
  learn(3);
  EXPECT_EQ(nextCapture(), 0.125);
  queue_.advance(Seconds(12));
  capturer_->finish();
  EXPECT_EQ(capturer_->started.size(), 1U);
  EXPECT_EQ(nextCapture(), 12.25);
  capturer_->finish();
  EXPECT_EQ(nextCapture(), 12.375);
  EXPECT_EQ(capturer_->started, std::vector(3, Seconds(12)));
  EXPECT_EQ(polls_.size(), 1U) << "the engine has let go already";
  EXPECT_TRUE(*model_->isLearning());
  EXPECT_EQ(engine_->ignores, Texts{"+7:9"});
  EXPECT_EQ(completed_, 0);
}

TEST_F(MappingLearning, withoutAPauseThePeriodsFollowOnTheQueueAtOnce) {
  setup_.learnReleaseDelay = Seconds(0);
  make();
  learn(3);
  nextCapture();
  capturer_->finish();
  EXPECT_EQ(capturer_->started.size(), 1U) << "not within the handler";
  EXPECT_EQ(nextCapture(), 0);
}

TEST_F(MappingLearning, eachOfThreePeriodsWillDo) {
  for (int silent = 0; silent < 3; ++silent) {
    make();
    learn(3);
    learnFromSilence(silent);
    learnFrom(tap(pad, "q"));
    EXPECT_EQ(signature(2), signatureOf("q")) << silent;
    EXPECT_EQ(lastError(), std::nullopt);
    EXPECT_EQ(completed_, silent + 1);
  }
}

TEST_F(MappingLearning, failsAfterThreePeriodsOfSilence) {
  make();
  learn(3);
  learnFromSilence(3);
  EXPECT_EQ(lastError(), noCatch);
  EXPECT_FALSE(*model_->isLearning());
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_EQ(completed_, 1);
  EXPECT_EQ(queue_.pendingCount(), 0U);
  EXPECT_EQ(capturer_->started.size(), 3U);
}

TEST_F(MappingLearning, aFailureChangesNothing) {
  make();
  learn(1);
  learnFromSilence(3);
  EXPECT_EQ(*model_->device(), unknownPad());
  EXPECT_EQ(signatures_->saves, 0);
  EXPECT_TRUE(engine_->applied.empty());
  EXPECT_TRUE(reports_.empty());
}

TEST_F(MappingLearning, afterAFailureThereAreThreePeriodsAgain) {
  make();
  learn(3);
  learnFromSilence(3);
  learn(3);
  EXPECT_EQ(lastError(), std::nullopt);
  learnFromSilence(2);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(signature(2), signatureOf("q"));
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9", "+7:9", "-7:9"}));
  EXPECT_EQ(completed_, 2);
}

TEST_F(MappingLearning, theErrorIsInTheLanguageOfTheMoment) {
  make();
  learn(3);
  L10n::setCurrent(AppLanguage::zhHans);
  learnFromSilence(3);
  L10n::setCurrent(AppLanguage::en);
  EXPECT_EQ(lastError(), L10n::text(L10n::Key::errNoCatchKey, AppLanguage::zhHans));
  EXPECT_NE(lastError(), noCatch);
}

TEST_F(MappingLearning, theKeyThatWasSelectedAtFirstIsLearned) {
  make();
  learn(3);
  model_->select(1);
  learnFrom({});
  model_->select(std::nullopt);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(signature(0), signatureOf("a"));
  EXPECT_EQ(signature(2), signatureOf("q"));
  EXPECT_EQ(*model_->selectedKeyId(), std::nullopt);
}

TEST_F(MappingLearning, aKeyThatThePadLacksIsLearnedInVain) {
  make();
  learn(99);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(*model_->device(), unknownPad());
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingLearning, isNoEditOfTheProfile) {
  make();
  learn(1);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(*model_->profile(), setup_.profile);
  EXPECT_TRUE(edited_.empty());
}

TEST_F(MappingLearning, theEngineGetsTheNewSignatureOnce) {
  make();
  learn(3);
  learnFrom(tap(pad, "q"));
  ASSERT_EQ(engine_->applied.size(), 1U);
  EXPECT_EQ(engine_->applied[0],
            (std::vector{MappingSet{*model_->device(), setup_.profile, false}}));
}

TEST_F(MappingLearning, allSignaturesOfThePadAreStored) {
  make();
  learn(3);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(records(), (std::vector{StoredDeviceSignatures{
                           pad.vendorId,
                           pad.productId,
                           {{1, signatureOf("a")}, {2, signatureOf("b")}, {3, signatureOf("q")}},
                           std::nullopt}}));
  EXPECT_EQ(signatures_->saves, 1);
}

TEST_F(MappingLearning, theRecordReplacesThoseOfThePadInEveryMode) {
  setup_.device.layout.keys.resize(1);
  make();
  const StoredDeviceSignatures vendor{pad.vendorId, 1, {{1, signatureOf("v")}}, "P"};
  const StoredDeviceSignatures product{1, pad.productId, {{1, signatureOf("p")}}, {}};
  signatures_->records = {{pad.vendorId, pad.productId, {{1, signatureOf("x")}}, "M"},
                          vendor,
                          {pad.vendorId, pad.productId, {{1, signatureOf("y")}}, {}},
                          product,
                          {pad.vendorId, pad.productId, {{1, signatureOf("z")}}, "P"}};
  learn(1);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(records(),
            (std::vector{vendor,
                         product,
                         {pad.vendorId, pad.productId, {{1, signatureOf("q")}}, std::nullopt}}))
      << "and goes to the end, behind those of others";
}

TEST_F(MappingLearning, aPadWithoutAnySignatureLeavesNoRecord) {
  setup_.device.layout.keys = {{1, 0, 0, {}, {}}};
  make();
  const StoredDeviceSignatures other{1, 2, {{1, signatureOf("v")}}, "P"};
  signatures_->records = {other, {pad.vendorId, pad.productId, {{1, signatureOf("x")}}, {}}};
  learn(99);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(records(), std::vector{other});
  EXPECT_EQ(signatures_->saves, 1);
}

TEST_F(MappingLearning, withoutAStoreTheEngineStillGetsWhatWasLearned) {
  setup_.signatures = nullptr;
  make();
  learn(3);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(signature(2), signatureOf("q"));
  ASSERT_EQ(engine_->applied.size(), 1U);
  EXPECT_EQ(engine_->applied[0][0].device, *model_->device());
  EXPECT_EQ(completed_, 1);
}

TEST_F(MappingLearning, anEngineThatRefusesIsReportedAndTheKeyStaysLearned) {
  engine_->applyError = EngineError::lintFailed("no sense");
  make();
  learn(3);
  learnFrom(tap(pad, "q"));
  EXPECT_EQ(lastError(), std::nullopt);
  EXPECT_EQ(reports_, Texts{"no sense"});
  EXPECT_EQ(signature(2), signatureOf("q"));
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records()[0].keySignatures.back(), (StoredKeySignature{3, signatureOf("q")}));
  EXPECT_EQ(engine_->ignores, (Texts{"+7:9", "-7:9"}));
  EXPECT_EQ(completed_, 1);
}

} // namespace
} // namespace trellivar
