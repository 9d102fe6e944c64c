#include "simulator/desk/manual_queue.h"
#include "tests/viewmodels/device_words.h"
#include "tests/viewmodels/held_capturer.h"
#include "tests/viewmodels/portable_write_fixture.h"
#include "tests/viewmodels/profile_words.h"
#include "tests/viewmodels/recording_engine.h"
#include "tests/viewmodels/recording_signatures.h"
#include "viewmodels/app_root.h"
#include "viewmodels/user_defaults.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using namespace words;

/// Remembers nothing of start at login, so that it seems to be the first time ever.
struct ForgetfulDefaults final : UserDefaults {
  std::optional<std::string> string(std::string_view) const override { return std::nullopt; }
  bool boolean(std::string_view key) const override { return hasFinished && key == finishedKey; }
  void setString(std::string_view, std::string_view) override {}
  void setBoolean(std::string_view key, bool value) override {
    if (key == finishedKey) hasFinished = value;
  }
  std::vector<std::string> preferredLanguages() const override { return {"en"}; }

  static constexpr std::string_view finishedKey = "hasFinishedOnboarding";
  bool hasFinished = false;
};

struct CountingWatcher final : HotplugWatching {
  int starts = 0;
  void start() override { ++starts; }
};

/// The models of a main window that is not shown yet; every part around them is the test's.
struct AppRootTest : testing::Test {
  using Lines = std::vector<std::string>;
  using Times = std::vector<double>;

  desk::ManualQueue queue;
  HeldBackground background;
  std::shared_ptr<RecordingEngine> engine = std::make_shared<RecordingEngine>();
  std::shared_ptr<StubDeviceEnumerator> bus = std::make_shared<StubDeviceEnumerator>();
  std::shared_ptr<CountingWatcher> watcher = std::make_shared<CountingWatcher>();
  std::shared_ptr<SettingsStore> settings =
      std::make_shared<SettingsStore>(std::make_shared<ForgetfulDefaults>());
  Times taps;                              ///< when the engine was asked to install its tap
  std::vector<std::size_t> statusesBefore; ///< how often it had been asked for its status by then
  Lines reports;
  std::vector<bool> loginItem; ///< each switch of start at login

  std::shared_ptr<ProfileListViewModel> profiles = std::make_shared<ProfileListViewModel>(
      std::nullopt, std::span<const Profile>(), [](std::string_view) {});
  AppRoot root{{.queue = queue,
                .background = background,
                .engine = engine,
                .startTap =
                    [this] {
                      statusesBefore.push_back(engine->statusNames.size());
                      taps.push_back(now());
                    },
                .capturer = std::make_shared<HeldCapturer>(),
                .enumerator = bus,
                .hotplug = watcher,
                .link = std::make_shared<ScriptedLink>(),
                .signatures = std::make_shared<RecordingSignatures>(),
                .settings = settings,
                .report = [this](std::string_view what) { reports.emplace_back(what); }},
               profiles};

  AppRootTest() {
    settings->onStartAtLoginChanged([this](bool isOn) { loginItem.push_back(isOn); });
  }

  double now() const { return queue.now().time_since_epoch().count(); }
  void plug(const ConnectedDevice& pad) {
    bus->devices = {pad};
    root.devices().refresh();
  }
  const TrellivarDevice& worksOn() { return *root.mapping().device(); }
};

// What happens at the start

TEST_F(AppRootTest, doesNothingBeforeItStarts) {
  queue.advance(Seconds(10));
  EXPECT_EQ(taps, Times{});
  EXPECT_EQ(engine->statusNames, Lines{});
  EXPECT_EQ(watcher->starts, 0);
}

TEST_F(AppRootTest, startsToWatchForDevices) {
  root.start();
  EXPECT_EQ(watcher->starts, 1);
}

TEST_F(AppRootTest, looksForDevicesAtEveryStart) {
  root.start();
  EXPECT_EQ(*root.devices().devices(), Devices{});
  root.stop();
  bus->devices = {inModeM}; // and nobody tells
  root.start();
  EXPECT_EQ(*root.devices().devices(), Devices{inModeM});
  EXPECT_EQ(worksOn().identity(), inModeM.id());
}

