#include "simulator/desk/event_stream.h"

#include <gtest/gtest.h>

#include <string>

namespace trellivar::desk {
namespace {

using Level = EventStream::Level;

InputEvent key(std::int64_t code, std::uint32_t type = InputEvent::keyDown) {
  InputEvent event;
  event.type = type;
  event.setField(InputEvent::keyCode, code);
  return event;
}

class EventStreamTest : public testing::Test {
protected:
  /// A tap that writes its letter for each event that it sees.
  EventStream::Tap tap(char letter, Level level = Level::session, bool atHead = true) {
    EventStream::Tap result;
    result.level = level;
    result.atHead = atHead;
    result.mask = std::uint64_t{1} << InputEvent::keyDown;
    result.handle = [this, letter](const InputEvent& event) {
      seen += letter;
      return std::optional(event);
    };
    result.disabled = [this, letter](std::uint32_t notice) {
      seen += letter;
      notices.push_back(notice);
    };
    return result;
  }
  void post(const InputEvent& event, Level level = Level::hid) {
    stream.post(level, event);
    queue.run();
  }
  std::vector<std::int64_t> received() const {
    std::vector<std::int64_t> codes;
    for (const Received& one : stream.received())
      codes.push_back(one.event.field(InputEvent::keyCode));
    return codes;
  }

