#include "tests/viewmodels/discovery_fixture.h"

#include <set>
#include <utility>

namespace trellivar {
namespace {

using namespace words;

struct DiscoveryExemptionTest : DiscoveryFixture {
  using Identities = std::set<std::pair<int, int>>;
  const Identities thePad{{padOnCable.vendorId, padOnCable.productId}};
  const Lines on = forEveryKind("+");
  const Lines off = forEveryKind("-");
};

TEST_F(DiscoveryExemptionTest, coversEveryKindOfDevice) {
  EXPECT_EQ((std::vector(allDeviceKinds.begin(), allDeviceKinds.end())),
            (std::vector{DeviceKind::keyboard, DeviceKind::consumer, DeviceKind::pointing}));
}

TEST_F(DiscoveryExemptionTest, lastsAsLongAsTheCapture) {
  confirm();
  EXPECT_EQ(told(), Lines{});
  capture(1);
  EXPECT_EQ(told(), on);
  capturer->finish(tapOf("c"));
  EXPECT_EQ(told(), off);
}

TEST_F(DiscoveryExemptionTest, isThereBeforeTheCaptureBegins) {
  struct Asking final : KeyCapturing {
    std::function<void()> onCapture;
    void capture(Seconds, Completion) override { onCapture(); }
  };
  const auto asking = std::make_shared<Asking>();
  model = DiscoveryViewModel::make({"P", engine, asking, bus, signatures, {1}});
  confirm();
  Identities ignored;
  asking->onCapture = [&] { ignored = engine->ignored; };
  capture(1);
  EXPECT_EQ(ignored, thePad);
}

TEST_F(DiscoveryExemptionTest, endsBeforeAnythingIsPublished) {
  confirm();
  capture(1);
  Identities during = thePad;
  const Subscription seen =
      model->isCapturing().willChange([&](bool) { during = engine->ignored; });
  capturer->finish();
  EXPECT_EQ(during, Identities{});
}

TEST_F(DiscoveryExemptionTest, isTheOneOfThePadThatWasSeen) {
  model = discovery("M");
  confirm(inModeM);
  capture(1);
  EXPECT_EQ(told(), forEveryKind("+", padInModeM));
  capturer->finish();
  EXPECT_EQ(told(), forEveryKind("-", padInModeM));
}

TEST_F(DiscoveryExemptionTest, endsWithACaptureThatNobodyWantsAnyMore) {
  confirm();
  capture(1);
  model->checkPresence();
  EXPECT_EQ(told(), on);
  capturer->finish(tapOf("c"));
  EXPECT_EQ(told(), off);
}

TEST_F(DiscoveryExemptionTest, endsWithACaptureOfThePadThatWasSeenThen) {
  confirm();
  capture(1);
  told();
  confirm(device("Orlo3-P", 7, 9));
  capturer->finish();
  EXPECT_EQ(told(), off);
}

// Captures that take over from others

TEST_F(DiscoveryExemptionTest, outlastsTheCaptureThatAnotherTookOverFrom) {
  confirm();
  capture(1);
  capture(2);
  capturer->finish();
  EXPECT_EQ(engine->ignored, thePad);
  EXPECT_EQ(told(), on) << "once, for both";
  capturer->finish();
  EXPECT_EQ(told(), off);
}

TEST_F(DiscoveryExemptionTest, outlastsTheCaptureThatIsStale) {
  confirm();
  capture(1);
  model->checkPresence();
  capture(1);
  capturer->finish();
  EXPECT_EQ(engine->ignored, thePad);
  capturer->finish();
  EXPECT_EQ(engine->ignored, Identities{});
}

TEST_F(DiscoveryExemptionTest, isForEachPadThatIsListenedTo) {
  confirm();
  capture(1);
  const DeviceIdentity other{7, 9};
  confirm(device("Orlo3-P", 7, 9));
  told();
  capture(1);
  EXPECT_EQ(told(), forEveryKind("+", other));
  capturer->finish();
  EXPECT_EQ(told(), off);
  EXPECT_EQ(engine->ignored, (Identities{{7, 9}}));
  capturer->finish(taps(other, {key("c")}));
  EXPECT_EQ(told(), forEveryKind("-", other));
  EXPECT_EQ(model->captured()->at(1), signatureOf("c"));
}

TEST_F(DiscoveryExemptionTest, beginsAnewWithTheNextCapture) {
  confirm();
  learn(1, "a");
  told();
  capture(2);
  EXPECT_EQ(told(), on);
  capturer->finish();
  EXPECT_EQ(told(), off);
}

// An engine that refuses

TEST_F(DiscoveryExemptionTest, isAskedForOfEveryKindThoughTheEngineRefuses) {
  confirm();
  engine->ignoreError = EngineError::lintFailed("not now");
  capture(1);
  EXPECT_EQ(told(), on);
  EXPECT_EQ(reports, Lines(3, "not now"));
  EXPECT_TRUE(*model->isCapturing()) << "it listens all the same";
  EXPECT_EQ(*model->lastError(), std::nullopt);
  capturer->finish(tapOf("c"));
  EXPECT_EQ(told(), off);
  EXPECT_EQ(reports, Lines(6, "not now"));
  EXPECT_EQ(*model->step(), press(2));
  model.reset();
  EXPECT_EQ(told(), off);
  EXPECT_EQ(reports, Lines(9, "not now"));
}

// A model that goes

TEST_F(DiscoveryExemptionTest, needsNoEndWhenTheModelGoesWithoutHavingSeenThePad) {
  model->checkPresence();
  model.reset();
  EXPECT_EQ(told(), Lines{});
}

TEST_F(DiscoveryExemptionTest, endsWhenTheModelGoesAfterItHasSeenThePad) {
  confirm();
  model.reset();
  EXPECT_EQ(told(), off);
}

TEST_F(DiscoveryExemptionTest, endsWhenTheModelGoesAfterTheCheckThatFailed) {
  confirm();
  bus->devices = {};
  model->checkPresence();
  model.reset();
  EXPECT_EQ(told(), off);
}

TEST_F(DiscoveryExemptionTest, endsOnceWhenTheModelGoesDuringACapture) {
  confirm();
  capture(1);
  told();
  model.reset();
  EXPECT_EQ(told(), off);
  capturer->finish(tapOf("c"));
  EXPECT_EQ(told(), Lines{}) << "by now it may be another one's";
  EXPECT_EQ(completed, Lines{"1"});
}

TEST_F(DiscoveryExemptionTest, endsWithACapturerThatGoesInTheMiddle) {
  confirm();
  capture(1);
  told();
  capturer->running.clear();
  EXPECT_EQ(told(), off);
  EXPECT_EQ(completed, Lines{});
}

TEST_F(DiscoveryExemptionTest, endsWhenTheModelGoesWithinItsCompletion) {
  confirm();
  const std::weak_ptr weak = model;
  model->captureKey(1, [&] {
    model.reset();
    completed.emplace_back("completed");
  });
  told();
  capturer->finish(tapOf("c"));
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(completed, Lines{"completed"});
  EXPECT_EQ(engine->ignored, Identities{});
  EXPECT_EQ(told().size(), 6U) << "by the capture and by the model";
}

TEST_F(DiscoveryExemptionTest, endsWhenTheModelGoesWithinAnObserver) {
  const std::weak_ptr weak = model;
  confirm();
  const auto letGo = [this](const auto&) { model.reset(); };
  Subscription seen = model->captured().willChange(letGo);
  capture(1);
  capturer->finish(tapOf("c"));
  EXPECT_EQ(model, nullptr);
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(completed, Lines{"1"});
  EXPECT_EQ(engine->ignored, Identities{});
}

TEST_F(DiscoveryExemptionTest, keepsNoModelAliveThroughACapture) {
  const std::weak_ptr weak = model;
  confirm();
  capture(1);
  model.reset();
  EXPECT_TRUE(weak.expired());
}

} // namespace
} // namespace trellivar
