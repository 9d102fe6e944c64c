#include "tests/engine/darwin/computer.h"

#include <span>

namespace trellivar {

namespace {

constexpr DeviceIdentity otherIdentity{0x7777, 0x0043};

/// What the engine tells of the keys that are down on pads.
class PressedPadKeysTest : public testing::Test {
protected:
  PressedPadKeysTest() {
    computer.startEngine();
    computer.engine->apply(bindings());
    watching = watch();
  }

  static MappingSet bindings() {
    return customSet({{{"a"}, keyOutput("v")}, {{"left_control", "f"}, keyOutput("w")}});
  }
  void ignore(bool ignored) {
    computer.engine->setDeviceIgnored(ignored, customIdentity.vendorId, customIdentity.productId);
  }
  void notice() { computer.pass(Computer::debounce.count()); }
  void disableTap() {
    computer.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
    computer.desk.queue().run();
  }

  std::shared_ptr<void> watch() {
    auto handle = computer.engine->onPadKeysChanged([this](auto down) { note(down); });
    computer.desk.queue().run();
    return handle;
  }
  /// Each time in brackets; the keys of the other pad have its product id in front.
  void note(std::span<const DeviceKey> down) {
    std::set<std::string> keys;
    for (const DeviceKey& key : down)
      keys.insert((key.device == otherIdentity ? "43:" : "") + key.name.text());
    told_ += "[";
    for (const std::string& key : keys)
      told_ += (told_.ends_with('[') ? "" : " ") + key;
    told_ += "]";
  }
  /// Since the last call.
  std::string told() { return std::exchange(told_, ""); }

