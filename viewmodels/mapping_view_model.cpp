#include "viewmodels/mapping_view_model.h"

#include "core/l10n.h"
#include "core/mode_sets.h"
#include "engine/capture_interpreter.h"
#include "viewmodels/profile_editing.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace trellivar {

namespace {

std::string keyText(L10n::Key key) { return std::string(L10n::t(key)); }

} // namespace

std::shared_ptr<MappingViewModel> MappingViewModel::make(Setup setup) {
  return std::shared_ptr<MappingViewModel>(new MappingViewModel(std::move(setup)));
}

MappingViewModel::MappingViewModel(Setup setup)
    : setup_(std::move(setup)),
      device_(withStoredSignatures(std::exchange(setup_.device, {}))),
      profile_(std::exchange(setup_.profile, {})) {}

MappingViewModel::~MappingViewModel() {
  if (learningDevice_) setIgnored(false, *learningDevice_);
}

void MappingViewModel::select(std::optional<int> keyId) { selectedKeyId_.set(keyId); }

void MappingViewModel::switchProfile(Profile profile) {
  endActiveCapture();
  profile_.set(std::move(profile));
  selectedKeyId_.set(std::nullopt);
}

void MappingViewModel::switchDevice(const TrellivarDevice& device) {
  endActiveCapture();
  device_.set(withStoredSignatures(device));
  selectedKeyId_.set(std::nullopt);
}

std::optional<KeyMapping> MappingViewModel::mapping(int forKeyId) const {
  const KeyMapping* found = mappingOf(*profile_, forKeyId);
  return found ? std::optional(*found) : std::nullopt;
}

bool MappingViewModel::hasSignature(int keyId) const {
  const auto& keys = device_->layout.keys;
  const auto key = std::ranges::find(keys, keyId, &PhysicalKey::id);
  return key != keys.end() && !key->signature.codes.empty();
}

/// What is still under way finds out by its token that nobody wants it any more.
void MappingViewModel::endActiveCapture() {
  sessionToken_.advance();
  if (const auto identity = std::exchange(learningDevice_, std::nullopt))
    setIgnored(false, *identity);
  isLearning_.set(false);
  isRecording_.set(false);
}

void MappingViewModel::learnKey(Completion completion) {
  const auto keyId = *selectedKeyId_;
  if (!keyId) return completion();
  lastError_.set(std::nullopt);
  isLearning_.set(true);
  learningDevice_ = device_->identity();
  setIgnored(true, *learningDevice_);
  waitForRelease({*keyId,
                  setup_.queue.now() + setup_.learnReleaseTimeout,
                  {sessionToken_.value(), capturePeriods, std::move(completion)}});
}

void MappingViewModel::later(Seconds delay, Learning learning,
                             void (MappingViewModel::*step)(Learning)) {
  setup_.queue
      .asyncAfter(delay,
                  [weak = weak_from_this(), learning = std::move(learning), step] {
                    const auto self = weak.lock();
                    if (!self) return learning.attempt.completion();
                    ((*self).*step)(learning);
                  })
      .detach();
}

void MappingViewModel::waitForRelease(Learning learning) {
  if (!sessionToken_.isCurrent(learning.attempt.token)) return learning.attempt.completion();
  const bool isWaiting =
      setup_.queue.now() < learning.deadline && !setup_.engine->isDeviceReleased(device_->name);
  if (isWaiting)
    later(std::max(setup_.learnReleaseDelay, shortestReleasePoll), std::move(learning),
          &MappingViewModel::waitForRelease);
  else
    later(setup_.learnReleaseDelay, std::move(learning), &MappingViewModel::attemptLearn);
}

/// Nothing that is stale may listen: it would cut short whoever listens by now.
void MappingViewModel::attemptLearn(Learning learning) {
  if (!sessionToken_.isCurrent(learning.attempt.token)) return learning.attempt.completion();
  setup_.capturer->capture(learnPeriod, [weak = weak_from_this(), learning = std::move(learning)](
                                            const std::vector<DeviceKeyEvent>& events) {
    const auto self = weak.lock();
    if (!self || !self->sessionToken_.isCurrent(learning.attempt.token))
      return learning.attempt.completion();
    self->finishLearning(learning, events);
  });
}

