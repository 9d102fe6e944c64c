#pragma once

#include "core/device_identity.h"
#include "core/key_layout.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

/// One identity under which a pad presents itself, and what its keys send there by default.
struct KnownTransport {
  DeviceIdentity identity;
  KeyLayout layout;
  bool isUSB = false; ///< the cable; otherwise Bluetooth

  friend bool operator==(const KnownTransport&, const KnownTransport&) = default;
};

/// One position of the pad's mode switch.
struct KnownMode {
  std::string id; ///< "P", "M" or "R"; persisted as the name of the mode's profile
  std::vector<KnownTransport> transports;

  std::vector<DeviceIdentity> identities() const;
  const KnownTransport* transport(int vendorId, int productId) const;

  friend bool operator==(const KnownMode&, const KnownMode&) = default;
};

/// A pad model. Its primary mode is "P", or the first mode when there is no "P"; what is said of a
/// device without naming a mode deliberately looks at the primary mode alone.
struct KnownDevice {
  std::string name;
  std::vector<KnownMode> modes;

  /// None only without modes.
  const KnownMode* primaryMode() const;
  /// The mode whose id equals the name exactly, case included.
  const KnownMode* mode(std::string_view forProfileName) const;
  std::vector<KnownTransport> transports() const;
  std::vector<DeviceIdentity> identities() const;
  bool matches(int vendorId, int productId) const;
  const KnownTransport* transport(int vendorId, int productId) const;

  friend bool operator==(const KnownDevice&, const KnownDevice&) = default;
};

/// The pads that the system supports. Fixed data, built on first use; every function may be called
/// on any thread, and pointers that they return stay valid for ever.
namespace KnownDevices {

/// The name under which the pad stands here and on the screens.
inline constexpr std::string_view padModel = "Orlo3";

struct Resolution {
  const KnownDevice* device;
  std::string modeId;
};

const std::vector<KnownDevice>& all();

/// The device whose primary mode has this identity. An identity of another mode is deliberately not
/// found: the bindings of such a mode are compiled from learned signatures.
const KnownDevice* known(int vendorId, int productId);
/// The device that has this identity in any mode.
const KnownDevice* knownAcrossModes(int vendorId, int productId);
bool isKnown(int vendorId, int productId);

/// The device and mode of an identity in any mode; failing that, those of a name such as "Orlo3-R"
/// (device name, "-", mode id, ASCII case ignored), by which a mode without identities is
/// recognised.
std::optional<Resolution> resolve(int vendorId, int productId, std::string_view name);

/// The default layout under a primary-mode identity.
std::optional<KeyLayout> layout(int vendorId, int productId);
/// The default layout under an identity of any mode; failing that, the layout of the first
/// transport of the mode that the name tells, none when that mode has no transports.
std::optional<KeyLayout> layout(int vendorId, int productId, std::string_view name);

/// All identities of the primary mode of the device that `known` finds.
std::vector<DeviceIdentity> identities(int vendorId, int productId);
std::vector<KnownTransport> transports(int vendorId, int productId);

/// Keys 1 to 3 as chords of a modifier with C, V and X.
KeyLayout copyPasteCutLayout(KeyName modifier);

} // namespace KnownDevices

} // namespace trellivar
