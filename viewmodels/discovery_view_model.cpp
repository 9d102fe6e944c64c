#include "viewmodels/discovery_view_model.h"

#include "core/known_devices.h"
#include "core/l10n.h"
#include "core/modifier.h"
#include "engine/capture_interpreter.h"
#include "viewmodels/keyboard_layout.h"

#include <algorithm>
#include <array>
#include <exception>
#include <span>
#include <string_view>
#include <utility>

namespace trellivar {

namespace {

constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// By the registered identity; failing that by name; failing that the first that may be anything.
std::optional<DeviceIdentity> padAmong(std::span<const ConnectedDevice> devices,
                                       const KnownDevice& pad, const std::string& modeId) {
  if (const KnownMode* mode = pad.mode(modeId); mode && !mode->transports.empty()) {
    const DeviceIdentity registered = mode->transports.front().identity;
    if (std::ranges::find(devices, registered, &ConnectedDevice::id) != devices.end())
      return registered;
  }
  const std::string name = pad.name + "-" + modeId;
  for (const ConnectedDevice& device : devices) {
    if (std::ranges::equal(device.name, name, {}, lowerCase, lowerCase)) return device.id();
  }
  for (const ConnectedDevice& device : devices) {
    if (!KnownDevices::knownAcrossModes(device.vendorId, device.productId)) return device.id();
  }
  return std::nullopt;
}

void setIgnored(RemapEngine& engine, bool ignored, DeviceIdentity identity, const Report& report) {
  for (const DeviceKind kind : allDeviceKinds) {
    try {
      engine.setDeviceIgnored(ignored, identity.vendorId, identity.productId, kind);
    } catch (const std::exception& error) {
      report(error.what());
    }
  }
}

} // namespace

/// Lets the raw events of the pad pass the engine until it ends, at the latest with its life.
class DiscoveryViewModel::Exemption {
public:
  Exemption(std::shared_ptr<RemapEngine> engine, DeviceIdentity identity, Report report)
      : engine_(std::move(engine)), identity_(identity), report_(std::move(report)) {
    setIgnored(*engine_, true, identity_, report_);
  }
  Exemption(const Exemption&) = delete;
  Exemption& operator=(const Exemption&) = delete;
  ~Exemption() { end(); }

