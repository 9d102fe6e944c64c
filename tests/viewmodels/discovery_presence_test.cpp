#include "tests/viewmodels/discovery_fixture.h"
#include "tests/viewmodels/language_change.h"

namespace trellivar {
namespace {

using namespace words;

constexpr auto notSeenP = "Couldn't see the pad in P mode — flip the switch to P and try again.";

struct DiscoveryPresenceTest : DiscoveryFixture {
  /// The identity that a check finds among these devices; none when it fails.
  std::optional<DeviceIdentity> foundAmong(const std::string& modeId, Devices devices) {
    bus->devices = std::move(devices);
    const auto each = discovery(modeId);
    each->checkPresence();
    EXPECT_EQ(*each->presenceConfirmed(), each->deviceIdentity()->has_value());
    return *each->deviceIdentity();
  }
};

TEST_F(DiscoveryPresenceTest, isUnknownAtFirst) {
  EXPECT_EQ(model->modeId(), "P");
  EXPECT_EQ(model->keyIds(), (std::vector{1, 2, 3}));
  EXPECT_EQ(*model->step(), flipSwitch);
  EXPECT_FALSE(*model->presenceConfirmed());
  EXPECT_EQ(*model->deviceIdentity(), std::nullopt);
  EXPECT_TRUE(model->captured()->empty());
  EXPECT_FALSE(*model->isCapturing());
  EXPECT_EQ(*model->lastError(), std::nullopt);
}

TEST_F(DiscoveryPresenceTest, asksForTheFirstKeyOnceThePadIsSeen) {
  model = discovery("P", {7, 5});
  bus->devices = {ordinaryKeyboard, onCable};
  model->checkPresence();
  EXPECT_EQ(*model->step(), press(7));
  EXPECT_TRUE(*model->presenceConfirmed());
  EXPECT_EQ(*model->deviceIdentity(), padOnCable);
  EXPECT_EQ(*model->lastError(), std::nullopt);
  EXPECT_EQ(told(), Lines{}) << "the engine goes on until something is captured";
}

TEST_F(DiscoveryPresenceTest, goesToReviewWhenThereIsNothingToAskFor) {
  model = discovery("P", {});
  confirm();
  EXPECT_EQ(*model->step(), review);
}

// By the registered identity

TEST_F(DiscoveryPresenceTest, isToldByTheFirstIdentityOfTheMode) {
  EXPECT_EQ(foundAmong("P", {ordinaryKeyboard, onCable}), padOnCable);
  EXPECT_EQ(foundAmong("M", {ordinaryKeyboard, inModeM}), padInModeM);
  EXPECT_EQ(foundAmong("P", {device("", 0x4C4A, 0x4155)}), padOnCable) << "whatever its name";
}

TEST_F(DiscoveryPresenceTest, prefersTheRegisteredIdentityToAName) {
  EXPECT_EQ(foundAmong("P", {device("Orlo3-P", 7, 8), onCable}), padOnCable);
}

TEST_F(DiscoveryPresenceTest, isNotToldByAnotherIdentityOfTheRegistry) {
  EXPECT_EQ(foundAmong("P", {overBluetooth}), std::nullopt);
  EXPECT_EQ(foundAmong("P", {device("Orlo3", 0x05AC, 0x022C)}), std::nullopt);
  EXPECT_EQ(foundAmong("P", {inModeM}), std::nullopt);
  EXPECT_EQ(foundAmong("M", {onCable}), std::nullopt);
  EXPECT_EQ(foundAmong("R", {onCable, inModeM}), std::nullopt);
}

TEST_F(DiscoveryPresenceTest, needsBothIdsToBeThoseOfTheMode) {
  const Devices swapped{device("Orlo3-P", 7, 9), device("", 0x4C4A, 0x4154),
                        device("", 0x4C4B, 0x4155)};
  EXPECT_EQ(foundAmong("P", swapped), (DeviceIdentity{7, 9})) << "so the name decides";
}

// By name

TEST_F(DiscoveryPresenceTest, isToldByTheNameOfTheModeWithoutRegardToCase) {
  for (const char* name : {"Orlo3-R", "orlo3-r", "ORLO3-R", "oRLO3-r"})
    EXPECT_EQ(foundAmong("R", {onCable, device(name, 7, 9)}), (DeviceIdentity{7, 9})) << name;
  EXPECT_EQ(foundAmong("P", {device("Orlo3-P", 0x04E8, 0x7021)}), (DeviceIdentity{0x04E8, 0x7021}))
      << "by its name also under another identity of the registry";
}

TEST_F(DiscoveryPresenceTest, takesTheFirstDeviceOfThatName) {
  EXPECT_EQ(foundAmong("R", {device("Orlo3-R", 2, 2), device("orlo3-r", 1, 1)}),
            (DeviceIdentity{2, 2}));
}

TEST_F(DiscoveryPresenceTest, prefersTheNameToAnUnknownIdentity) {
  EXPECT_EQ(foundAmong("R", {device("Keyboard", 1, 1), device("Orlo3-R", 7, 9)}),
            (DeviceIdentity{7, 9}));
}

TEST_F(DiscoveryPresenceTest, needsTheWholeNameOfThatMode) {
  for (const char* name : {"Orlo3", "Orlo3-M", "Orlo3-P2", "Orlo3 P", " Orlo3-P", "Orlo3-", "P"}) {
    EXPECT_EQ(foundAmong("P", {device("First", 1, 1), device(name, 0x05AC, 0x022C)}),
              (DeviceIdentity{1, 1}))
        << name;
  }
}

// By elimination

TEST_F(DiscoveryPresenceTest, mayBeAnyIdentityThatTheRegistryDoesNotKnow) {
  EXPECT_EQ(foundAmong("M", {onCable, device("New firmware", 1, 1), device("Other", 2, 2)}),
            (DeviceIdentity{1, 1}));
  EXPECT_EQ(foundAmong("P", {device("Orlo3-M", 3, 3)}), (DeviceIdentity{3, 3}))
      << "even if its name tells another mode";
}

TEST_F(DiscoveryPresenceTest, mayBeAnIdentityEvenOfAModeThatTheRegistryLacks) {
  EXPECT_EQ(foundAmong("X", {onCable, device("Orlo3-X", 7, 9)}), (DeviceIdentity{7, 9}));
  EXPECT_EQ(foundAmong("X", {onCable}), std::nullopt);
}

// Failures

TEST_F(DiscoveryPresenceTest, saysWhichModeWasNotSeen) {
  model->checkPresence();
  EXPECT_EQ(*model->lastError(), notSeenP);
  EXPECT_EQ(*model->step(), flipSwitch);
  EXPECT_FALSE(*model->presenceConfirmed());
  EXPECT_EQ(*model->deviceIdentity(), std::nullopt);

  model = discovery("R");
  const LanguageChange chinese(AppLanguage::zhHans);
  model->checkPresence();
  EXPECT_EQ(*model->lastError(), "未检测到处于 R 模式的键盘 — 请将开关拨到 R 后重试。");
}

TEST_F(DiscoveryPresenceTest, isImpossibleWithoutThePadInTheRegistry) {
  std::vector<KnownDevice> registry = KnownDevices::all();
  registry.front().name = "Orlo4";
  for (const auto& [language, message] :
       {std::pair{AppLanguage(AppLanguage::en), "Orlo3 not in device registry"},
        std::pair{AppLanguage(AppLanguage::zhHans), "设备注册表中没有 Orlo3"}}) {
    const LanguageChange change(language);
    for (const std::span<const KnownDevice> without :
         {std::span<const KnownDevice>(), std::span<const KnownDevice>(registry)}) {
      bus->devices = {onCable, device("Orlo3-P", 1, 1)};
      model = DiscoveryViewModel::make({"P", engine, capturer, bus, signatures, {1}, {}, without});
      model->checkPresence();
      EXPECT_EQ(*model->lastError(), message);
      EXPECT_FALSE(*model->presenceConfirmed());
      EXPECT_EQ(*model->deviceIdentity(), std::nullopt);
      EXPECT_EQ(*model->step(), flipSwitch);
    }
  }
}

TEST_F(DiscoveryPresenceTest, looksForThePadBehindOthersInTheRegistry) {
  std::vector<KnownDevice> registry = KnownDevices::all();
  registry.insert(registry.begin(), {"Orlo9", {{"P", {{{0x4C4A, 1}, {}, true}}}}});
  bus->devices = {device("", 0x4C4A, 1), onCable};
  model = DiscoveryViewModel::make({"P", engine, capturer, bus, signatures, {1}, {}, registry});
  model->checkPresence();
  EXPECT_EQ(*model->deviceIdentity(), padOnCable);
}

TEST_F(DiscoveryPresenceTest, isForgottenByACheckThatFails) {
  confirm();
  bus->devices = {};
  model->checkPresence();
  EXPECT_FALSE(*model->presenceConfirmed());
  EXPECT_EQ(*model->lastError(), notSeenP);
  EXPECT_EQ(*model->deviceIdentity(), padOnCable) << "what is captured belongs to it";
  EXPECT_EQ(*model->step(), press(1));
}

TEST_F(DiscoveryPresenceTest, beginsAnewWithTheNextCheck) {
  model->checkPresence();
  confirm();
  EXPECT_EQ(*model->lastError(), std::nullopt);
  learn(1, "c");
  EXPECT_EQ(*model->step(), press(2));
  confirm(device("Orlo3-P", 7, 9));
  EXPECT_EQ(*model->step(), press(1));
  EXPECT_EQ(*model->deviceIdentity(), (DeviceIdentity{7, 9}));
  EXPECT_EQ(model->captured()->count(1), 1U) << "what is captured stays";
}

TEST_F(DiscoveryPresenceTest, mayBeLetGoOfByAnObserverWhileTheCallerHoldsIt) {
  bus->devices = {onCable};
  const Subscription seen = model->step().willChange([this](const Step&) { model.reset(); });
  const auto caller = model;
  caller->checkPresence();
  EXPECT_EQ(model, nullptr);
  EXPECT_EQ(*caller->step(), press(1));
}

} // namespace
} // namespace trellivar
