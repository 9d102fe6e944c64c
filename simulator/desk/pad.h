#pragma once

#include "core/key_layout.h"
#include "engine/macro_event.h"
#include "simulator/desk/desk.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::desk {

/// The pad: three keys, a mode switch, and a cable or Bluetooth or neither.
///
/// Each position of the switch makes it another device. Where the registry of known pads has an
/// identity for the position and the link, the pad has it; elsewhere its identity is unknown and
/// only its name, such as "Orlo3-R", tells the mode.
class Pad {
public:
  enum class Link : std::uint8_t { away, usb, bluetooth };
  static constexpr std::array<int, 3> keyIds{1, 2, 3};
  /// Between the codes of a key that sends several.
  static constexpr Seconds codeGap{0.004};

  /// What the firmware plays for a key of a mode, none if nothing is stored.
  using Macros =
      std::function<std::optional<std::vector<MacroEvent>>(std::string_view mode, int key)>;

  /// Away, its switch at P. `desk` must outlive the pad.
  explicit Pad(Desk& desk) : desk_(desk) {}
  Pad(const Pad&) = delete;
  Pad& operator=(const Pad&) = delete;

  const std::string& mode() const noexcept { return mode_; }
  /// "P", "M" or "R". A connected pad comes back as the device of the new mode.
  void setMode(std::string_view mode);

  Link link() const noexcept { return link_; }
  void connect(Link link);
  /// Connects it under an identity of its own choosing; by cable if the registry says so, else by
  /// Bluetooth.
  void connectAs(DeviceIdentity identity);

  /// None while it is away.
  std::optional<DeviceIdentity> identity() const noexcept { return identity_; }
  std::string name() const;
  /// 0 while it is away.
  Desk::DeviceId device() const noexcept { return device_; }

  /// Called at each connection by cable for the path of the pad's serial port; none: it has none.
  void setCalloutPath(std::function<std::string()> path) { calloutPath_ = std::move(path); }
  /// Over Bluetooth the pad plays what is stored; on the cable it keeps its factory keys.
  void setMacros(Macros macros) { macros_ = std::move(macros); }
  /// Sends the first alternative signature of keys that have one.
  void setAlternative(bool alternative) { isAlternative_ = alternative; }

  /// The codes follow one another at `codeGap` from now on; those of a release in reverse. A pad
  /// that is away sends nothing, and what a pad has not sent when it is unplugged is lost.
  void press(int key);
  void release(int key);

  /// Something that was pressed or released has not been sent yet.
  bool isSending() const { return sentUntil_ > desk_.queue().now(); }

  /// What the key sends in this mode over this link, from the factory; modifiers first.
  std::vector<KeyName> factoryCodes(int key) const;

private:
  void disconnect();
  void attach(DeviceIdentity identity, bool isUSB);
  void later(Seconds after, KeyName code, bool down);
  void play(const std::vector<MacroEvent>& macro);

  Desk& desk_;
  std::string mode_ = "P";
  Link link_ = Link::away;
  std::optional<DeviceIdentity> identity_;
  std::optional<DeviceIdentity> ownIdentity_; ///< of its own choosing
  Desk::DeviceId device_ = 0;
  std::function<std::string()> calloutPath_;
  Macros macros_;
  bool isAlternative_ = false;
  Instant sentUntil_{};                      ///< when the last code on its way is sent
  std::map<int, std::vector<KeyName>> down_; ///< keys that are held, with what they sent
};

} // namespace trellivar::desk
