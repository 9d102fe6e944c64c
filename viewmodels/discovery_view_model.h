#pragma once

#include "core/device_identity.h"
#include "core/instant.h"
#include "core/key.h"
#include "core/key_layout.h"
#include "core/known_devices.h"
#include "core/signature_store.h"
#include "engine/device_enumerating.h"
#include "engine/key_capturing.h"
#include "engine/log.h"
#include "engine/remap_engine.h"
#include "viewmodels/published.h"
#include "viewmodels/report.h"
#include "viewmodels/session_token.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace trellivar {

/// Teaches the system one mode of the pad: under which identity the pad is connected there, and
/// what each of its keys sends.
///
/// Main thread. A capture that is under way holds the model weakly.
class DiscoveryViewModel : public std::enable_shared_from_this<DiscoveryViewModel> {
public:
  using Completion = std::function<void()>;

  /// What the user is asked to do.
  struct Step {
    /// Press this key of the pad.
    struct PressKey {
      int keyId = 0;
      friend bool operator==(const PressKey&, const PressKey&) = default;
    };
    /// Set the switch to the mode, and have the connection checked.
    struct FlipSwitch {
      friend bool operator==(const FlipSwitch&, const FlipSwitch&) = default;
    };
    /// Look at what was captured, and save it.
    struct Review {
      friend bool operator==(const Review&, const Review&) = default;
    };
    /// Nothing more: it is saved.
    struct Done {
      friend bool operator==(const Done&, const Done&) = default;
    };

    std::variant<FlipSwitch, PressKey, Review, Done> value;
    friend bool operator==(const Step&, const Step&) = default;
  };

  static constexpr Seconds capturePeriod{12};

  struct Setup {
    std::string modeId;
    std::shared_ptr<RemapEngine> engine;
    std::shared_ptr<KeyCapturing> capturer;
    std::shared_ptr<DeviceEnumerating> enumerator;
    std::shared_ptr<SignaturePersisting> signatures;
    std::vector<int> keyIds; ///< of the pad, in the order in which they are asked for
    Report report = debugLog;
    /// The pads that the system supports; must outlive the model.
    std::span<const KnownDevice> registry = KnownDevices::all();
  };

  static std::shared_ptr<DiscoveryViewModel> make(Setup setup);
  DiscoveryViewModel(const DiscoveryViewModel&) = delete;
  DiscoveryViewModel& operator=(const DiscoveryViewModel&) = delete;
  /// The engine remaps the pad again.
  ~DiscoveryViewModel();

  const std::string& modeId() const noexcept { return setup_.modeId; }
  const std::vector<int>& keyIds() const noexcept { return setup_.keyIds; }
  const Published<Step>& step() const noexcept { return step_; }
  const Published<bool>& presenceConfirmed() const noexcept { return presenceConfirmed_; }
  const Published<std::optional<DeviceIdentity>>& deviceIdentity() const noexcept {
    return deviceIdentity_;
  }
  /// By key id.
  const Published<std::map<int, KeySignature>>& captured() const noexcept { return captured_; }
  const Published<bool>& isCapturing() const noexcept { return isCapturing_; }
  const Published<std::optional<std::string>>& lastError() const noexcept { return lastError_; }

  /// Looks for the pad among the attached devices: by the identity that the registry gives the
  /// mode, else by a name such as "Orlo3-P", else any device that the registry does not know at
  /// all, since a pad may present an identity nobody has seen. Ends a capture that is under way.
  void checkPresence();
  /// Listens for one press of the pad. Calls `completion` in any case.
  void captureKey(int keyId, Completion completion);
  /// What a key is called, with what it sends as soon as that is known: "Key 2 — ⌘ C".
  std::string label(int forKeyId) const;
  /// Keeps what was captured, in place of what was known of this identity in this mode or without
  /// a mode. Its observers may let the model go only while the caller holds it.
  void save();

  /// What a captured key is called.
  static std::string friendlyLabel(const Key& key);

private:
  explicit DiscoveryViewModel(Setup setup) : setup_(std::move(setup)) {}

  void confirm(DeviceIdentity identity);
  void fail(std::string message);
  class Exemption;
  std::shared_ptr<Exemption> exemption(DeviceIdentity identity);
  void heard(int keyId, const std::vector<DeviceKeyEvent>& events);
  void advance(int afterKeyId);
  Step asking(std::vector<int>::const_iterator key) const;

  Setup setup_;
  Published<Step> step_;
  Published<bool> presenceConfirmed_;
  Published<std::optional<DeviceIdentity>> deviceIdentity_;
  Published<std::map<int, KeySignature>> captured_;
  Published<bool> isCapturing_;
  Published<std::optional<std::string>> lastError_;
  SessionToken sessionToken_;
  std::weak_ptr<Exemption> exemption_; ///< owned by the captures that are under way
};

} // namespace trellivar
