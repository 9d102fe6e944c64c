#include "engine/device_enumerating.h"
#include "engine/device_identifying.h"
#include "engine/hotplug_watching.h"
#include "engine/key_capturing.h"
#include "engine/remap_engine.h"
#include "engine/sender_resolving.h"

#include <gtest/gtest.h>

#include <string>

namespace trellivar {
namespace {

TEST(Stubs, theEnumeratorListsWhatItIsGiven) {
  StubDeviceEnumerator enumerator;
  EXPECT_TRUE(enumerator.connectedKeyboards().empty());
  enumerator.devices = {{"Pad", "Pad ", 7, 9}};
  EXPECT_EQ(enumerator.connectedKeyboards(), enumerator.devices);
}

TEST(Stubs, theIdentifierAnswersWithinTheCall) {
  StubDeviceIdentifier identifier;
  std::optional<IdentifiedDevice> answer = IdentifiedDevice{};
  const auto take = [&](std::optional<IdentifiedDevice> device) { answer = std::move(device); };
  identifier.identifyNextKeyDevice(Seconds(5), take);
  EXPECT_EQ(answer, std::nullopt);
  identifier.result = IdentifiedDevice{"Pad", 7, 9};
  identifier.identifyNextKeyDevice(Seconds(5), take);
  EXPECT_EQ(answer, identifier.result);
}

TEST(Stubs, theCapturerReplaysWhatItIsGivenWithinTheCall) {
  StubKeyCapturer capturer;
  capturer.events = {{{{KeyName("a"), Key::Kind::keyCode}, KeyEvent::Phase::down, 0, false}, 7, 9}};
  std::vector<DeviceKeyEvent> heard;
  capturer.capture(Seconds(5), [&](std::vector<DeviceKeyEvent> events) { heard = events; });
  EXPECT_EQ(heard, capturer.events);
}

TEST(Stubs, theResolverAnswersTheSameForEveryDevice) {
  StubSenderResolver resolver;
  resolver.ids = {1, -7};
  EXPECT_EQ(resolver.senderIds(7, 9), resolver.ids);
  EXPECT_EQ(resolver.senderIds(0, 0), resolver.ids);
}

TEST(Stubs, theEngineCountsAsPermittedAndInterceptsNothing) {
  StubRemapEngine engine;
  engine.apply({});
  engine.applyAll({});
  engine.setDeviceIgnored(true, 7, 9);
  EXPECT_EQ(engine.status("Pad"), (EngineStatus{true, true, false}));
  EXPECT_TRUE(engine.isDeviceReleased("Pad"));
  EXPECT_EQ(engine.onPadKeysChanged([](auto) { FAIL() << "it sees no keys"; }), nullptr);
}

/// Remembers which device is to be ignored.
class NotingEngine final : public RemapEngine {
public:
  void apply(const MappingSet& /*set*/) override {}
  void applyAll(std::span<const MappingSet> /*sets*/) override {}
  EngineStatus status(std::string_view /*trellivarDeviceName*/) override { return {}; }
  using RemapEngine::setDeviceIgnored;
  void setDeviceIgnored(bool ignored, int vendorId, int productId) override {
    noted += (ignored ? "+" : "-") + std::to_string(vendorId) + ":" + std::to_string(productId);
  }
  bool isDeviceReleased(std::string_view /*named*/) override { return false; }

  std::string noted;
};

TEST(RemapEngine, ignoresAWholeDeviceUnlessItCanTellKindsApart) {
  NotingEngine engine;
  for (const DeviceKind kind : allDeviceKinds)
    engine.setDeviceIgnored(kind != DeviceKind::pointing, 7, 9, kind);
  EXPECT_EQ(engine.noted, "+7:9+7:9-7:9");
}

TEST(RemapEngine, kindsComeInOrder) {
  EXPECT_EQ(allDeviceKinds,
            (std::array{DeviceKind::keyboard, DeviceKind::consumer, DeviceKind::pointing}));
}

class HotplugWatchingTest : public testing::Test {
protected:
  std::shared_ptr<void> note(const std::string& name) {
    return watcher_.onDevicesChanged([this, name] { told_ += name; });
  }

  StubHotplugWatcher watcher_;
  std::string told_;
};

TEST_F(HotplugWatchingTest, tellsEveryoneInTheOrderInWhichTheyAsked) {
  const auto first = note("a");
  const auto second = note("b");
  watcher_.start();
  EXPECT_EQ(told_, "");
  watcher_.notify();
  watcher_.notify();
  EXPECT_EQ(told_, "abab");
}

TEST_F(HotplugWatchingTest, nobodyIsToldAfterTheHandleIsGone) {
  const auto first = note("a");
  auto second = note("b");
  second.reset();
  watcher_.notify();
  EXPECT_EQ(told_, "a");
}

TEST_F(HotplugWatchingTest, whoAsksWhileOthersAreToldIsToldNextTime) {
  std::shared_ptr<void> later;
  const auto first = watcher_.onDevicesChanged([&] {
    if (!later) later = note("late");
  });
  watcher_.notify();
  EXPECT_EQ(told_, "");
  watcher_.notify();
  EXPECT_EQ(told_, "late");
}

TEST_F(HotplugWatchingTest, aHandleMayGoWhileOthersAreTold) {
  std::shared_ptr<void> second;
  std::shared_ptr<void> first = watcher_.onDevicesChanged([&] {
    told_ += "a";
    first.reset();
    second.reset();
  });
  second = note("b");
  watcher_.notify();
  watcher_.notify();
  EXPECT_EQ(told_, "a");
}

} // namespace
} // namespace trellivar
