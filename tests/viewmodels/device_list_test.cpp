#include "tests/viewmodels/device_words.h"
#include "viewmodels/device_list_view_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace trellivar {
namespace {

using namespace words;

struct DeviceListTest : testing::Test {
  std::shared_ptr<StubDeviceEnumerator> bus = std::make_shared<StubDeviceEnumerator>();
  std::shared_ptr<StubHotplugWatcher> watcher = std::make_shared<StubHotplugWatcher>();

  std::shared_ptr<DeviceListViewModel> listOf(Devices devices) {
    bus->devices = std::move(devices);
    return DeviceListViewModel::make(bus, watcher);
  }
};

/// Counts how often it is asked.
struct CountingEnumerator final : DeviceEnumerating {
  int count = 0;
  std::vector<ConnectedDevice> connectedKeyboards() override {
    ++count;
    return {};
  }
};

TEST_F(DeviceListTest, holdsNothingWhileNoPadIsThere) {
  const auto list = listOf({ordinaryKeyboard});
  EXPECT_EQ(*list->devices(), Devices{});
  EXPECT_TRUE(list->padLink()->is<PadLink::Disconnected>());
  EXPECT_EQ(*list->selected(), std::nullopt);
}

TEST_F(DeviceListTest, looksOnceAtFirst) {
  const auto counting = std::make_shared<CountingEnumerator>();
  const auto list = DeviceListViewModel::make(counting, watcher);
  EXPECT_EQ(counting->count, 1);
  list->refresh();
  EXPECT_EQ(counting->count, 2);
}

TEST_F(DeviceListTest, showsThePadThatIsThereAtFirst) {
  const auto list = listOf({ordinaryKeyboard, overBluetooth});
  EXPECT_EQ(*list->devices(), Devices{overBluetooth});
  EXPECT_EQ(*list->padLink(), PadLink{PadLink::Wireless{"Any name"}});
  EXPECT_EQ(*list->selected(), overBluetooth);
}

TEST_F(DeviceListTest, listsAPadOnceAndShowsTheCableEvenIfItIsListedByBluetooth) {
  for (const Devices& both : {Devices{onCable, overBluetooth}, Devices{overBluetooth, onCable}}) {
    const auto list = listOf(both);
    EXPECT_EQ(*list->devices(), Devices{both.front()});
    EXPECT_EQ(*list->padLink(), PadLink{PadLink::Usb{}});
    EXPECT_EQ(*list->selected(), both.front());
  }
}

TEST_F(DeviceListTest, seesWhatComesAndGoesWhenAsked) {
  const auto list = listOf({});
  bus->devices = {overBluetooth};
  EXPECT_EQ(*list->devices(), Devices{});
  list->refresh();
  EXPECT_EQ(*list->devices(), Devices{overBluetooth});
  bus->devices = {overBluetooth, onCable};
  list->refresh();
  EXPECT_TRUE(list->padLink()->is<PadLink::Usb>());
  bus->devices = {};
  list->refresh();
  EXPECT_EQ(*list->devices(), Devices{});
  EXPECT_TRUE(list->padLink()->is<PadLink::Disconnected>());
}

// Hot-plugging

TEST_F(DeviceListTest, looksAgainWhenDevicesChange) {
  const auto list = listOf({});
  bus->devices = {onCable};
  watcher->notify();
  EXPECT_EQ(*list->devices(), Devices{onCable});
  EXPECT_TRUE(list->padLink()->is<PadLink::Usb>());
  EXPECT_EQ(*list->selected(), onCable);
  bus->devices = {};
  watcher->notify();
  EXPECT_EQ(*list->selected(), std::nullopt);
}

TEST_F(DeviceListTest, worksWithoutAWatcher) {
  bus->devices = {onCable};
  const auto list = DeviceListViewModel::make(bus, nullptr);
  EXPECT_EQ(*list->devices(), Devices{onCable});
  bus->devices = {};
  list->refresh();
  EXPECT_EQ(*list->devices(), Devices{});
}

TEST_F(DeviceListTest, leavesTheWatcherToOthersToo) {
  int heard = 0;
  const auto other = watcher->onDevicesChanged([&] { ++heard; });
  const auto first = listOf({});
  const auto second = DeviceListViewModel::make(bus, watcher);
  bus->devices = {onCable};
  watcher->notify();
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(*first->devices(), Devices{onCable});
  EXPECT_EQ(*second->devices(), Devices{onCable});
}

TEST_F(DeviceListTest, isNotKeptAliveByTheWatcher) {
  auto list = listOf({onCable});
  const std::weak_ptr weak = list;
  list.reset();
  EXPECT_TRUE(weak.expired());
  const auto counting = std::make_shared<CountingEnumerator>();
  list = DeviceListViewModel::make(counting, watcher);
  list.reset();
  watcher->notify();
  EXPECT_EQ(counting->count, 1);
}

TEST_F(DeviceListTest, mayGoWhileItIsToldOfAChange) {
  auto list = listOf({});
  const std::weak_ptr weak = list;
  int announced = 0;
  const Subscription seen = list->devices().willChange([&](const Devices&) {
    ++announced;
    list.reset();
  });
  bus->devices = {onCable};
  watcher->notify();
  EXPECT_EQ(announced, 1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(DeviceListTest, keepsItsWatcherAlive) {
  const auto list = listOf({});
  const std::weak_ptr weak = watcher;
  watcher.reset();
  EXPECT_FALSE(weak.expired());
}

TEST_F(DeviceListTest, announcesOnlyWhatChanges) {
  const auto list = listOf({overBluetooth});
  std::vector<std::string> announced;
  const auto note = [&](const char* what) {
    return [&announced, what](const auto&) { announced.emplace_back(what); };
  };
  const Subscription seen[] = {list->devices().willChange(note("devices")),
                               list->padLink().willChange(note("link")),
                               list->selected().willChange(note("selected"))};
  list->refresh();
  EXPECT_EQ(announced, std::vector<std::string>{});
  bus->devices = {overBluetooth, onCable};
  list->refresh();
  EXPECT_EQ(announced, std::vector<std::string>{"link"});
}

// Selection

TEST_F(DeviceListTest, selectsWhateverIsAskedFor) {
  const auto list = listOf({onCable});
  list->select(overBluetooth);
  EXPECT_EQ(*list->selected(), overBluetooth);
  EXPECT_EQ(*list->devices(), Devices{onCable});
}

TEST_F(DeviceListTest, staysOnTheSameDeviceByItsIdentity) {
  const auto list = listOf({overBluetooth});
  const ConnectedDevice renamed = device("New name", 0x04E8, 0x7021);
  bus->devices = {ordinaryKeyboard, renamed};
  list->refresh();
  EXPECT_EQ(*list->selected(), renamed) << "as it is in the list now";
}

TEST_F(DeviceListTest, staysOnADeviceThatTheUserChose) {
  const auto list = listOf({onCable});
  list->select(overBluetooth);
  bus->devices = {overBluetooth, onCable};
  list->refresh();
  EXPECT_EQ(*list->selected(), overBluetooth);
}

TEST_F(DeviceListTest, goesToTheFirstDeviceWhenTheSelectedOneIsGone) {
  const auto list = listOf({onCable});
  bus->devices = {ordinaryKeyboard, inModeM};
  list->refresh();
  EXPECT_EQ(*list->selected(), inModeM);
  list->select(ordinaryKeyboard);
  list->refresh();
  EXPECT_EQ(*list->selected(), inModeM) << "a keyboard is not in the list";
}

TEST_F(DeviceListTest, selectsNothingWhenTheLastDeviceIsGoneAndTheNextOneThatComes) {
  const auto list = listOf({onCable});
  bus->devices = {};
  list->refresh();
  EXPECT_EQ(*list->selected(), std::nullopt);
  bus->devices = {inModeR};
  list->refresh();
  EXPECT_EQ(*list->selected(), inModeR);
}

} // namespace
} // namespace trellivar