TEST_F(AppRootTest, givesTheEngineTheProfilesOfTheModesWhoseKeysAreKnown) {
  Profile m = *profiles->profile("M");
  m.mappings = {copy};
  profiles->update(m);
  engine->applied.clear();
  root.start();
  ASSERT_FALSE(engine->applied.empty());
  std::set<std::string> given;
  for (const MappingSet& set : engine->applied.back()) {
    EXPECT_EQ(set.profile, *profiles->profile(set.profile.name));
    given.insert(set.profile.name);
  }
  EXPECT_EQ(given, (std::set<std::string>{"M", "P"}));
}

// What is worked on

TEST_F(AppRootTest, takesAnotherNameUnderTheSameIdentityForAnotherDevice) {
  root.start();
  plug(device("Orlo3", 0x05AC, 0x0220));
  EXPECT_EQ(worksOn().name, "Orlo3");
  const std::size_t applied = engine->applied.size();
  plug(device("Orlo3-R", 0x05AC, 0x0220));
  EXPECT_EQ(worksOn().name, "Orlo3-R");
  EXPECT_EQ(worksOn().identity(), inModeM.id());
  EXPECT_GT(engine->applied.size(), applied) << "the engine is told";
}

TEST_F(AppRootTest, goesOnWithTheSameDevice) {
  root.start();
  plug(inModeM);
  root.mapping().select(2);
  plug(inModeM);
  bus->devices = {};
  root.devices().refresh();
  plug(inModeM);
  EXPECT_EQ(*root.mapping().selectedKeyId(), 2);
}

// What is looked at again and again

TEST_F(AppRootTest, looksAtThePermissionsAtOnceAndEveryOneAndAHalfSeconds) {
  root.start();
  EXPECT_EQ(taps, Times{0});
  queue.advance(Seconds(4.75));
  EXPECT_EQ(taps, (Times{0, 1.5, 3, 4.5}));
  EXPECT_EQ(engine->statusNames, Lines(4, "Orlo3"));
  EXPECT_EQ(statusesBefore, (std::vector<std::size_t>{0, 1, 2, 3}))
      << "which may differ with the tap";
}

TEST_F(AppRootTest, asksForThePadByTheNameOfItsModelWhateverIsAttached) {
  bus->devices = {overBluetooth};
  root.start();
  EXPECT_EQ(worksOn().name, "Any name");
  EXPECT_EQ(engine->statusNames, Lines{"Orlo3"});
}

TEST_F(AppRootTest, showsWhatThePermissionsAreNow) {
  root.start();
  EXPECT_FALSE(root.onboarding().steps()->canContinue);
  engine->currentStatus = {true, true, false};
  queue.advance(Seconds(1.25));
  EXPECT_FALSE(root.onboarding().steps()->canContinue);
  queue.advance(Seconds(0.25));
  EXPECT_TRUE(root.onboarding().steps()->canContinue);
}

TEST_F(AppRootTest, looksNoMoreOnceItIsStopped) {
  root.start();
  queue.advance(Seconds(1.5));
  root.stop();
  engine->currentStatus = {true, true, true};
  queue.advance(Seconds(10));
  EXPECT_EQ(engine->statusNames, Lines(2, "Orlo3"));
  EXPECT_FALSE(root.onboarding().steps()->canContinue);
  EXPECT_EQ(loginItem, std::vector<bool>{});
  root.start();
  EXPECT_EQ(engine->statusNames, Lines(3, "Orlo3"));
  EXPECT_TRUE(root.onboarding().steps()->canContinue);
}

TEST_F(AppRootTest, keepsTheTapWhileItIsStopped) {
  root.start();
  queue.advance(Seconds(1));
  root.stop();
  queue.advance(Seconds(4));
  EXPECT_EQ(taps, (Times{0, 2.5, 4}));
  root.start();
  queue.advance(Seconds(1.5));
  EXPECT_EQ(taps, (Times{0, 2.5, 4, 5, 6.5})) << "one rhythm, not two";
}

