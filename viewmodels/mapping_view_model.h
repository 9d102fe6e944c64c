#pragma once

#include "core/instant.h"
#include "core/profile.h"
#include "core/signature_store.h"
#include "engine/key_capturing.h"
#include "engine/log.h"
#include "engine/main_queue.h"
#include "engine/remap_engine.h"
#include "viewmodels/published.h"
#include "viewmodels/report.h"
#include "viewmodels/session_token.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

/// The pad and the profile that are being edited: selecting a key, learning what it sends,
/// recording or assigning what it does, labelling it. Every edit of a binding goes to the engine at
/// once, together with the profiles of all other modes.
///
/// Main thread. Who calls a function holds the model meanwhile. Whatever is under way holds the
/// model weakly: when the model has gone, completions are still called and nothing else happens.
/// (The capturer is asked to call them; who destroys it as well gives up those that it holds.)
class MappingViewModel : public std::enable_shared_from_this<MappingViewModel> {
public:
  /// Called exactly once on the main thread, when an activity has ended in whatever way.
  using Completion = std::function<void()>;

  /// How long the keys of the pad, or of a shortcut, are listened to at a time.
  static constexpr Seconds learnPeriod{12};
  static constexpr Seconds recordPeriod{8};
  /// Periods in which nothing usable was heard before it counts as a failure.
  static constexpr int capturePeriods = 3;
  /// Between two looks at whether the engine has let go of the pad, at the least.
  static constexpr Seconds shortestReleasePoll{0.05};

  struct Setup {
    MainQueue& queue; ///< must outlive the model
    TrellivarDevice device;
    Profile profile;
    std::shared_ptr<RemapEngine> engine;
    std::shared_ptr<KeyCapturing> capturer;
    std::shared_ptr<SignaturePersisting> signatures = {}; ///< null: what is learned is not kept
    Seconds learnReleaseDelay{0.1};   ///< before a pad key is listened for, each time
    Seconds learnReleaseTimeout{8.0}; ///< after it the engine is no longer waited for
    /// The profiles of all modes; empty: there is only the one being edited.
    std::function<std::vector<Profile>()> allProfiles = {};
    /// The modes whose bindings the pad's own firmware holds; empty: none.
    std::function<std::set<std::string>()> portableModes = {};
    /// Receives the profile after each edit.
    std::function<void(const Profile&)> onProfileEdited = {};
    Report report = debugLog;
  };

  /// The device gets what has been learned about it.
  static std::shared_ptr<MappingViewModel> make(Setup setup);
  MappingViewModel(const MappingViewModel&) = delete;
  MappingViewModel& operator=(const MappingViewModel&) = delete;
  /// Ends what is under way: the engine remaps the pad again.
  ~MappingViewModel();

  const Published<TrellivarDevice>& device() const noexcept { return device_; }
  const Published<Profile>& profile() const noexcept { return profile_; }
  const Published<std::optional<int>>& selectedKeyId() const noexcept { return selectedKeyId_; }
  const Published<bool>& isRecording() const noexcept { return isRecording_; }
  const Published<bool>& isLearning() const noexcept { return isLearning_; }
  /// What people are told, in the language of the moment at which it happened.
  const Published<std::optional<std::string>>& lastError() const noexcept { return lastError_; }

  /// None deselects.
  void select(std::optional<int> keyId);
  /// Works on another profile; what is being learned or recorded ends, and no key is selected.
  void switchProfile(Profile profile);
  /// Works on another pad, with what has been learned about it; otherwise like `switchProfile`.
  void switchDevice(const TrellivarDevice& device);

  /// The first binding of a key in the profile.
  std::optional<KeyMapping> mapping(int forKeyId) const;
  /// Whether the pad has the key and it is known what it sends. Only such keys can be bound.
  bool hasSignature(int keyId) const;

  /// Hears what the selected key sends and keeps it as its signature. Meanwhile the engine lets the
  /// pad's events through. Requires that nothing is being learned or recorded, else both activities
  /// run and cut each other short.
  void learnKey(Completion completion);
  /// Hears a shortcut on any keyboard but the pad and binds it to the key that is selected then.
  /// Requires the same.
  void record(Completion completion);
  /// Ends what is being learned or recorded, without a result.
  void endActiveCapture();

  /// Binds the selected key. A key that has not been learned is refused, with `lastError`.
  void assign(const Output& output);
  /// Labels the binding of a key; see `labelKey`. The engine is not concerned.
  void rename(int keyId, std::string_view to);
  /// Gives the engine everything anew. An error is only reported.
  void reapply();

private:
  struct Attempt {
    SessionToken::Value token;
    int periodsLeft;
    Completion completion;
  };
  struct Learning {
    int keyId;
    Instant deadline; ///< of waiting for the engine
    Attempt attempt;
  };

  explicit MappingViewModel(Setup setup);

  void waitForRelease(Learning learning);
  void attemptLearn(Learning learning);
  void finishLearning(Learning learning, const std::vector<DeviceKeyEvent>& events);
  /// Runs a step of learning later; should the model be gone by then, only the completion.
  void later(Seconds delay, Learning learning, void (MappingViewModel::*step)(Learning));
  void attemptRecord(Attempt attempt);
  void finishRecording(Attempt attempt, const std::vector<DeviceKeyEvent>& events);

  TrellivarDevice withStoredSignatures(const TrellivarDevice& device) const;
  std::vector<StoredDeviceSignatures> storedSignatures() const;
  void setIgnored(bool ignored, DeviceIdentity identity) const noexcept;
  void setMapping(int keyId, const Output& output);
  void edited(const Profile& profile);
  void persistSignatures() const;
  void applyAllModes() const;
  void applyAndShowError();

  Setup setup_; ///< of its device and profile nothing is left
  Published<TrellivarDevice> device_;
  Published<Profile> profile_;
  Published<std::optional<int>> selectedKeyId_;
  Published<bool> isRecording_;
  Published<bool> isLearning_;
  Published<std::optional<std::string>> lastError_;
  SessionToken sessionToken_;
  std::optional<DeviceIdentity> learningDevice_; ///< what the engine has been told to leave alone
};

} // namespace trellivar
