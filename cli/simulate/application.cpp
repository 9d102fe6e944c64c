#include "cli/simulate/application.h"

#include "cli/data_folder.h"
#include "cli/profile_editing.h"
#include "core/known_devices.h"
#include "core/l10n.h"
#include "core/mode_profiles.h"
#include "core/mode_sets.h"
#include "engine/capture_interpreter.h"
#include "engine/recognised_pads.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellivar::cli::simulate {

namespace {

constexpr Seconds learnPeriod{12};
constexpr Seconds recordPeriod{8};
constexpr int capturePeriods = 3;

class MemorySignatures final : public SignaturePersisting {
public:
  std::vector<StoredDeviceSignatures> load() const override { return records_; }
  void save(std::span<const StoredDeviceSignatures> records) const override {
    records_.assign(records.begin(), records.end());
  }

private:
  mutable std::vector<StoredDeviceSignatures> records_;
};

std::unique_ptr<SignaturePersisting>
signaturesIn(const std::optional<std::filesystem::path>& folder) {
  if (folder) return std::make_unique<SignatureStore>(*folder);
  return std::make_unique<MemorySignatures>();
}

std::string text(L10n::Key key) { return std::string(L10n::text(key, AppLanguage::en)); }

} // namespace

Application::Application(desk::Machine& machine,
                         const std::optional<std::filesystem::path>& dataFolder)
    : machine_(machine), signatures_(signaturesIn(dataFolder)), device_(initialDevice()) {
  if (dataFolder) store_.emplace(*dataFolder);
  profiles_ = store_ ? loadProfiles(*store_) : migrated({});
  device_ = device_.applyingStoredSignatures(signatures_->load());
  hotplugCallback_ = machine_.hotplug->onDevicesChanged([this] { refreshDevices(); });
  applyAllModes();
  poll();
}

void Application::poll() {
  machine_.engine.startTap();
  pollWork_ = machine_.desk.queue().asyncAfter(pollInterval, [this] { poll(); });
}

void Application::refreshDevices() {
  connected_ = recognisedPads(machine_.enumerator.connectedKeyboards());
  if (!connected_.empty()) use(connected_.front());
}

void Application::use(const ConnectedDevice& connected) {
  if (connected.id() == device_.identity() && connected.name == device_.name) return;
  constexpr int keyCount = desk::Pad::keyIds.size();
  TrellivarDevice device = connected.asTrellivarDevice(keyCount);
  if (const auto layout = KnownDevices::layout(device.vendorId, device.productId, device.name))
    device.layout = *layout;
  endActiveCapture();
  device_ = device.applyingStoredSignatures(signatures_->load());
  applyAllModes();
}

/// What is still under way finds out by its token that nobody wants it any more.
void Application::endActiveCapture() {
  ++captureToken_;
  if (learning_) machine_.engine.setDeviceIgnored(false, learning_->vendorId, learning_->productId);
  learning_.reset();
}

std::string Application::mode() const {
  const auto found = KnownDevices::resolve(device_.vendorId, device_.productId, device_.name);
  return found ? found->modeId : machine_.pad.mode();
}

PadLinkState Application::padLink() const { return padLinkState(connected_); }

Profile& Application::profileOf(std::string_view mode) {
  return *std::ranges::find(profiles_, mode, &Profile::name); // `migrated` provides for each mode
}

void Application::applyAllModes() {
  machine_.engine.applyAll(
      setsForAllModes(device_, profiles_, signatures_->load(), portableModes_));
}

void Application::bind(std::string_view mode, int key, const Output& output,
                       const std::optional<std::string>& label) {
  bindKey(profileOf(mode), key, output, label);
  if (store_) store_->save(profiles_);
  applyAllModes();
}

void Application::setPortableModes(std::set<std::string> modes) {
  portableModes_ = std::move(modes);
  applyAllModes();
}

template <class Result>
auto Application::awaited(std::function<void(const Outcome<Result>&)> completion) {
  ++awaited_;
  return [this, completion = std::move(completion)](const Outcome<Result>& outcome) {
    --awaited_;
    completion(outcome);
  };
}

void Application::learn(int key, Learned completion) {
  endActiveCapture();
  learning_ = device_.identity();
  machine_.engine.setDeviceIgnored(true, device_.vendorId, device_.productId);
  attemptLearn({key, captureToken_, capturePeriods}, awaited(std::move(completion)));
}

void Application::attemptLearn(Attempt attempt, Learned completion) {
  std::erase_if(captureWork_, [](const WorkItem& work) { return !work.isPending(); });
  captureWork_.push_back(machine_.desk.queue().asyncAfter(
      learnReleaseDelay, [this, attempt, completion = std::move(completion)] {
        if (attempt.token != captureToken_) return heard(attempt, {}, completion);
        machine_.capturer.capture(learnPeriod,
                                  [=, this](const std::vector<DeviceKeyEvent>& events) mutable {
                                    heard(attempt, events, std::move(completion));
                                  });
      }));
}

void Application::heard(Attempt attempt, const std::vector<DeviceKeyEvent>& events,
                        Learned completion) {
  const Outcome<KeySignature> nothing{std::nullopt, text(L10n::Key::errNoCatchKey)};
  if (attempt.token != captureToken_) return completion(nothing);
  const auto signature = CaptureInterpreter::signature(events, device_.vendorId, device_.productId);
  if (signature.codes.empty() && attempt.periodsLeft > 1) {
    --attempt.periodsLeft;
    return attemptLearn(attempt, std::move(completion));
  }
  endActiveCapture();
  if (signature.codes.empty()) return completion(nothing);
  keep(attempt.key, signature);
  completion({signature, {}});
}

void Application::keep(int key, const KeySignature& signature) {
  device_ = device_.updatingSignature(key, signature);
  auto records = signatures_->load();
  std::erase_if(records, [&](const StoredDeviceSignatures& record) {
    return record.vendorId == device_.vendorId && record.productId == device_.productId;
  });
  if (auto record = device_.storedSignatures()) records.push_back(*std::move(record));
  signatures_->save(records);
  applyAllModes();
}

void Application::record(int key, Recorded completion) {
  endActiveCapture();
  attemptRecord({key, captureToken_, capturePeriods}, awaited(std::move(completion)));
}

void Application::attemptRecord(Attempt attempt, const Recorded& completion) {
  machine_.capturer.capture(recordPeriod, [=, this](const std::vector<DeviceKeyEvent>& events) {
    const Outcome<Output> nothing{std::nullopt, text(L10n::Key::errNoCatchShortcut)};
    if (attempt.token != captureToken_) return completion(nothing);
    const auto output = CaptureInterpreter::output(events, device_.vendorId, device_.productId);
    if (!output && attempt.periodsLeft > 1)
      return attemptRecord({attempt.key, attempt.token, attempt.periodsLeft - 1}, completion);
    endActiveCapture();
    if (!output) return completion(nothing);
    bind(mode(), attempt.key, *output, std::nullopt);
    completion({output, {}});
  });
}

} // namespace trellivar::cli::simulate
