#pragma once

#include "core/profile.h"

#include <array>
#include <cstdint>
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

protected:
  RemapEngine() = default;
  RemapEngine(const RemapEngine&) = default;
  RemapEngine& operator=(const RemapEngine&) = default;
};

inline void RemapEngine::setDeviceIgnored(bool ignored, int vendorId, int productId,
                                          DeviceKind /*kind*/) {
  setDeviceIgnored(ignored, vendorId, productId);
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
