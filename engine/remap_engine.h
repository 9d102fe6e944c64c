#pragma once

#include "core/device_identity.h"
#include "core/key_name.h"
#include "core/profile.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace trellivar {

/// The kinds of HID device that one pad appears as.
enum class DeviceKind : std::uint8_t { keyboard, consumer, pointing };
inline constexpr std::array allDeviceKinds{DeviceKind::keyboard, DeviceKind::consumer,
                                           DeviceKind::pointing};

struct EngineStatus {
  bool accessibilityGranted = false;   ///< events may be filtered and posted
  bool inputMonitoringGranted = false; ///< HID input may be read
  bool trellivarGrabbed = false;       ///< a pad is attached whose events are intercepted

  friend bool operator==(const EngineStatus&, const EngineStatus&) = default;
};

/// A key as a device sends it.
struct DeviceKey {
  DeviceIdentity device;
  KeyName name;

  friend bool operator==(const DeviceKey&, const DeviceKey&) = default;
};

/// Receives the keys that are down on pads, in no order, after each change.
using PadKeyObserver = std::function<void(std::span<const DeviceKey> down)>;

/// What remaps. Operations may throw `EngineError`; nothing has changed then. Main thread.
class RemapEngine {
public:
  virtual ~RemapEngine() = default;

  /// Makes one set of bindings the active one.
  virtual void apply(const MappingSet& set) = 0;
  /// Makes several sets active together.
  virtual void applyAll(std::span<const MappingSet> sets) = 0;
  /// The name is for engines that tell devices apart by it.
  virtual EngineStatus status(std::string_view trellivarDeviceName) = 0;
  /// Lets the events of a device through untouched, or remaps them again. Repeating either changes
  /// nothing.
  virtual void setDeviceIgnored(bool ignored, int vendorId, int productId) = 0;
  /// For engines that can let go of one kind of a device; else the same as without a kind.
  virtual void setDeviceIgnored(bool ignored, int vendorId, int productId, DeviceKind kind);
  /// Whether the engine has let go of a device that is to be ignored.
  virtual bool isDeviceReleased(std::string_view named) = 0;
  /// Tells of the pads of the active sets, bound or not, ignored or not, in place of whoever was
  /// told before, for as long as the returned handle lives. Never does so within another call or
  /// while it handles an event, so that the observer may use the engine. A key that may have come
  /// up unseen is not said to be down. Engines that see no events tell of none.
  [[nodiscard]] virtual std::shared_ptr<void> onPadKeysChanged(PadKeyObserver observer);

protected:
  RemapEngine() = default;
  RemapEngine(const RemapEngine&) = default;
  RemapEngine& operator=(const RemapEngine&) = default;
};

inline void RemapEngine::setDeviceIgnored(bool ignored, int vendorId, int productId,
                                          DeviceKind /*kind*/) {
  setDeviceIgnored(ignored, vendorId, productId);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): engines that tell keep the observer
inline std::shared_ptr<void> RemapEngine::onPadKeysChanged(PadKeyObserver /*observer*/) {
  return nullptr;
}

/// For systems without event taps: remembers nothing, intercepts nothing, and since there is
/// nothing to permit there, counts as permitted.
class StubRemapEngine final : public RemapEngine {
public:
  void apply(const MappingSet& /*set*/) override {}
  void applyAll(std::span<const MappingSet> /*sets*/) override {}
  EngineStatus status(std::string_view /*trellivarDeviceName*/) override {
    return {true, true, false};
  }
  using RemapEngine::setDeviceIgnored;
  void setDeviceIgnored(bool /*ignored*/, int /*vendorId*/, int /*productId*/) override {}
  bool isDeviceReleased(std::string_view /*named*/) override { return true; }
};

} // namespace trellivar
