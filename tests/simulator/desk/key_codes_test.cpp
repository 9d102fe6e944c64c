#include "core/cg_keycode_map.h"
#include "core/key_table.h"
#include "core/modifier.h"
#include "simulator/desk/key_codes.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

/// The desk has codes of its own, so that a mistake in the product's tables does not cancel out.
namespace trellivar::desk {
namespace {

using Family = KeyCodes::Family;

KeyCodes codesOf(std::string_view name) {
  const auto codes = keyCodes(KeyName(name));
  EXPECT_TRUE(codes) << name;
  return codes.value_or(KeyCodes{});
}

TEST(KeyCodesTest, agreeWithTheProductOnEveryKey) {
  for (const auto& row : keytable::keys) {
    const KeyCodes codes = codesOf(row.name);
    EXPECT_EQ(codes.family, Family::key) << row.name;
    EXPECT_EQ(codes.number, row.keyCode) << row.name;
    EXPECT_EQ(codes.usage.page, 7) << row.name;
  }
}

TEST(KeyCodesTest, agreeWithTheProductOnEveryModifier) {
  for (const auto& row : keytable::modifiers) {
    const KeyCodes codes = codesOf(row.name);
    EXPECT_EQ(codes.family, Family::modifier) << row.name;
    EXPECT_EQ(codes.number, row.keyCode) << row.name;
    EXPECT_EQ(codes.flags, row.generic | row.device) << row.name;
    EXPECT_TRUE(codes.usage.page == 7 && codes.usage.usage >= 0xE0 && codes.usage.usage <= 0xE7)
        << row.name;
  }
}

TEST(KeyCodesTest, agreeWithTheProductOnEveryMediaKey) {
  for (const auto& row : keytable::consumers) {
    const KeyCodes codes = codesOf(row.name);
    EXPECT_EQ(codes.family, Family::auxiliary) << row.name;
    EXPECT_EQ(codes.number, row.auxKey) << row.name;
    EXPECT_EQ(codes.usage.page, 0x0C) << row.name;
  }
}

TEST(KeyCodesTest, agreeWithTheProductOnButtons) {
  for (const char* name : {"button1", "button2", "button3", "button4", "button5"}) {
    const KeyCodes codes = codesOf(name);
    EXPECT_EQ(codes.family, Family::button);
    EXPECT_EQ(codes.number, CGKeycodeMap::buttonNumber(name));
    EXPECT_EQ(codes.usage, (Usage{9, codes.number + 1}));
  }
}

TEST(KeyCodesTest, usagesAreToldApart) {
  std::set<std::pair<int, int>> seen;
  std::size_t count = 0;
  const auto add = [&](std::string_view name) {
    const KeyCodes codes = codesOf(name);
    seen.emplace(codes.usage.page, codes.usage.usage);
    ++count;
  };
  for (const auto& row : keytable::keys)
    add(row.name);
  for (const auto& row : keytable::modifiers)
    add(row.name);
  for (const auto& row : keytable::consumers)
    add(row.name);
  EXPECT_EQ(seen.size(), count);
}

TEST(KeyCodesTest, someUsagesByTheTables) {
  EXPECT_EQ(codesOf("a").usage, (Usage{7, 4}));
  EXPECT_EQ(codesOf("0").usage, (Usage{7, 39}));
  EXPECT_EQ(codesOf("f12").usage, (Usage{7, 69}));
  EXPECT_EQ(codesOf("up_arrow").usage, (Usage{7, 82}));
  EXPECT_EQ(codesOf("right_command").usage, (Usage{7, 231}));
  EXPECT_EQ(codesOf("next_track").usage, (Usage{0x0C, 0xB5}));
  EXPECT_EQ(codesOf("next_track").number, 17);
  EXPECT_EQ(codesOf("volume_decrement").usage, (Usage{0x0C, 0xEA}));
}

TEST(KeyCodesTest, theSystemMarksArrowsAndFunctionKeys) {
  EXPECT_EQ(codesOf("left_arrow").flags, InputEvent::secondaryFn | InputEvent::numericPad);
  EXPECT_EQ(codesOf("f1").flags, InputEvent::secondaryFn);
  EXPECT_EQ(codesOf("a").flags, 0U);
}

TEST(KeyCodesTest, anUnknownNameHasNone) {
  EXPECT_EQ(keyCodes(KeyName("no_such_key")), std::nullopt);
}

InputEvent flagsChanged(std::int64_t code, std::uint64_t flags) {
  InputEvent event;
  event.type = InputEvent::flagsChanged;
  event.flags = flags;
  event.setField(InputEvent::keyCode, code);
  return event;
}

TEST(NamedEventTest, theSideOfAModifierIsTakenFromItsOwnBit) {
  const auto kind = [](std::uint64_t flags) { return named(flagsChanged(56, flags))->kind; };
  EXPECT_EQ(kind(0x20002), TapEvent::Kind::keyDown);
  EXPECT_EQ(kind(0x20004), TapEvent::Kind::keyUp); // the other side is still down
  EXPECT_EQ(kind(0x20006), TapEvent::Kind::keyDown);
  EXPECT_EQ(kind(0x20000), TapEvent::Kind::keyDown); // nobody tells sides
  EXPECT_EQ(kind(0), TapEvent::Kind::keyUp);
  EXPECT_EQ(named(flagsChanged(56, 0))->name, KeyName("left_shift"));
}

TEST(NamedEventTest, namesAreThoseOfTheFamilyOfTheEvent) {
  InputEvent event;
  event.type = InputEvent::systemDefined;
  event.subtype = InputEvent::auxiliaryControl;
  event.data1 = 7 << 16 | 0x0B << 8;
  EXPECT_EQ(named(event), (NamedEvent{TapEvent::Kind::consumerUp, KeyName("mute")}));
  event.subtype = 7;
  EXPECT_EQ(named(event), std::nullopt);
  event.type = InputEvent::otherMouseDown;
  event.setField(InputEvent::buttonNumber, 2);
  EXPECT_EQ(named(event), (NamedEvent{TapEvent::Kind::pointingDown, KeyName("button3")}));
  event.type = InputEvent::keyUp;
  event.setField(InputEvent::keyCode, 8);
  EXPECT_EQ(named(event), (NamedEvent{TapEvent::Kind::keyUp, KeyName("c")}));
  event.setField(InputEvent::keyCode, 127);
  EXPECT_EQ(named(event), std::nullopt);
}

} // namespace
} // namespace trellivar::desk
