#include "tests/core/counting_new.h"
#include "tests/engine/darwin/computer.h"

namespace trellivar {

namespace {

darwin::CFRef<CGEventRef> keyEvent(bool isDown, std::int64_t sender) {
  constexpr CGKeyCode a = 0;
  auto event = darwin::CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(nullptr, a, isDown));
  CGEventSetIntegerValueField(event.get(), static_cast<CGEventField>(87), sender);
  return event;
}

TEST(ForeignEventAllocationTest, anEventOfAnotherDeviceOrOfTheEngineItselfAllocatesNothing) {
  Computer computer;
  const auto pad = computer.attach(customIdentity);
  computer.startEngine();
  computer.engine->apply(customSet({{{"a"}, keyOutput("v")}}));
  const auto watched = computer.engine->onPadKeysChanged([](auto) {});
  computer.desk.queue().run();

  const auto foreign =
      keyEvent(true, static_cast<std::int64_t>(computer.desk.leafSender(computer.keyboard, 0x07)));
  const auto own = keyEvent(true, static_cast<std::int64_t>(computer.desk.leafSender(pad, 0x07)));
  CGEventSetIntegerValueField(own.get(), kCGEventSourceUserData, darwin::marker);
  const std::size_t before = allocationCount();
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(computer.engine->handle(kCGEventKeyDown, foreign.get()), foreign.get());
    ASSERT_EQ(computer.engine->handle(kCGEventKeyDown, own.get()), own.get());
  }
  EXPECT_EQ(allocationCount(), before);

  // The counter does count: a remapped press makes events.
  const auto bound = keyEvent(true, static_cast<std::int64_t>(computer.desk.leafSender(pad, 0x07)));
  EXPECT_EQ(computer.engine->handle(kCGEventKeyDown, bound.get()), nullptr);
  EXPECT_GT(allocationCount(), before);
  computer.desk.queue().run();
}

} // namespace

} // namespace trellivar