  ManualQueue queue;
  EventStream stream{queue};
  std::string seen;
  std::vector<std::uint32_t> notices;
};

TEST_F(EventStreamTest, eventsArriveLaterAndInOrder) {
  stream.post(Level::hid, key(1));
  stream.post(Level::annotatedSession, key(2));
  EXPECT_TRUE(received().empty());
  queue.run();
  EXPECT_EQ(received(), (std::vector<std::int64_t>{1, 2}));
}

TEST_F(EventStreamTest, eventsAreReceivedWithTheirTime) {
  queue.advance(Seconds(2));
  post(key(1));
  EXPECT_EQ(stream.received().at(0).t, Instant(Seconds(2)));
}

TEST_F(EventStreamTest, eventsKeepTheirOrderAmongOtherBlocks) {
  std::string order;
  stream.setReceiver(
      [&](const Received& one) { order += std::to_string(one.event.field(InputEvent::keyCode)); });
  queue.async([&] { order += 'a'; });
  stream.post(Level::hid, key(1));
  queue.async([&] { order += 'b'; });
  stream.post(Level::hid, key(2));
  queue.run();
  EXPECT_EQ(order, "a1b2");
}

TEST_F(EventStreamTest, tapsAreOrderedByLevelThenByPlacement) {
  stream.addTap(tap('d', Level::annotatedSession));
  stream.addTap(tap('b', Level::session));
  stream.addTap(tap('c', Level::session, false));
  stream.addTap(tap('a', Level::hid));
  post(key(1));
  EXPECT_EQ(seen, "abcd");
  seen.clear();
  stream.addTap(tap('x', Level::session));
  post(key(1), Level::session);
  EXPECT_EQ(seen, "xbcd"); // those above the level are not passed
}

TEST_F(EventStreamTest, aTapSeesTheTypesOfItsMask) {
  stream.addTap(tap('a'));
  post(key(1, InputEvent::keyUp));
  InputEvent strange = key(1);
  strange.type = 64 + InputEvent::keyDown;
  post(strange);
  EXPECT_EQ(seen, "");
  post(key(1));
  EXPECT_EQ(seen, "a");
}

TEST_F(EventStreamTest, aTapChangesOrEndsAnEvent) {
  auto changing = tap('a');
  changing.handle = [](const InputEvent& event) -> std::optional<InputEvent> {
    if (event.field(InputEvent::keyCode) == 1) return std::nullopt;
    return key(9);
  };
  stream.addTap(changing);
  stream.addTap(tap('b', Level::session, false));
  post(key(1));
  EXPECT_EQ(seen, "");
  post(key(2));
  EXPECT_EQ(seen, "b");
  EXPECT_EQ(received(), (std::vector<std::int64_t>{9}));
}

TEST_F(EventStreamTest, theAnswerOfAListenerCountsForNothing) {
  auto listener = tap('a');
  listener.isFilter = false;
  listener.handle = [this](const InputEvent&) -> std::optional<InputEvent> {
    seen += 'a';
    return std::nullopt;
  };
  stream.addTap(listener);
  post(key(1));
  EXPECT_EQ(seen, "a");
  EXPECT_EQ(received(), (std::vector<std::int64_t>{1}));
}

TEST_F(EventStreamTest, whatATapPostsIsDeliveredAfterTheEventAtHand) {
  auto posting = tap('a');
  posting.handle = [this](const InputEvent& event) {
    if (event.field(InputEvent::keyCode) == 1) stream.post(Level::session, key(2));
    return std::optional(event);
  };
  stream.addTap(posting);
  stream.post(Level::session, key(1));
  stream.post(Level::session, key(3));
  queue.run();
  EXPECT_EQ(received(), (std::vector<std::int64_t>{1, 3, 2}));
}

TEST_F(EventStreamTest, aTapMayRemoveItselfOrTheNextWhileAnEventPasses) {
  EventStream::TapId next = 0;
  EventStream::TapId self = 0;
  auto removing = tap('a');
  removing.handle = [&](const InputEvent& event) {
    seen += 'a';
    stream.removeTap(self);
    stream.removeTap(next);
    return std::optional(event);
  };
  self = stream.addTap(removing);
  next = stream.addTap(tap('b', Level::session, false));
  post(key(1));
  post(key(2));
  EXPECT_EQ(seen, "a");
  EXPECT_EQ(received(), (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(stream.tapCount(), 0U);
}

TEST_F(EventStreamTest, disabledTapsAreToldAndPassedBy) {
  const auto id = stream.addTap(tap('a'));
  const auto other = stream.addTap(tap('b', Level::session, false));
  stream.setEnabled(other, false);
  stream.disableTaps(InputEvent::tapDisabledByTimeout);
  EXPECT_EQ(seen, ""); // not within the call
  queue.run();
  EXPECT_EQ(seen, "a"); // the other one was disabled already
  EXPECT_EQ(notices, (std::vector{InputEvent::tapDisabledByTimeout}));
  EXPECT_FALSE(stream.isEnabled(id));
  post(key(1));
  EXPECT_EQ(seen, "a");
  stream.setEnabled(id, true);
  post(key(1));
  EXPECT_EQ(seen, "aa");
}

TEST_F(EventStreamTest, aTapThatMayNoLongerFilterIsDisabled) {
  stream.addTap(tap('a'));
  stream.setMayFilter(false);
  queue.run();
  EXPECT_EQ(notices, (std::vector{InputEvent::tapDisabledByUserInput}));
  EXPECT_FALSE(stream.isFrozen());
  post(key(1));
  EXPECT_EQ(received(), (std::vector<std::int64_t>{1}));
}

TEST_F(EventStreamTest, enablingItAgainFreezesTheStreamUntilItIsRemoved) {
  const auto id = stream.addTap(tap('a'));
  stream.setMayFilter(false);
  queue.run();
  seen.clear();
  stream.setEnabled(id, true);
  EXPECT_TRUE(stream.isFrozen());
  post(key(1));
  post(key(2));
  EXPECT_TRUE(received().empty());
  EXPECT_EQ(seen, "");
  stream.removeTap(id);
  queue.run();
  EXPECT_EQ(received(), (std::vector<std::int64_t>{1, 2}));
}

TEST_F(EventStreamTest, theFlagsOfTheSessionAreThoseOfHardwareAndOfPosts) {
  stream.setHardwareFlags(0x20002);
  InputEvent command = key(55, InputEvent::flagsChanged);
  command.flags = 0x100008 | InputEvent::nonCoalesced;
  command.setField(InputEvent::sourceProcessId, 7);
  post(command);
  EXPECT_EQ(stream.sessionFlags(), 0x120002U | 0x8U);
  command.flags = 0;
  post(command);
  EXPECT_EQ(stream.sessionFlags(), 0x20002U);
}

TEST_F(EventStreamTest, recordingMayBeSwitchedOff) {
  int told = 0;
  stream.setReceiver([&](const Received&) { ++told; });
  stream.setRecording(false);
  post(key(1));
  EXPECT_TRUE(received().empty());
  EXPECT_EQ(told, 1);
  stream.setRecording(true);
  post(key(1));
  EXPECT_EQ(received().size(), 1U);
  stream.clearReceived();
  EXPECT_TRUE(received().empty());
}

TEST(InputEventTest, fieldsAreZeroUntilTheyAreSet) {
  InputEvent event;
  EXPECT_EQ(event.field(1), 0);
  for (std::uint32_t number = 0; number < 20; ++number)
    event.setField(number, number * 10);
  event.setField(3, -1);
  EXPECT_EQ(event.field(3), -1);
  EXPECT_EQ(event.field(19), 190);
  EXPECT_EQ(event.field(20), 0);
}

} // namespace
} // namespace trellivar::desk