TEST_F(AppRootTest, looksOnlyOnceAtATimeAfterTwoStarts) {
  root.start();
  root.start();
  queue.advance(Seconds(1.5));
  EXPECT_EQ(taps, (Times{0, 0, 1.5}));
}

TEST_F(AppRootTest, reportsAStatusThatCannotBeToldAndAsksAgain) {
  engine->statusError = EngineError::lintFailed("no answer");
  root.start();
  queue.advance(Seconds(1.5));
  EXPECT_EQ(engine->statusNames, Lines(2, "Orlo3"));
  EXPECT_EQ(reports, Lines(2, "no answer"));
  engine->statusError = std::nullopt;
  engine->currentStatus = {true, true, true};
  queue.advance(Seconds(1.5));
  EXPECT_TRUE(root.onboarding().steps()->canContinue);
  EXPECT_EQ(reports.size(), 2U);
}

// The first start

TEST_F(AppRootTest, beginsWithTheFirstSteps) {
  EXPECT_TRUE(*root.isOnboarding());
  engine->currentStatus = {true, true, true};
  root.start();
  queue.advance(Seconds(10));
  EXPECT_TRUE(*root.isOnboarding()) << "the user is the one to go on";
}

TEST_F(AppRootTest, goesOnToThePadOnlyOnceBothArePermitted) {
  for (const EngineStatus status : {EngineStatus{}, {true, false, true}, {false, true, true}}) {
    engine->currentStatus = status;
    root.start();
    root.finishOnboarding();
    EXPECT_TRUE(*root.isOnboarding());
  }
  EXPECT_FALSE(settings->hasFinishedOnboarding());
  engine->currentStatus = {true, true, false};
  queue.advance(Seconds(1.5));
  root.finishOnboarding();
  EXPECT_FALSE(*root.isOnboarding());
  EXPECT_TRUE(settings->hasFinishedOnboarding());
}

TEST_F(AppRootTest, staysAtThePadWhenAPermissionIsLost) {
  engine->currentStatus = {true, true, true};
  root.start();
  root.finishOnboarding();
  engine->currentStatus = {};
  queue.advance(Seconds(1.5));
  EXPECT_FALSE(*root.isOnboarding());
  EXPECT_FALSE(root.onboarding().steps()->canContinue);
}

TEST_F(AppRootTest, showsThePadAtOnceToWhoeverHasGoneOnBefore) {
  settings->finishOnboarding();
  EXPECT_TRUE(*root.isOnboarding());
  engine->currentStatus = {true, true, false};
  root.start();
  EXPECT_FALSE(*root.isOnboarding());
}

TEST_F(AppRootTest, showsThemTheFirstStepsAgainWhenSomethingIsNotPermitted) {
  settings->finishOnboarding();
  engine->currentStatus = {true, false, false};
  root.start();
  EXPECT_TRUE(*root.isOnboarding());
  engine->currentStatus = {true, true, false};
  queue.advance(Seconds(1.5));
  EXPECT_TRUE(*root.isOnboarding()) << "they see that it is permitted now, and go on themselves";
}

// Start at login

TEST_F(AppRootTest, switchesStartAtLoginOnOnceBothArePermitted) {
  for (const EngineStatus status : {EngineStatus{}, {true, false, true}, {false, true, true}}) {
    engine->currentStatus = status;
    root.start();
    EXPECT_EQ(loginItem, std::vector<bool>{});
  }
  engine->currentStatus = {true, true, false};
  queue.advance(Seconds(1.5));
  EXPECT_EQ(loginItem, std::vector{true});
}

TEST_F(AppRootTest, triesStartAtLoginOnceInARunEvenIfNothingIsKept) {
  engine->currentStatus = {true, true, true};
  root.start();
  queue.advance(Seconds(10));
  root.stop();
  root.start();
  EXPECT_EQ(loginItem, std::vector{true});
}

} // namespace
} // namespace trellivar
