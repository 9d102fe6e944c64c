#pragma once

#include "core/tap_processor.h"
#include "engine/darwin/cf_ref.h"
#include "engine/darwin/event_posting.h"
#include "engine/hotplug_watching.h"
#include "engine/main_queue.h"
#include "engine/pad_key_teller.h"
#include "engine/pad_keys.h"
#include "engine/remap_engine.h"
#include "engine/sender_resolving.h"

#include <ApplicationServices/ApplicationServices.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace trellivar {

/// Remaps live, with a tap in the session's stream of input events. Everything happens on the main
/// thread.
///
/// Only events of services that belong to a device of the active sets are looked at; everything
/// else passes after one look-up. What the engine posts carries its marker and passes too.
class TapEngine final : public RemapEngine {
public:
  using Check = std::function<bool()>;
  static constexpr Seconds chordWindow{0.5};

  /// `queue` must outlive the engine. `hotplug` may be null; else it is started. The checks answer
  /// whether the user permits filtering events and reading HID input now.
  TapEngine(MainQueue& queue, std::shared_ptr<SenderResolving> resolver,
            std::shared_ptr<HotplugWatching> hotplug, Check trustChecker,
            Check inputMonitoringChecker);
  TapEngine(const TapEngine&) = delete;
  TapEngine& operator=(const TapEngine&) = delete;
  ~TapEngine() override;

  /// Makes what is possible now of the tap: installs it if it is permitted and missing, enables it
  /// if the system has disabled it, and removes it if it is no longer permitted, since a tap that
  /// may not answer holds up all input. To be called again and again; nothing tells when a
  /// permission changes.
  void startTap();
  /// Whether a tap is installed, which a permission alone does not say.
  bool tapActive() const noexcept { return static_cast<bool>(tapPort_); }

  void apply(const MappingSet& set) override;
  void applyAll(std::span<const MappingSet> sets) override;
  EngineStatus status(std::string_view trellivarDeviceName) override;
  using RemapEngine::setDeviceIgnored;
  void setDeviceIgnored(bool ignored, int vendorId, int productId) override;
  /// Always: the engine never holds a device exclusively.
  bool isDeviceReleased(std::string_view named) override;
  [[nodiscard]] std::shared_ptr<void> onPadKeysChanged(PadKeyObserver observer) override;

  /// What the tap does with one event: NULL swallows it, else it is returned, perhaps changed.
  CGEventRef handle(CGEventType type, CGEventRef event);

private:
  struct ForeignModifier {
    std::int64_t sender;
    KeyName name;
    friend bool operator==(const ForeignModifier&, const ForeignModifier&) = default;
  };

  static constexpr std::size_t mostForeignModifiers = 16;

  bool installTap();
  void removeTap();
  void resolveSenders();
  void settle();
  void releaseWhatWouldStay();
  void expectMissedReleases();
  void releaseMissed(const TapEvent& press, Instant now);
  void noteForeignModifier(CGEventRef event, std::int64_t sender);
  void forgetModifier(KeyName modifier);
  bool isForeignRelease(CGEventRef event, const TapEvent& described);
  bool isHeldInSecretOnly(KeyName modifier) const;
  bool isHeldElsewhere(const TapEvent& event) const;
  bool isReleaseInDisguise(const TapEvent& event);
  bool isKnownToBeDown(const TapEvent& event);
  bool isTakenBack(const TapEvent& event);
  CGEventRef carryOut(const TapActions& actions, CGEventRef event, const TapEvent& described);
  void replay(const TapEvents& events);
  void replayAll(const TapActions& actions);
  void releaseDelivered(const PadKeys::Key& key);
  bool isAttached(const PadKeys::Key& key);
  darwin::ModifierContext heldModifiers() const;

  void armDeadlineTimer();
  void disarmDeadlineTimer();
  void flush();

  MainQueue& queue_;
  TapProcessor processor_{chordWindow};
  std::shared_ptr<SenderResolving> resolver_;
  std::shared_ptr<HotplugWatching> hotplug_;
  std::shared_ptr<void> hotplugCallback_;
  Check trustChecker_;
  Check inputMonitoringChecker_;
  std::set<DeviceIdentity> appliedIdentities_; ///< of the pads of the sets, bound or not
  darwin::CFRef<CFMachPortRef> tapPort_;
  darwin::CFRef<CFRunLoopSourceRef> tapSource_;
  darwin::CFRef<CFRunLoopTimerRef> deadlineTimer_;
  std::optional<Instant> armedFor_; ///< when `deadlineTimer_` fires; none: there is no timer
  PadKeys keys_;
  PadKeyTeller padKeyTeller_{queue_, keys_};
  InlineVector<ForeignModifier, mostForeignModifiers>
      foreignModifiers_; ///< down on other keyboards
  int underWay_ = 0;     ///< events that were posted and have not come by the tap yet
};

} // namespace trellivar
