#include "tests/viewmodels/discovery_fixture.h"
#include "tests/viewmodels/language_change.h"

#include <map>

namespace trellivar {
namespace {

using namespace words;

constexpr auto notCaught = "Didn't catch that key — press it again.";

struct DiscoveryCaptureTest : DiscoveryFixture {};

TEST_F(DiscoveryCaptureTest, needsAPadThatHasBeenSeen) {
  capture(1);
  EXPECT_EQ(completed, Lines{"1"});
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_TRUE(capturer->started.empty());
  EXPECT_EQ(told(), Lines{});
}

TEST_F(DiscoveryCaptureTest, listensForTwelveSeconds) {
  confirm();
  capture(1);
  EXPECT_EQ(capturer->started, std::vector{Seconds(12.0)});
  EXPECT_TRUE(*model->isCapturing());
  EXPECT_EQ(completed, Lines{});
  EXPECT_EQ(*model->step(), press(1));
}

TEST_F(DiscoveryCaptureTest, keepsWhatThePadSendsAndAsksForTheNextKey) {
  confirm();
  capture(1);
  capturer->finish(taps(padOnCable, {key("c"), key("mute", Key::Kind::consumerKeyCode)}));
  const KeySignature expected{{key("c"), key("mute", Key::Kind::consumerKeyCode)}, false};
  EXPECT_EQ(*model->captured(), (std::map<int, KeySignature>{{1, expected}}));
  EXPECT_EQ(*model->step(), press(2));
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_EQ(*model->lastError(), std::nullopt);
  EXPECT_EQ(completed, Lines{"1"});
}

TEST_F(DiscoveryCaptureTest, recognisesAChord) {
  confirm();
  capture(1);
  capturer->finish({event(padOnCable, key("left_control"), KeyEvent::Phase::down),
                    event(padOnCable, key("c"), KeyEvent::Phase::down)});
  EXPECT_EQ(model->captured()->at(1), (KeySignature{{key("left_control"), key("c")}, true}));
}

TEST_F(DiscoveryCaptureTest, hearsNoOtherDevice) {
  confirm();
  capture(1);
  Events events = taps({1, 2}, {key("x")});
  const Events pad = tapOf("c");
  events.insert(events.end(), pad.begin(), pad.end());
  capturer->finish(events);
  EXPECT_EQ(model->captured()->at(1), signatureOf("c"));
}

TEST_F(DiscoveryCaptureTest, completesAfterEverythingIsPublished) {
  confirm();
  Lines seen;
  model->captureKey(1, [&] {
    EXPECT_EQ(model->captured()->count(1), 1U);
    EXPECT_EQ(*model->step(), press(2));
    EXPECT_FALSE(*model->isCapturing());
    EXPECT_EQ(engine->ignored.size(), 0U);
    seen.emplace_back("completed");
  });
  capturer->finish(tapOf("c"));
  EXPECT_EQ(seen, Lines{"completed"});
}

TEST_F(DiscoveryCaptureTest, mayEndWithinTheCallThatStartsIt) {
  const auto stub = std::make_shared<StubKeyCapturer>();
  stub->events = tapOf("c");
  model = DiscoveryViewModel::make({"P", engine, stub, bus, signatures, {1, 2}});
  confirm();
  capture(1);
  EXPECT_EQ(*model->step(), press(2));
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_EQ(completed, Lines{"1"});
  EXPECT_TRUE(engine->ignored.empty());
}

// Nothing caught

TEST_F(DiscoveryCaptureTest, asksForTheSameKeyAgainWhenThePadWasSilent) {
  confirm();
  for (const Events& nothing : {Events{}, taps({1, 2}, {key("c")}),
                                Events{event(padOnCable, key("c"), KeyEvent::Phase::up)}}) {
    completed.clear();
    capture(1);
    EXPECT_EQ(*model->lastError(), std::nullopt) << "a new capture begins without an error";
    capturer->finish(nothing);
    EXPECT_EQ(*model->lastError(), notCaught);
    EXPECT_EQ(*model->step(), press(1));
    EXPECT_TRUE(model->captured()->empty());
    EXPECT_FALSE(*model->isCapturing());
    EXPECT_EQ(completed, Lines{"1"});
  }
  EXPECT_EQ(capturer->started.size(), 3U) << "it is not tried again by itself";
  EXPECT_TRUE(capturer->running.empty());
}

TEST_F(DiscoveryCaptureTest, saysSoInTheLanguageOfTheUser) {
  confirm();
  const LanguageChange chinese(AppLanguage::zhHans);
  capture(1);
  capturer->finish();
  EXPECT_EQ(*model->lastError(), "未捕捉到按键 — 请再按一次。");
}

TEST_F(DiscoveryCaptureTest, keepsWhatItKnewOfAKeyThatWasNotCaughtAgain) {
  confirm();
  learn(1, "c");
  capture(1);
  capturer->finish();
  EXPECT_EQ(model->captured()->at(1), signatureOf("c"));
  EXPECT_EQ(*model->step(), press(2));
}

// From key to key

TEST_F(DiscoveryCaptureTest, asksForTheKeysInTheOrderGivenAndThenForReview) {
  model = discovery("P", {5, 2, 9});
  confirm();
  EXPECT_EQ(*model->step(), press(5));
  learn(5, "a");
  EXPECT_EQ(*model->step(), press(2));
  learn(2, "b");
  EXPECT_EQ(*model->step(), press(9));
  learn(9, "c");
  EXPECT_EQ(*model->step(), review);
  EXPECT_EQ(*model->captured(),
            (std::map<int, KeySignature>{
                {2, signatureOf("b")}, {5, signatureOf("a")}, {9, signatureOf("c")}}));
}

TEST_F(DiscoveryCaptureTest, goesOnAfterTheKeyThatWasCaptured) {
  confirm();
  learn(2, "b");
  EXPECT_EQ(*model->step(), press(3));
  learn(1, "a");
  EXPECT_EQ(*model->step(), press(2));
}

TEST_F(DiscoveryCaptureTest, goesToReviewAfterAKeyThatIsNotAskedFor) {
  confirm();
  learn(8, "b");
  EXPECT_EQ(*model->step(), review);
  EXPECT_EQ(model->captured()->at(8), signatureOf("b"));
}

TEST_F(DiscoveryCaptureTest, goesToReviewWithoutKeys) {
  model = discovery("P", {});
  confirm();
  learn(1, "a");
  EXPECT_EQ(*model->step(), review);
}

TEST_F(DiscoveryCaptureTest, replacesWhatWasCapturedBefore) {
  confirm();
  learn(1, "a");
  learn(1, "b");
  EXPECT_EQ(*model->captured(), (std::map<int, KeySignature>{{1, signatureOf("b")}}));
}

// Stale captures

TEST_F(DiscoveryCaptureTest, countsForNothingAfterAnotherCheck) {
  confirm();
  capture(1);
  model->checkPresence();
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_EQ(completed, Lines{});
  capturer->finish(tapOf("c"));
  EXPECT_TRUE(model->captured()->empty());
  EXPECT_EQ(*model->step(), press(1));
  EXPECT_EQ(*model->lastError(), std::nullopt);
  EXPECT_EQ(completed, Lines{"1"});
}

TEST_F(DiscoveryCaptureTest, countsForNothingAfterACheckThatFails) {
  confirm();
  capture(1);
  bus->devices = {};
  model->checkPresence();
  const auto error = *model->lastError();
  capturer->finish();
  EXPECT_EQ(*model->lastError(), error) << "the error is that of the check";
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_EQ(completed, Lines{"1"});
}

TEST_F(DiscoveryCaptureTest, leavesTheCaptureOfTheNewCheckAlone) {
  confirm();
  capture(1);
  model->checkPresence();
  capture(2);
  capturer->finish(tapOf("x"));
  EXPECT_TRUE(*model->isCapturing());
  EXPECT_TRUE(model->captured()->empty());
  capturer->finish(tapOf("c"));
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_EQ(*model->captured(), (std::map<int, KeySignature>{{2, signatureOf("c")}}));
  EXPECT_EQ(completed, (Lines{"1", "2"}));
}

TEST_F(DiscoveryCaptureTest, countsForItsOwnKeyWhenAnotherTookOver) {
  confirm();
  capture(1);
  capture(2);
  capturer->finish(tapOf("a"));
  EXPECT_EQ(*model->step(), press(2));
  capturer->finish(tapOf("b"));
  EXPECT_EQ(*model->captured(),
            (std::map<int, KeySignature>{{1, signatureOf("a")}, {2, signatureOf("b")}}));
  EXPECT_EQ(*model->step(), press(3));
  EXPECT_EQ(completed, (Lines{"1", "2"}));
}

} // namespace
} // namespace trellivar
