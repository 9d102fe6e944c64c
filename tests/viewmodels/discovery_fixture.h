#pragma once

#include "tests/support/printing.h"
#include "tests/viewmodels/device_words.h"
#include "tests/viewmodels/held_capturer.h"
#include "tests/viewmodels/recording_engine.h"
#include "tests/viewmodels/recording_signatures.h"
#include "viewmodels/discovery_view_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {

inline void PrintTo(const DiscoveryViewModel::Step& step, std::ostream* out) {
  if (const auto* press = std::get_if<DiscoveryViewModel::Step::PressKey>(&step.value))
    *out << "press key " << press->keyId;
  else
    *out << "step " << step.value.index();
}

/// The discovery of one mode, on a desk whose every part the test holds.
struct DiscoveryFixture : testing::Test {
  using Step = DiscoveryViewModel::Step;
  using Events = std::vector<DeviceKeyEvent>;
  using Lines = std::vector<std::string>;
  using Records = std::vector<StoredDeviceSignatures>;

  static constexpr Step flipSwitch{Step::FlipSwitch{}};
  static constexpr Step review{Step::Review{}};
  static constexpr Step done{Step::Done{}};
  static constexpr Step press(int keyId) { return {Step::PressKey{keyId}}; }

  static constexpr DeviceIdentity padOnCable{0x4C4A, 0x4155};
  static constexpr DeviceIdentity padInModeM{0x05AC, 0x0220};

  std::shared_ptr<RecordingEngine> engine = std::make_shared<RecordingEngine>();
  std::shared_ptr<HeldCapturer> capturer = std::make_shared<HeldCapturer>();
  std::shared_ptr<StubDeviceEnumerator> bus = std::make_shared<StubDeviceEnumerator>();
  std::shared_ptr<RecordingSignatures> signatures = std::make_shared<RecordingSignatures>();
  Lines reports;
  Lines completed; ///< one line for each completion
  std::shared_ptr<DiscoveryViewModel> model = discovery();

  std::shared_ptr<DiscoveryViewModel> discovery(std::string modeId = "P",
                                                std::vector<int> keyIds = {1, 2, 3}) {
    return DiscoveryViewModel::make(
        {std::move(modeId), engine, capturer, bus, signatures, std::move(keyIds),
         [this](std::string_view what) { reports.emplace_back(what); }});
  }

  /// The pad is there, by cable unless it is said, and has been seen.
  void confirm(const ConnectedDevice& pad = words::onCable) {
    bus->devices = {pad};
    model->checkPresence();
    ASSERT_TRUE(*model->presenceConfirmed());
  }
  void capture(int keyId) {
    model->captureKey(keyId, [this, keyId] { completed.push_back(std::to_string(keyId)); });
  }

  static Key key(std::string_view name, Key::Kind kind = Key::Kind::keyCode) {
    return {KeyName(name), kind};
  }
  static DeviceKeyEvent event(DeviceIdentity pad, const Key& key, KeyEvent::Phase phase) {
    return {{key, phase, 0, false}, pad.vendorId, pad.productId};
  }
  /// A press and a release of each key, one after another.
  static Events taps(DeviceIdentity pad, const std::vector<Key>& keys) {
    Events events;
    for (const Key& each : keys) {
      events.push_back(event(pad, each, KeyEvent::Phase::down));
      events.push_back(event(pad, each, KeyEvent::Phase::up));
    }
    return events;
  }
  static Events tapOf(std::string_view name) { return taps(padOnCable, {key(name)}); }
  static KeySignature signatureOf(std::string_view name) { return {{key(name)}, false}; }

  /// Captures a key that sends this.
  void learn(int keyId, std::string_view name) {
    capture(keyId);
    capturer->finish(tapOf(name));
  }

  /// What the engine is told for every kind of the pad, in the order of the kinds.
  static Lines forEveryKind(const std::string& sign, DeviceIdentity pad = padOnCable) {
    const std::string identity =
        sign + std::to_string(pad.vendorId) + ":" + std::to_string(pad.productId);
    return {identity + " keyboard", identity + " consumer", identity + " pointing"};
  }
  /// What the engine has been told since the last call.
  Lines told() { return std::exchange(engine->ignores, {}); }
};

} // namespace trellivar
