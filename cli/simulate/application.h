#pragma once

#include "cli/pad_link_state.h"
#include "core/profile_store.h"
#include "core/signature_store.h"
#include "engine/connected_device.h"
#include "engine/device_key_event.h"
#include "simulator/machine/machine.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::cli::simulate {

/// What stands between the person at the desk and the engine: profiles, the pad in use, learning
/// and recording. Everything happens on the desk's queue.
class Application {
public:
  /// Something was learned or recorded, or else what people are told.
  template <class Result> struct Outcome {
    std::optional<Result> result;
    std::string error;
  };

  /// How often the permissions are looked at.
  static constexpr Seconds pollInterval{1.5};
  /// Before a capture, so that the release of the key that started it is not captured.
  static constexpr Seconds learnReleaseDelay{0.1};

  /// Profiles and learned keys are kept in `dataFolder`, or nowhere. Throws BadInput for profiles
  /// that cannot be read. `machine` must outlive the application.
  Application(desk::Machine& machine, const std::optional<std::filesystem::path>& dataFolder);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  const std::vector<Profile>& profiles() const noexcept { return profiles_; }
  /// The mode of the pad in use.
  std::string mode() const;
  PadLinkState padLink() const;

  void bind(std::string_view mode, int key, const Output& output,
            const std::optional<std::string>& label);

  using Learned = std::function<void(const Outcome<KeySignature>&)>;
  using Recorded = std::function<void(const Outcome<Output>&)>;
  void learn(int key, Learned completion);
  void record(int key, Recorded completion);
  /// Somebody has not been told yet what came of learning or recording.
  bool isCapturing() const noexcept { return awaited_ > 0; }

  /// The pad's firmware holds the bindings of these modes.
  void setPortableModes(std::set<std::string> modes);

private:
  void poll();
  void refreshDevices();
  void use(const ConnectedDevice& connected);
  void applyAllModes();
  Profile& profileOf(std::string_view mode);
  struct Attempt {
    int key = 0;
    int token = 0;
    int periodsLeft = 0;
  };
  /// `completion`, which is counted until it is called.
  template <class Result> auto awaited(std::function<void(const Outcome<Result>&)> completion);
  void attemptLearn(Attempt attempt, Learned completion);
  void heard(Attempt attempt, const std::vector<DeviceKeyEvent>& events, Learned completion);
  void keep(int key, const KeySignature& signature);
  void attemptRecord(Attempt attempt, const Recorded& completion);
  void endActiveCapture();

  desk::Machine& machine_;
  std::optional<ProfileStore> store_;
  std::unique_ptr<SignaturePersisting> signatures_;
  std::vector<Profile> profiles_;
  std::set<std::string> portableModes_;
  TrellivarDevice device_;
  std::vector<ConnectedDevice> connected_; ///< the pads among the attached devices
  int awaited_ = 0;                        ///< completions that have not been called
  int captureToken_ = 0;                   ///< of the captures that are still wanted
  std::optional<DeviceIdentity> learning_; ///< the pad that the engine leaves alone meanwhile
  std::shared_ptr<void> hotplugCallback_;
  WorkItem pollWork_;
  std::vector<WorkItem> captureWork_; ///< several, while one capture takes over from another
};

} // namespace trellivar::cli::simulate
