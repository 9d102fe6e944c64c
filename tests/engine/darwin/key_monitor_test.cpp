#include "engine/darwin/key_monitor.h"
#include "tests/engine/darwin/computer.h"

#include <optional>

namespace trellivar {

namespace {

class KeyMonitorTest : public testing::Test {
protected:
  void start() {
    monitor.emplace(computer.desk.queue(),
                    [this](const DeviceKeyEvent& event) { heard.push_back(event); });
  }
  /// "a+ a-": what was heard since the last call.
  std::string names() {
    std::string text;
    for (const DeviceKeyEvent& event : std::exchange(heard, {})) {
      text += (text.empty() ? "" : " ") + event.event.key.keyCode.text() +
              (event.event.phase == KeyEvent::Phase::down ? "+" : "-");
    }
    return text;
  }

  Computer computer;
  std::vector<DeviceKeyEvent> heard;
  std::optional<KeyMonitor> monitor;
};

TEST_F(KeyMonitorTest, tellsEachPressAndReleaseWithItsDevice) {
  start();
  EXPECT_TRUE(monitor->isOpen());
  computer.pass(5);
  computer.down(computer.keyboard, "left_shift");
  computer.pass(0.25);
  computer.up(computer.keyboard, "left_shift");
  const Key shift = plainKey("left_shift");
  EXPECT_EQ(heard, (std::vector<DeviceKeyEvent>{
                       {{shift, KeyEvent::Phase::down, 0, true}, 0x1234, 1},
                       {{shift, KeyEvent::Phase::up, 0.25, true}, 0x1234, 1},
                   }))
      << "timestamps count from the first event";
}

TEST_F(KeyMonitorTest, timeIsNotCountedFromWhatCapturesIgnore) {
  start();
  computer.tap(computer.keyboard, "f1");
  computer.pass(1);
  computer.tap(computer.keyboard, "a");
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_EQ(heard[0].event.timestamp, 0);
  EXPECT_EQ(names(), "a+ a-");
}

TEST_F(KeyMonitorTest, hearsKeysMediaKeysAndButtonsOnceEach) {
  computer.platform.setDevicePerDictionary(true);
  const auto pad = computer.attach(customIdentity);
  start();
  for (const std::string key : {"mute", "button3", "a"})
    computer.tap(pad, key);
  std::vector<Key::Kind> kinds;
  for (const DeviceKeyEvent& event : heard) {
    EXPECT_EQ(event.identity(), customIdentity);
    EXPECT_FALSE(event.event.isModifier);
    kinds.push_back(event.event.key.kind);
  }
  using enum Key::Kind;
  EXPECT_EQ(kinds, (std::vector{consumerKeyCode, consumerKeyCode, pointingButton, pointingButton,
                                keyCode, keyCode}));
  EXPECT_EQ(names(), "mute+ mute- button3+ button3- a+ a-");
}

TEST_F(KeyMonitorTest, aDeviceInSeveralInterfacesIsHeardOnceEach) {
  const auto many =
      computer.desk.attach({.product = "Many",
                            .identity = customIdentity,
                            .interfaces = {{DeviceDescription::keyboard, DeviceDescription::mouse,
                                            DeviceDescription::consumerControl}}});
  for (const bool each : {true, false}) {
    computer.platform.setDevicePerDictionary(each);
    start();
    computer.tap(many, "a");
    EXPECT_EQ(names(), "a+ a-");
    monitor.reset();
  }
}

TEST_F(KeyMonitorTest, hearsDevicesThatComeLaterAndForgetsThoseThatGo) {
  start();
  const auto pad = computer.attach(customIdentity);
  computer.pass(0.1);
  computer.tap(pad, "a");
  computer.down(pad, "b");
  computer.desk.detach(pad);
  computer.pass(0.1);
  computer.tap(computer.keyboard, "c");
  EXPECT_EQ(names(), "a+ a- b+ c+ c-");
}

TEST_F(KeyMonitorTest, hearsNothingBeforeAndAfterItsLife) {
  computer.tap(computer.keyboard, "a");
  start();
  computer.tap(computer.keyboard, "b");
  monitor.reset();
  computer.tap(computer.keyboard, "c");
  EXPECT_EQ(names(), "b+ b-");
}

TEST_F(KeyMonitorTest, withoutPermissionItIsNotOpenAndHearsNothing) {
  for (const auto access : {desk::Access::denied, desk::Access::unknown}) {
    computer.desk.setInputMonitoring(access);
    start();
    EXPECT_FALSE(monitor->isOpen());
    computer.tap(computer.keyboard, "a");
    EXPECT_EQ(names(), "");
  }
}

TEST_F(KeyMonitorTest, leavesEventsToTheApplications) {
  start();
  computer.tap(computer.keyboard, "a");
  EXPECT_EQ(computer.heard(), "a+ a-");
}

} // namespace

} // namespace trellivar
