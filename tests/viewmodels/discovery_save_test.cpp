#include "tests/viewmodels/discovery_fixture.h"
#include "tests/viewmodels/language_change.h"

namespace trellivar {
namespace {

using namespace words;

struct DiscoverySaveTest : DiscoveryFixture {
  static StoredDeviceSignatures record(DeviceIdentity pad, std::optional<std::string> mode,
                                       std::vector<StoredKeySignature> keys = {}) {
    return {pad.vendorId, pad.productId, std::move(keys), std::move(mode)};
  }
};

TEST_F(DiscoverySaveTest, doesNothingBeforeThePadIsSeen) {
  signatures->records = {record(padOnCable, "P")};
  model->save();
  EXPECT_EQ(signatures->saves, 0);
  EXPECT_EQ(*model->step(), flipSwitch);
}

TEST_F(DiscoverySaveTest, keepsTheKeysByAscendingIdAndIsDone) {
  model = discovery("P", {9, 2, 5});
  confirm();
  learn(9, "a");
  learn(2, "b");
  learn(5, "c");
  model->save();
  EXPECT_EQ(signatures->records,
            Records{record(padOnCable, "P",
                           {{2, signatureOf("b")}, {5, signatureOf("c")}, {9, signatureOf("a")}})});
  EXPECT_EQ(signatures->saves, 1);
  EXPECT_EQ(*model->step(), done);
}

TEST_F(DiscoverySaveTest, isPossibleAtAnyStepWithWhatThereIs) {
  confirm();
  learn(2, "b");
  model->save();
  EXPECT_EQ(signatures->records, Records{record(padOnCable, "P", {{2, signatureOf("b")}})});
  EXPECT_EQ(*model->step(), done);
}

TEST_F(DiscoverySaveTest, keepsARecordWithoutKeys) {
  confirm();
  model->save();
  EXPECT_EQ(signatures->records, Records{record(padOnCable, "P")});
}

TEST_F(DiscoverySaveTest, replacesEveryRecordOfTheIdentityThatHasItsModeOrNoneAndNoOther) {
  const StoredKeySignature old{1, signatureOf("x")};
  const StoredDeviceSignatures p = record(padOnCable, "P", {old});
  const StoredDeviceSignatures r = record(padOnCable, "R", {old});
  const StoredDeviceSignatures without = record(padOnCable, std::nullopt, {old});
  const StoredDeviceSignatures vendor = record({1, padOnCable.productId}, "M", {old});
  const StoredDeviceSignatures product = record({padOnCable.vendorId, 1}, "M", {old});
  const StoredDeviceSignatures same = record(padOnCable, "M", {old});
  const StoredDeviceSignatures elsewhere = record(padInModeM, std::nullopt, {old});
  const StoredDeviceSignatures empty = record(padOnCable, "", {old});
  signatures->records = {without, p, same, r, without, vendor, same, product, elsewhere, empty};
  model = discovery("M");
  confirm(device("Orlo3-M", padOnCable.vendorId, padOnCable.productId));
  learn(1, "a");
  model->save();
  EXPECT_EQ(signatures->records, (Records{p, r, vendor, product, elsewhere, empty,
                                          record(padOnCable, "M", {{1, signatureOf("a")}})}));
}

TEST_F(DiscoverySaveTest, readsTheRecordsWhenItSaves) {
  confirm();
  signatures->records = {record(padInModeM, "M")};
  model->save();
  EXPECT_EQ(signatures->records, (Records{record(padInModeM, "M"), record(padOnCable, "P")}));
}

TEST_F(DiscoverySaveTest, isTheLastStepThatIsAnnounced) {
  confirm();
  int savesBefore = 0;
  const Subscription seen = model->step().willChange([&](const Step& next) {
    EXPECT_EQ(next, done);
    savesBefore = signatures->saves;
  });
  model->save();
  EXPECT_EQ(savesBefore, 1);
}

TEST_F(DiscoverySaveTest, maySaveAgain) {
  confirm();
  learn(1, "a");
  model->save();
  learn(1, "b");
  EXPECT_EQ(*model->step(), press(2));
  model->save();
  EXPECT_EQ(signatures->records, Records{record(padOnCable, "P", {{1, signatureOf("b")}})});
}

TEST(DiscoveryStep, differsByCaseAndKey) {
  using Step = DiscoveryViewModel::Step;
  EXPECT_EQ(Step{}, Step{Step::FlipSwitch{}});
  EXPECT_EQ(Step{Step::PressKey{1}}, Step{Step::PressKey{1}});
  EXPECT_NE(Step{Step::PressKey{1}}, Step{Step::PressKey{2}});
  EXPECT_NE(Step{Step::Review{}}, Step{Step::Done{}});
}

// Labels

struct DiscoveryLabelTest : DiscoveryFixture {};

TEST_F(DiscoveryLabelTest, isTheNumberOfAKeyThatIsNotCaptured) {
  EXPECT_EQ(model->label(2), "Key 2");
  EXPECT_EQ(model->label(-1), "Key -1");
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(model->label(2), "按键 2");
}

TEST_F(DiscoveryLabelTest, showsWhatACapturedKeySends) {
  confirm();
  learn(2, "c");
  EXPECT_EQ(model->label(2), "Key 2 — C");
  EXPECT_EQ(model->label(1), "Key 1");
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(model->label(2), "按键 2 — C");
}

TEST_F(DiscoveryLabelTest, showsModifiersByTheirSymbols) {
  confirm();
  capture(1);
  capturer->finish(taps(padOnCable, {key("left_command"), key("right_option"), key("spacebar")}));
  EXPECT_EQ(model->label(1), "Key 1 — ⌘ ⌥R Space");
}

TEST_F(DiscoveryLabelTest, speaksTheLanguageOfTheMoment) {
  confirm();
  capture(1);
  capturer->finish(taps(padOnCable, {key("mute", Key::Kind::consumerKeyCode)}));
  EXPECT_EQ(model->label(1), "Key 1 — Mute");
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(model->label(1), "按键 1 — 静音");
}

TEST_F(DiscoveryLabelTest, isFriendlyForMediaKeysAndButtons) {
  struct Row {
    const char *name, *english, *chinese;
  };
  const Row rows[] = {
      {"volume_increment", "Volume Up", "音量 +"},
      {"volume_decrement", "Volume Down", "音量 −"},
      {"mute", "Mute", "静音"},
      {"play_or_pause", "Play / Pause", "播放 / 暂停"},
      {"button1", "Button 1", "按钮 1"},
      {"button2", "Button 2", "按钮 2"},
      {"button3", "Button 3", "按钮 3"},
  };
  for (const Row& row : rows) {
    for (const Key::Kind kind : Key::allKinds) {
      EXPECT_EQ(DiscoveryViewModel::friendlyLabel(key(row.name, kind)), row.english);
      const LanguageChange chinese(AppLanguage::zhHans);
      EXPECT_EQ(DiscoveryViewModel::friendlyLabel(key(row.name, kind)), row.chinese);
    }
  }
}

TEST_F(DiscoveryLabelTest, isTheCapOfAnyOtherKey) {
  for (const auto& [name, label] :
       std::vector<std::pair<const char*, const char*>>{{"a", "A"},
                                                        {"7", "7"},
                                                        {"spacebar", "Space"},
                                                        {"left_arrow", "←"},
                                                        {"f5", "F5"},
                                                        {"button4", "button4"},
                                                        {"fast_forward", "fast_forward"},
                                                        {"left_command", "left_command"},
                                                        {"", ""}})
    EXPECT_EQ(DiscoveryViewModel::friendlyLabel(key(name)), label);
}

} // namespace
} // namespace trellivar