void MappingViewModel::finishLearning(Learning learning,
                                      const std::vector<DeviceKeyEvent>& events) {
  const DeviceIdentity pad = device_->identity();
  const auto signature = CaptureInterpreter::signature(events, pad.vendorId, pad.productId);
  const bool isNothing = signature.codes.empty();
  if (isNothing && --learning.attempt.periodsLeft > 0)
    return later(setup_.learnReleaseDelay, std::move(learning), &MappingViewModel::attemptLearn);

  isLearning_.set(false);
  learningDevice_.reset();
  setIgnored(false, pad);
  if (isNothing) {
    lastError_.set(keyText(L10n::Key::errNoCatchKey));
  } else {
    device_.set(device_->updatingSignature(learning.keyId, signature));
    persistSignatures();
    reapply();
  }
  learning.attempt.completion();
}

void MappingViewModel::record(Completion completion) {
  if (!*selectedKeyId_) return completion();
  lastError_.set(std::nullopt);
  isRecording_.set(true);
  attemptRecord({sessionToken_.value(), capturePeriods, std::move(completion)});
}

void MappingViewModel::attemptRecord(Attempt attempt) {
  if (!*selectedKeyId_) {
    isRecording_.set(false);
    return attempt.completion();
  }
  setup_.capturer->capture(recordPeriod, [weak = weak_from_this(), attempt = std::move(attempt)](
                                             const std::vector<DeviceKeyEvent>& events) {
    const auto self = weak.lock();
    if (!self || !self->sessionToken_.isCurrent(attempt.token)) return attempt.completion();
    self->finishRecording(attempt, events);
  });
}

void MappingViewModel::finishRecording(Attempt attempt, const std::vector<DeviceKeyEvent>& events) {
  const auto output = CaptureInterpreter::output(events, device_->vendorId, device_->productId);
  if (!output && --attempt.periodsLeft > 0) return attemptRecord(std::move(attempt));

  isRecording_.set(false);
  if (!output) {
    lastError_.set(keyText(L10n::Key::errNoCatchShortcut));
  } else if (const auto keyId = *selectedKeyId_) {
    setMapping(*keyId, *output);
    applyAndShowError();
  }
  attempt.completion();
}

void MappingViewModel::assign(const Output& output) {
  const auto keyId = *selectedKeyId_;
  if (!keyId) return;
  if (!hasSignature(*keyId)) return lastError_.set(keyText(L10n::Key::errLearnFirst));
  setMapping(*keyId, output);
  applyAndShowError();
}

void MappingViewModel::setMapping(int keyId, const Output& output) {
  Profile profile = *profile_;
  bindKey(profile, keyId, output);
  edited(profile);
}

void MappingViewModel::rename(int keyId, std::string_view to) {
  Profile profile = *profile_;
  if (labelKey(profile, keyId, to)) edited(profile);
}

void MappingViewModel::edited(const Profile& profile) {
  profile_.set(profile);
  if (setup_.onProfileEdited) setup_.onProfileEdited(profile);
}

TrellivarDevice MappingViewModel::withStoredSignatures(const TrellivarDevice& device) const {
  return setup_.signatures ? device.applyingStoredSignatures(setup_.signatures->load()) : device;
}

std::vector<StoredDeviceSignatures> MappingViewModel::storedSignatures() const {
  return setup_.signatures ? setup_.signatures->load() : std::vector<StoredDeviceSignatures>();
}

void MappingViewModel::persistSignatures() const {
  if (!setup_.signatures) return;
  auto all = setup_.signatures->load();
  std::erase_if(all, [&](const StoredDeviceSignatures& record) {
    return record.vendorId == device_->vendorId && record.productId == device_->productId;
  });
  if (auto record = device_->storedSignatures()) all.push_back(*std::move(record));
  setup_.signatures->save(all);
}

void MappingViewModel::setIgnored(bool ignored, DeviceIdentity identity) const noexcept {
  try {
    setup_.engine->setDeviceIgnored(ignored, identity.vendorId, identity.productId);
  } catch (const std::exception& error) {
    setup_.report(error.what());
  }
}

/// The edited profile takes the place of its saved form.
void MappingViewModel::applyAllModes() const {
  auto profiles = setup_.allProfiles ? setup_.allProfiles() : std::vector{*profile_};
  for (Profile& each : profiles) {
    if (each.id == profile_->id) each = *profile_;
  }
  const auto portable = setup_.portableModes ? setup_.portableModes() : std::set<std::string>();
  setup_.engine->applyAll(setsForAllModes(*device_, profiles, storedSignatures(), portable));
}

void MappingViewModel::applyAndShowError() {
  try {
    applyAllModes();
  } catch (const std::exception& error) {
    lastError_.set(error.what());
    setup_.report(error.what());
  }
}

void MappingViewModel::reapply() {
  try {
    applyAllModes();
  } catch (const std::exception& error) {
    setup_.report(error.what());
  }
}

} // namespace trellivar
