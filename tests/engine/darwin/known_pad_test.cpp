#include "core/mode_sets.h"
#include "tests/engine/darwin/computer.h"

#include <map>

namespace trellivar {

namespace {

using desk::Pad;

/// The pad itself, with bindings for all three keys at P.
class KnownPadTest : public testing::Test {
protected:
  KnownPadTest() {
    computer.startEngine();
    computer.engine->apply(padSet({{1, chordOutput({Modifier::command}, "c"), std::nullopt},
                                   {2, keyOutput("2"), std::nullopt},
                                   {3, keyOutput("3"), std::nullopt}}));
  }

  void connect(Pad::Link link) {
    computer.pad.connect(link);
    computer.pass(Computer::debounce.count());
    computer.heard();
  }
  std::string pressed(int key) {
    computer.pressPad(key);
    computer.pass(0.6);
    return computer.heard();
  }

  static constexpr const char* copy =
      "*left_command+ *c+(left_command) *c-(left_command) *left_command-";

  Computer computer;
};

TEST_F(KnownPadTest, everyKeyWorksOnTheCableAndOverBluetooth) {
  for (const auto link : {Pad::Link::usb, Pad::Link::bluetooth}) {
    connect(link);
    EXPECT_EQ(pressed(1), copy);
    EXPECT_EQ(pressed(2), "*2+ *2-");
    EXPECT_EQ(pressed(3), "*3+ *3-");
  }
}

TEST_F(KnownPadTest, bothBluetoothIdentitiesWork) {
  for (const DeviceIdentity identity : {DeviceIdentity{0x04E8, 0x7021}, {0x05AC, 0x022C}}) {
    computer.pad.connectAs(identity);
    computer.pass(Computer::debounce.count());
    EXPECT_EQ(pressed(1), copy);
    EXPECT_EQ(pressed(2), "*2+ *2-") << "a media key";
  }
}

TEST_F(KnownPadTest, theOtherSignatureOfAKeyWorksToo) {
  computer.pad.setAlternative(true);
  connect(Pad::Link::bluetooth);
  EXPECT_EQ(pressed(1), copy);
}

TEST_F(KnownPadTest, keysPressedTogetherEachDoTheirWork) {
  connect(Pad::Link::bluetooth);
  computer.pad.press(2);
  computer.pad.press(3);
  computer.pass(0.05);
  computer.pad.release(2);
  computer.pad.release(3);
  computer.pass(0.6);
  EXPECT_EQ(computer.heard(), "*2+ *2- *3+ *3-");
}

TEST_F(KnownPadTest, aKeyThatIsHeldForLongFiresOnce) {
  connect(Pad::Link::usb);
  computer.pad.press(1);
  computer.pass(3);
  EXPECT_EQ(computer.heard(), copy);
  computer.pad.release(1);
  computer.pass(1);
  EXPECT_EQ(computer.heard(), "");
}

TEST_F(KnownPadTest, aPadPulledWhileAKeyIsOnItsWayLeavesNothingDown) {
  for (const double after : {0.0, 0.002, 0.005, 0.3, 0.45}) {
    connect(Pad::Link::usb);
    computer.pad.press(1);
    computer.pass(after);
    computer.pad.connect(Pad::Link::away);
    computer.pass(2);
    std::map<KeyName, int, KeyName::ByText> balance;
    for (const desk::Received& received : computer.desk.events().received()) {
      const auto named = desk::named(received.event);
      ASSERT_TRUE(named);
      balance[named->name] += isDown(named->kind) ? 1 : -1;
    }
    for (const auto& [name, count] : balance)
      EXPECT_EQ(count, 0) << name.text() << ", pulled after " << after;
    computer.heard();
  }
}

Key::Kind kindOf(KeyName code) {
  const bool isMedia = desk::keyCodes(code)->family == desk::KeyCodes::Family::auxiliary;
  return isMedia ? Key::Kind::consumerKeyCode : Key::Kind::keyCode;
}

/// Every position of the switch, over every link, with what the pad sends there learned.
TEST(AllModesTest, everyPositionOfTheSwitchHasItsOwnBindings) {
  for (const std::string mode : {"P", "M", "R"}) {
    for (const auto link : {Pad::Link::usb, Pad::Link::bluetooth}) {
      Computer computer;
      computer.startEngine();
      computer.pad.setMode(mode);
      computer.pad.connect(link);
      const DeviceIdentity identity = *computer.pad.identity();
      TrellivarDevice device{computer.pad.name(), identity.vendorId, identity.productId, {}};
      for (const int id : Pad::keyIds) {
        KeySignature signature;
        for (const KeyName code : computer.pad.factoryCodes(id))
          signature.codes.push_back({code, kindOf(code)});
        signature.isChord = signature.codes.size() > 1;
        device.layout.keys.push_back({id, 0, id - 1, signature, {}});
      }
      std::vector<Profile> profiles;
      int number = 0;
      for (const std::string name : {"P", "M", "R"}) {
        profiles.push_back(profileOf(name, {{1, keyOutput(std::to_string(++number)), {}},
                                            {2, keyOutput(std::to_string(++number)), {}},
                                            {3, keyOutput(std::to_string(++number)), {}}}));
      }
      computer.engine->applyAll(setsForAllModes(device, profiles, {}, {}));
      computer.pass(Computer::debounce.count());
      const int first = mode == "P" ? 1 : mode == "M" ? 4 : 7;
      for (const int id : Pad::keyIds) {
        computer.pressPad(id);
        const std::string key = std::to_string(first + id - 1);
        EXPECT_EQ(computer.heard(), "*" + key + "+ *" + key + "-")
            << mode << " over link " << static_cast<int>(link) << ", key " << id;
      }
    }
  }
}

} // namespace

} // namespace trellivar