  Computer computer;
  desk::Desk::DeviceId pad = computer.attach(customIdentity);
  std::shared_ptr<void> watching;

private:
  std::string told_;
};

TEST_F(PressedPadKeysTest, areToldWhetherTheyAreBoundOrNot) {
  for (const std::string key : {"a", "x", "mute", "button3"}) {
    computer.down(pad, key);
    EXPECT_EQ(told(), "[" + key + "]");
    computer.up(pad, key);
    EXPECT_EQ(told(), "[]") << key;
  }
}

TEST_F(PressedPadKeysTest, areToldTogether) {
  computer.down(pad, "a");
  computer.down(pad, "x");
  computer.up(pad, "a");
  computer.up(pad, "x");
  EXPECT_EQ(told(), "[a][a x][x][]");
}

TEST_F(PressedPadKeysTest, areToldWhileTheyAreHeldBackForAChord) {
  computer.down(pad, "left_control");
  EXPECT_EQ(computer.heard(), "");
  EXPECT_EQ(told(), "[left_control]");
  computer.pass(0.6); // given back
  EXPECT_EQ(told(), "");
  computer.up(pad, "left_control");
  EXPECT_EQ(told(), "[]");
}

TEST_F(PressedPadKeysTest, areToldWhenTheyCompleteAChord) {
  computer.down(pad, "left_control");
  computer.down(pad, "f");
  computer.up(pad, "f");
  computer.up(pad, "left_control");
  EXPECT_EQ(computer.heard(), "*w+ *w-");
  EXPECT_EQ(told(), "[left_control][f left_control][left_control][]");
}

TEST_F(PressedPadKeysTest, areNotToldAgainWhenTheyRepeat) {
  for (const std::string key : {"a", "x"}) {
    computer.down(pad, key);
    told();
    computer.repeat(pad, key);
    EXPECT_EQ(told(), "");
    computer.up(pad, key);
    told();
  }
}

TEST_F(PressedPadKeysTest, areThoseOfPadsOnly) {
  computer.tap(computer.keyboard, "a");
  computer.tap(computer.keyboard, "left_control");
  computer.tap(computer.attach(otherIdentity), "a");
  EXPECT_EQ(told(), "");
}

TEST_F(PressedPadKeysTest, ofAPadWithoutAnyBindingAreToldAndPassUntouched) {
  const auto other = computer.attach(otherIdentity);
  computer.engine->apply(customSet({{{"a"}, {}}}, otherIdentity));
  computer.tap(other, "a");
  computer.tap(other, "left_shift");
  EXPECT_EQ(told(), "[43:a][][43:left_shift][]");
  EXPECT_EQ(computer.heard(), "a+ a- left_shift+ left_shift-");
  EXPECT_FALSE(computer.engine->status("").trellivarGrabbed) << "nothing is intercepted";
}

TEST_F(PressedPadKeysTest, ofAKnownPadAreToldOnEachTransport) {
  computer.engine->apply(padSet({}));
  for (const DeviceIdentity transport : KnownDevices::all().front().identities()) {
    computer.pad.connectAs(transport);
    notice();
    computer.pressPad(2);
    EXPECT_NE(told(), "") << transport.productId;
    computer.heard();
  }
}

TEST_F(PressedPadKeysTest, areToldWithTheirPad) {
  const auto other = computer.attach(otherIdentity);
  const std::vector sets{bindings(), customSet({{{"a"}, keyOutput("z")}}, otherIdentity)};
  computer.engine->applyAll(sets);
  computer.down(pad, "a");
  computer.down(other, "a");
  computer.up(pad, "a");
  EXPECT_EQ(told(), "[a][43:a a][43:a]");
}

TEST_F(PressedPadKeysTest, ofAnIgnoredPadAreToldToo) {
  ignore(true);
  computer.down(pad, "a");
  computer.down(pad, "x");
  EXPECT_EQ(told(), "[a][a x]");
  ignore(false);
  computer.up(pad, "a");
  computer.up(pad, "x");
  EXPECT_EQ(told(), "[x][]");
}

TEST_F(PressedPadKeysTest, stayTheSameWhenTheirBindingsChange) {
  computer.down(pad, "a");
  computer.down(pad, "x");
  told();
  computer.engine->apply(customSet({{{"x"}, keyOutput("v")}}));
  ignore(true);
  ignore(false);
  computer.desk.queue().run();
  EXPECT_EQ(told(), "");
  computer.up(pad, "a");
  computer.up(pad, "x");
  EXPECT_EQ(told(), "[x][]");
}

TEST_F(PressedPadKeysTest, areUpWhenTheirPadHasGone) {
  computer.down(pad, "a");
  computer.down(pad, "left_control");
  told();
  computer.desk.detach(pad);
  notice();
  EXPECT_EQ(told(), "[]");
}

TEST_F(PressedPadKeysTest, areUpWhenTheirPadIsNoLongerOneOfTheSets) {
  computer.down(pad, "x");
  told();
  computer.engine->apply(customSet({{{"a"}, keyOutput("v")}}, otherIdentity));
  computer.desk.queue().run();
  EXPECT_EQ(told(), "[]");
  computer.up(pad, "x");
  EXPECT_EQ(told(), "");
}

TEST_F(PressedPadKeysTest, areUpWhenTheTapWasDisabledUntilTheyArePressedAnew) {
  for (const std::string key : {"a", "x", "left_control", "left_shift"}) {
    computer.down(pad, key);
    told();
    disableTap();
    EXPECT_EQ(told(), "[]") << key << " may have come up by now";
    computer.up(pad, key);
    EXPECT_EQ(told(), "");
    computer.tap(pad, key);
    EXPECT_EQ(told(), "[" + key + "][]");
  }
}

TEST_F(PressedPadKeysTest, areDownAgainWhenTheyArePressedAnewAfterAReleaseThatNobodySaw) {
  for (const std::string key : {"a", "x", "left_control", "left_shift"}) {
    computer.down(pad, key);
    computer.desk.release(pad, KeyName(key));
    disableTap();
    told();
    computer.tap(pad, key);
    EXPECT_EQ(told(), "[" + key + "][]");
  }
}

TEST_F(PressedPadKeysTest, areUpWhenTheTapIsRemoved) {
  computer.down(pad, "a");
  told();
  computer.desk.setTrusted(false);
  computer.engine->startTap();
  computer.desk.queue().run();
  EXPECT_EQ(told(), "[]");
  computer.tap(pad, "x");
  EXPECT_EQ(told(), "") << "which no tap sees";
}

TEST_F(PressedPadKeysTest, comeUpThoughAKeyboardHoldsTheSameModifier) {
  computer.engine->apply(customSet({{{"a"}, {}}})); // no binding at all
  computer.down(computer.keyboard, "left_shift");
  computer.down(pad, "left_shift");
  EXPECT_EQ(told(), "[left_shift]");
  computer.up(pad, "left_shift");
  EXPECT_EQ(told(), "[]");
  computer.up(computer.keyboard, "left_shift");
}

TEST_F(PressedPadKeysTest, areToldInATurnOfItsOwnAfterTheEventWasAnswered) {
  constexpr CGKeyCode a = 0;
  const auto event = darwin::CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(nullptr, a, true));
  CGEventSetIntegerValueField(event.get(), static_cast<CGEventField>(87),
                              static_cast<std::int64_t>(computer.desk.leafSender(pad, 0x07)));
  EXPECT_EQ(computer.engine->handle(kCGEventKeyDown, event.get()), nullptr);
  EXPECT_EQ(told(), "");
  computer.desk.queue().run();
  EXPECT_EQ(told(), "[a]");
}

TEST_F(PressedPadKeysTest, mayLeadTheObserverToUseTheEngine) {
  watching = computer.engine->onPadKeysChanged([this](auto down) {
    note(down);
    computer.engine->apply(customSet({{{"b"}, keyOutput(down.empty() ? "1" : "2")}}));
  });
  computer.down(pad, "x");
  computer.tap(pad, "b");
  computer.up(pad, "x");
  computer.tap(pad, "b");
  EXPECT_EQ(told(), "[x][b x][x][][b][]");
  EXPECT_EQ(computer.heard(), "x+ *2+ *2- x- *1+ *1-");
}

TEST_F(PressedPadKeysTest, areToldToNobodyAfterTheHandleOrTheEngineHasGone) {
  computer.desk.press(pad, KeyName("a"));
  watching.reset();
  computer.desk.queue().run();
  EXPECT_EQ(told(), "");
  watching = watch();
  told();
  computer.down(pad, "x");
  told();
  computer.engine.reset();
  computer.desk.queue().run();
  EXPECT_EQ(told(), "");
}

TEST_F(PressedPadKeysTest, areToldToWhoeverAskedLast) {
  computer.down(pad, "a");
  told();
  const auto before = std::exchange(watching, watch());
  EXPECT_EQ(told(), "[a]") << "what is down already";
  computer.up(pad, "a");
  EXPECT_EQ(told(), "[]") << "once";
}

} // namespace

} // namespace trellivar