  DeviceIdentity identity() const noexcept { return identity_; }
  /// Only the first time: by now the pad may be exempted by somebody else.
  void end() {
    if (!std::exchange(hasEnded_, true)) setIgnored(*engine_, false, identity_, report_);
  }

private:
  std::shared_ptr<RemapEngine> engine_;
  DeviceIdentity identity_;
  Report report_;
  bool hasEnded_ = false;
};

std::shared_ptr<DiscoveryViewModel> DiscoveryViewModel::make(Setup setup) {
  return std::shared_ptr<DiscoveryViewModel>(new DiscoveryViewModel(std::move(setup)));
}

/// A capture that goes on without the model must not keep the pad exempted, nor end the exemption
/// of whoever listens next.
DiscoveryViewModel::~DiscoveryViewModel() {
  const auto identity = *deviceIdentity_;
  const auto exemption = exemption_.lock();
  if (exemption) exemption->end();
  if (identity && !(exemption && exemption->identity() == *identity))
    setIgnored(*setup_.engine, false, *identity, setup_.report);
}

void DiscoveryViewModel::checkPresence() {
  sessionToken_.advance();
  isCapturing_.set(false);
  lastError_.set(std::nullopt);
  const auto devices = setup_.enumerator->connectedKeyboards();
  const auto pad = std::ranges::find(setup_.registry, KnownDevices::padModel, &KnownDevice::name);
  if (pad == setup_.registry.end()) return fail(std::string(L10n::t(L10n::Key::errNotInRegistry)));
  if (const auto identity = padAmong(devices, *pad, setup_.modeId)) return confirm(*identity);
  fail(L10n::t(L10n::Key::errPadNotSeen, setup_.modeId, setup_.modeId));
}

void DiscoveryViewModel::fail(std::string message) {
  presenceConfirmed_.set(false);
  lastError_.set(std::move(message));
}

void DiscoveryViewModel::confirm(DeviceIdentity identity) {
  deviceIdentity_.set(identity);
  presenceConfirmed_.set(true);
  step_.set(asking(setup_.keyIds.begin()));
}

DiscoveryViewModel::Step DiscoveryViewModel::asking(std::vector<int>::const_iterator key) const {
  if (key == setup_.keyIds.end()) return {Step::Review{}};
  return {Step::PressKey{*key}};
}

/// A capture that takes over from another of the same pad shares its exemption, so that the end of
/// the first does not end it for the second.
std::shared_ptr<DiscoveryViewModel::Exemption>
DiscoveryViewModel::exemption(DeviceIdentity identity) {
  auto shared = exemption_.lock();
  if (!shared || shared->identity() != identity)
    shared = std::make_shared<Exemption>(setup_.engine, identity, setup_.report);
  exemption_ = shared;
  return shared;
}

void DiscoveryViewModel::captureKey(int keyId, Completion completion) {
  const auto identity = *deviceIdentity_;
  if (!identity) return completion();
  isCapturing_.set(true);
  lastError_.set(std::nullopt);
  setup_.capturer->capture(capturePeriod,
                           [weak = weak_from_this(), token = sessionToken_.value(), keyId,
                            completion = std::move(completion), ignored = exemption(*identity)](
                               const std::vector<DeviceKeyEvent>& events) mutable {
                             ignored.reset();
                             const auto self = weak.lock();
                             if (self && self->sessionToken_.isCurrent(token))
                               self->heard(keyId, events);
                             completion();
                           });
}

void DiscoveryViewModel::heard(int keyId, const std::vector<DeviceKeyEvent>& events) {
  const DeviceIdentity pad = **deviceIdentity_;
  auto signature = CaptureInterpreter::signature(events, pad.vendorId, pad.productId);
  isCapturing_.set(false);
  if (signature.codes.empty())
    return lastError_.set(std::string(L10n::t(L10n::Key::errNoCatchDiscovery)));
  auto captured = *captured_;
  captured.insert_or_assign(keyId, std::move(signature));
  captured_.set(std::move(captured));
  advance(keyId);
}

void DiscoveryViewModel::advance(int afterKeyId) {
  const auto key = std::ranges::find(setup_.keyIds, afterKeyId);
  step_.set(asking(key == setup_.keyIds.end() ? key : std::next(key)));
}

void DiscoveryViewModel::save() {
  const auto identity = *deviceIdentity_;
  if (!identity) return;
  auto all = setup_.signatures->load();
  // A record without a mode comes from learning single keys; it would go before this one.
  std::erase_if(all, [&](const StoredDeviceSignatures& record) {
    return record.vendorId == identity->vendorId && record.productId == identity->productId &&
           record.modeId.value_or(setup_.modeId) == setup_.modeId;
  });
  StoredDeviceSignatures record{identity->vendorId, identity->productId, {}, setup_.modeId};
  for (const auto& [keyId, signature] : *captured_)
    record.keySignatures.push_back({keyId, signature});
  all.push_back(std::move(record));
  setup_.signatures->save(all);
  step_.set({Step::Done{}});
}

std::string DiscoveryViewModel::label(int forKeyId) const {
  const auto found = captured_->find(forKeyId);
  if (found == captured_->end()) return L10n::t(L10n::Key::keyN, forKeyId);
  std::string codes;
  for (const Key& code : found->second.codes) {
    const auto modifier = Modifier::fromRawValue(code.keyCode.text());
    codes += (codes.empty() ? "" : " ") +
             (modifier ? std::string(modifier->symbol()) : friendlyLabel(code));
  }
  return L10n::t(L10n::Key::keyNNamed, forKeyId, codes);
}

std::string DiscoveryViewModel::friendlyLabel(const Key& key) {
  using Text = L10n::Key;
  static constexpr std::array<std::pair<std::string_view, Text>, 7> texts{{
      {"volume_increment", Text::volumeUp},
      {"volume_decrement", Text::volumeDown},
      {"mute", Text::mute},
      {"play_or_pause", Text::playPause},
      {"button1", Text::button1},
      {"button2", Text::button2},
      {"button3", Text::button3},
  }};
  const std::string& name = key.keyCode.text();
  for (const auto& [named, text] : texts) {
    if (named == name) return std::string(L10n::t(text));
  }
  return KeyboardLayout::displayLabel(name);
}

} // namespace trellivar
