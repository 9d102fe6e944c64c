#pragma once

#include "simulator/desk/manual_queue.h"
#include "tests/support/printing.h"
#include "tests/viewmodels/held_capturer.h"
#include "tests/viewmodels/recording_engine.h"
#include "tests/viewmodels/recording_signatures.h"
#include "viewmodels/mapping_view_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {

inline constexpr DeviceIdentity pad{7, 9};
inline constexpr DeviceIdentity keyboard{1, 2};

inline Key plainKey(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }
inline KeySignature signatureOf(std::string_view name) { return {{plainKey(name)}, false}; }
inline Output typing(std::string_view name) { return {Output::Sequence{{plainKey(name)}}}; }

/// A press and a release of one key.
inline std::vector<DeviceKeyEvent> tap(DeviceIdentity device, std::string_view name) {
  const Key key = plainKey(name);
  return {{{key, KeyEvent::Phase::down, 1, false}, device.vendorId, device.productId},
          {{key, KeyEvent::Phase::up, 2, false}, device.vendorId, device.productId}};
}

/// A pad that the registry does not know: keys 1 and 2 have been learned, key 3 has not.
inline TrellivarDevice unknownPad() {
  return {"Some pad",
          pad.vendorId,
          pad.productId,
          {{{1, 0, 0, signatureOf("a"), {signatureOf("alternative")}},
            {2, 0, 1, signatureOf("b"), {}},
            {3, 0, 2, {}, {}}}}};
}

/// A model on virtual time between an engine, a capturer and a store that remember everything.
class MappingTest : public testing::Test {
protected:
  using Texts = std::vector<std::string>;
  using Times = std::vector<double>;
  using Completion = MappingViewModel::Completion;

  MappingTest() {
    engine_->isReleased = [this] {
      polls_.push_back(now());
      return isReleased_;
    };
  }

  /// Makes the model of `setup_` as it is now.
  MappingViewModel& make() {
    model_ = MappingViewModel::make(setup_);
    weak_ = model_;
    return *model_;
  }

  Completion counted() {
    return [this] { ++completed_; };
  }
  void learn(int keyId) {
    model_->select(keyId);
    model_->learnKey(counted());
  }
  void record(int keyId) {
    model_->select(keyId);
    model_->record(counted());
  }

  /// Lets time pass until one more capture has been started; answers when that was.
  double nextCapture() {
    const std::size_t before = capturer_->started.size();
    while (capturer_->started.size() == before) {
      if (!queue_.runNext(Instant(Seconds(1000)))) {
        ADD_FAILURE() << "nothing is captured any more";
        break;
      }
    }
    return now();
  }
  void learnFrom(std::vector<DeviceKeyEvent> events) {
    nextCapture();
    capturer_->finish(std::move(events));
  }

  double now() const { return queue_.now().time_since_epoch().count(); }
  std::optional<std::string> lastError() const { return *model_->lastError(); }
  KeySignature signature(std::size_t index) const {
    return model_->device()->layout.keys.at(index).signature;
  }
  const std::vector<KeyMapping>& mappings() const { return model_->profile()->mappings; }

  desk::ManualQueue queue_;
  std::shared_ptr<RecordingEngine> engine_ = std::make_shared<RecordingEngine>();
  std::shared_ptr<HeldCapturer> capturer_ = std::make_shared<HeldCapturer>();
  std::shared_ptr<RecordingSignatures> signatures_ = std::make_shared<RecordingSignatures>();

  bool isReleased_ = true;      ///< what the engine answers
  Times polls_;                 ///< when it was asked
  int completed_ = 0;           ///< activities that have ended
  std::vector<Profile> edited_; ///< what the owner of the profile was given
  Texts reports_;

  MappingViewModel::Setup setup_{
      .queue = queue_,
      .device = unknownPad(),
      .profile = {UUID::random(), "Work", {{1, typing("x"), "Cut"}, {2, typing("c"), {}}}},
      .engine = engine_,
      .capturer = capturer_,
      .signatures = signatures_,
      .learnReleaseDelay = Seconds(0.125),
      .onProfileEdited = [this](const Profile& profile) { edited_.push_back(profile); },
      .report = [this](std::string_view text) { reports_.emplace_back(text); },
  };
  std::shared_ptr<MappingViewModel> model_;
  std::weak_ptr<MappingViewModel> weak_; ///< of the same, to see it go
};

} // namespace trellivar
