#include "core/known_devices.h"
#include "core/mode_sets.h"
#include "tests/viewmodels/recording_engine.h"
#include "viewmodels/pressed_keys.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

constexpr DeviceIdentity unknown{7, 9};
constexpr DeviceIdentity cable{0x4C4A, 0x4155};
constexpr DeviceIdentity bluetoothP{0x04E8, 0x7021};
constexpr DeviceIdentity bluetoothM{0x05AC, 0x0220};

KeySignature sending(std::initializer_list<std::string_view> names, bool isChord = true) {
  KeySignature signature{{}, isChord};
  for (const std::string_view name : names)
    signature.codes.push_back({KeyName(name), Key::Kind::keyCode});
  return signature;
}

/// A device whose keys send these, from key 1 on.
TrellivarDevice deviceOf(DeviceIdentity identity, const std::vector<KeySignature>& signatures) {
  TrellivarDevice device{"Pad", identity.vendorId, identity.productId, {}};
  int id = 0;
  for (const KeySignature& signature : signatures)
    device.layout.keys.push_back({.id = ++id, .row = 0, .col = id - 1, .signature = signature});
  return device;
}

class PressedKeysTest : public testing::Test {
protected:
  using Ids = std::set<int>;

  void workOn(TrellivarDevice device) { device_.set(std::move(device)); }
  /// The ids after the engine has told that these are down, and nothing else.
  Ids whileDown(std::initializer_list<std::string_view> names, DeviceIdentity on = unknown) {
    std::vector<DeviceKey> down;
    for (const std::string_view name : names)
      down.push_back({on, KeyName(name)});
    engine_.tell(down);
    return *pressed_->ids();
  }

  RecordingEngine engine_;
  Published<TrellivarDevice> device_{deviceOf(unknown, {sending({"a"}), sending({"b"})})};
  std::optional<PressedKeys> pressed_{std::in_place, engine_, device_};
};

TEST_F(PressedKeysTest, areNoneToBeginWith) { EXPECT_EQ(*pressed_->ids(), Ids{}); }

TEST_F(PressedKeysTest, areThoseWhoseSignatureIsDown) {
  EXPECT_EQ(whileDown({"a"}), Ids{1});
  EXPECT_EQ(whileDown({"b", "a"}), (Ids{1, 2}));
  EXPECT_EQ(whileDown({"b", "x"}), Ids{2});
  EXPECT_EQ(whileDown({}), Ids{});
}

TEST_F(PressedKeysTest, announceEachChangeOnce) {
  std::vector<Ids> announced;
  const auto seen = pressed_->ids().willChange([&](const Ids& next) { announced.push_back(next); });
  whileDown({"a"});
  whileDown({"a", "x"});
  whileDown({});
  EXPECT_EQ(announced, (std::vector<Ids>{{1}, {}}));
}

TEST_F(PressedKeysTest, sendAllOfAChord) {
  workOn(deviceOf(unknown, {sending({"left_control", "c"}), sending({"left_control", "v"})}));
  EXPECT_EQ(whileDown({"left_control"}), Ids{});
  EXPECT_EQ(whileDown({"c"}), Ids{});
  EXPECT_EQ(whileDown({"v", "left_control"}), Ids{2});
  EXPECT_EQ(whileDown({"v", "left_control", "c"}), (Ids{1, 2}));
}

TEST_F(PressedKeysTest, areNotThoseWhoseKeyIsPartOfACompleteChord) {
  workOn(deviceOf(unknown, {sending({"c"}), sending({"left_control", "c"}), sending({"v"})}));
  EXPECT_EQ(whileDown({"c"}), Ids{1});
  EXPECT_EQ(whileDown({"c", "left_control"}), Ids{2});
  EXPECT_EQ(whileDown({"c", "left_control", "v"}), (Ids{2, 3}));
}

TEST_F(PressedKeysTest, ofSeveralThatSendTheSameAreAll) {
  workOn(deviceOf(unknown, {sending({"a"}), sending({"a"}, false)}));
  EXPECT_EQ(whileDown({"a"}), (Ids{1, 2}));
}

TEST_F(PressedKeysTest, ofKeysThatComeOneAfterAnotherFollowTheFirst) {
  workOn(deviceOf(unknown, {sending({"a", "b"}, false)}));
  EXPECT_EQ(whileDown({"a"}), Ids{1});
  EXPECT_EQ(whileDown({"b"}), Ids{});
}

TEST_F(PressedKeysTest, mayHaveAnAlternativeSignature) {
  TrellivarDevice device = deviceOf(unknown, {sending({"a"})});
  device.layout.keys[0].altSignatures = {sending({"left_option", "z"})};
  workOn(device);
  EXPECT_EQ(whileDown({"z"}), Ids{});
  EXPECT_EQ(whileDown({"z", "left_option"}), Ids{1});
  EXPECT_EQ(whileDown({"a"}), Ids{1});
}

TEST_F(PressedKeysTest, areNeverThoseThatHaveNotBeenLearned) {
  workOn(deviceOf(unknown, {{}, {{}, true}}));
  EXPECT_EQ(whileDown({"a"}), Ids{});
}

TEST_F(PressedKeysTest, ofAnotherPadDoNotCount) {
  EXPECT_EQ(whileDown({"a"}, {7, 10}), Ids{});
  engine_.tell({{unknown, KeyName("b")}, {{7, 10}, KeyName("a")}});
  EXPECT_EQ(*pressed_->ids(), Ids{2});
}

TEST_F(PressedKeysTest, ofTwoTransportsAreNoChordTogether) {
  workOn(initialDevice());
  engine_.tell({{cable, KeyName("c")}, {bluetoothP, KeyName("left_control")}});
  EXPECT_EQ(*pressed_->ids(), Ids{});
}

TEST_F(PressedKeysTest, ofAKnownPadComeFromEachTransportAsTheRegistryKnowsIt) {
  workOn(initialDevice());
  EXPECT_EQ(whileDown({"left_control", "v"}, cable), Ids{2});
  EXPECT_EQ(whileDown({"volume_decrement"}, bluetoothP), Ids{2});
  EXPECT_EQ(whileDown({"left_option", "z"}, bluetoothP), Ids{1});
  EXPECT_EQ(whileDown({"left_control", "v"}, bluetoothP), Ids{});
  EXPECT_EQ(whileDown({"left_control", "v"}, bluetoothM), Ids{});
}

TEST_F(PressedKeysTest, ofAnotherModeAreThoseThatWereLearned) {
  workOn(deviceOf(bluetoothM, {{}, sending({"left_option", "2"})}));
  EXPECT_EQ(whileDown({"left_option", "2"}, bluetoothM), Ids{2});
}

TEST_F(PressedKeysTest, followThePadThatIsWorkedOn) {
  whileDown({"a", "b"});
  workOn(deviceOf({7, 10}, {sending({"a"})}));
  EXPECT_EQ(*pressed_->ids(), Ids{}) << "another pad";
  workOn(deviceOf(unknown, {sending({"x"}), {}, sending({"a"})}));
  EXPECT_EQ(*pressed_->ids(), Ids{3}) << "learned anew while it was down";
}

TEST_F(PressedKeysTest, areNotAskedForAfterTheirEnd) {
  pressed_.reset();
  engine_.tell({{unknown, KeyName("a")}});
  workOn(initialDevice());
}

} // namespace
} // namespace trellivar
