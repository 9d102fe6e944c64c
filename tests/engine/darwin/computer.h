#pragma once

#include "core/known_devices.h"
#include "core/modifier.h"
#include "engine/darwin/event_posting.h"
#include "engine/darwin/iokit_hotplug_watcher.h"
#include "engine/darwin/iokit_sender_resolver.h"
#include "engine/darwin/permissions.h"
#include "engine/darwin/tap_engine.h"
#include "simulator/darwin/platform.h"
#include "simulator/desk/desk.h"
#include "simulator/desk/key_codes.h"
#include "simulator/desk/pad.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {

using desk::DeviceDescription;
using desk::InputEvent;

/// "left_command" and so on for each side-specific flag.
inline std::string sidesText(std::uint64_t flags) {
  std::string text;
  for (const Modifier modifier : Modifier::allCases) {
    if ((flags & modifier.row().device) == 0) continue;
    text += (text.empty() ? "" : " ") + std::string(modifier.rawValue());
  }
  return text;
}

/// A simulated computer with an ordinary keyboard, a pad that is away, and the engine once it is
/// started. What nobody released by the end is a failure.
class Computer {
public:
  static constexpr Seconds debounce{0.3};

  desk::Desk desk;
  darwin_double::Platform platform{desk};
  desk::Pad pad{desk};
  desk::Desk::DeviceId keyboard = desk.attach({.product = "Keyboard",
                                               .identity = {0x1234, 0x0001},
                                               .interfaces = {{DeviceDescription::keyboard},
                                                              {DeviceDescription::consumerControl},
                                                              {DeviceDescription::mouse}}});
  std::unique_ptr<TapEngine> engine;

  ~Computer() {
    engine.reset();
    EXPECT_EQ(platform.liveReferences(), std::vector<std::string>{});
    EXPECT_EQ(platform.taps(), 0U);
    EXPECT_EQ(platform.scheduledTimers(), 0U);
  }

  void startEngine() {
    engine = std::make_unique<TapEngine>(
        desk.queue(), std::make_shared<IOKitSenderResolver>(),
        std::make_shared<IOKitHotplugWatcher>(desk.queue(), debounce),
        darwin::isAccessibilityGranted, darwin::isInputMonitoringGranted);
    engine->startTap();
  }

  /// A device of its own with a keyboard, consumer keys and a mouse.
  desk::Desk::DeviceId attach(DeviceIdentity identity) {
    return desk.attach({.product = "Pad",
                        .identity = identity,
                        .interfaces = {{DeviceDescription::keyboard},
                                       {DeviceDescription::consumerControl},
                                       {DeviceDescription::mouse}}});
  }

  void pass(double seconds) { desk.queue().advance(Seconds(seconds)); }

  void down(desk::Desk::DeviceId device, std::string_view key) {
    desk.press(device, KeyName(key));
    desk.queue().run();
  }
  void up(desk::Desk::DeviceId device, std::string_view key) {
    desk.release(device, KeyName(key));
    desk.queue().run();
  }
  void repeat(desk::Desk::DeviceId device, std::string_view key) {
    desk.repeat(device, KeyName(key));
    desk.queue().run();
  }
  void tap(desk::Desk::DeviceId device, std::string_view key) {
    down(device, key);
    up(device, key);
  }
  /// A pad key, pressed and released as fingers do.
  void pressPad(int key) {
    pad.press(key);
    pass(0.05);
    pad.release(key);
    pass(0.05);
  }

  /// What applications received since the last call: "c+" for a press and "c-" for a release, with
  /// "*" in front if the engine made it, and the sides of the modifiers that it says to be down in
  /// brackets, other than its own key's.
  std::string heard() {
    std::string text;
    for (const desk::Received& received : desk.events().received()) {
      const auto named = desk::named(received.event);
      if (!named) continue;
      if (!text.empty()) text += " ";
      if (received.event.field(InputEvent::sourceUserData) == darwin::marker) text += "*";
      text += named->name.text() + (isDown(named->kind) ? "+" : "-");
      std::uint64_t flags = received.event.flags;
      if (const auto codes = desk::keyCodes(named->name);
          codes && codes->family == desk::KeyCodes::Family::modifier)
        flags &= ~codes->flags;
      const std::string sides = sidesText(flags);
      if (!sides.empty()) text += "(" + sides + ")";
    }
    desk.events().clearReceived();
    return text;
  }
};

inline Key plainKey(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }
inline Output keyOutput(std::string_view name) { return {Output::Chord{{}, plainKey(name)}}; }
inline Output chordOutput(std::vector<Modifier> modifiers, std::string_view name) {
  return {Output::Chord{std::move(modifiers), plainKey(name)}};
}

inline Profile profileOf(std::string name, std::vector<KeyMapping> mappings) {
  return {UUID::random(), std::move(name), std::move(mappings)};
}

/// The known pad with these bindings at P.
inline MappingSet padSet(std::vector<KeyMapping> mappings) {
  const KnownDevice& pad = KnownDevices::all().front();
  const KnownTransport& transport = pad.primaryMode()->transports.front();
  return {{pad.name, transport.identity.vendorId, transport.identity.productId, transport.layout},
          profileOf("P", std::move(mappings)),
          false};
}

inline constexpr DeviceIdentity customIdentity{0x7777, 0x0042};

struct CustomKey {
  std::vector<std::string_view> codes; ///< more than one: a chord
  std::optional<Output> output;
};

/// A pad that the registry does not know, with a key for each element.
inline MappingSet customSet(std::vector<CustomKey> keys, DeviceIdentity identity = customIdentity) {
  MappingSet set{{"Custom", identity.vendorId, identity.productId, {}}, profileOf("P", {}), false};
  int id = 0;
  for (CustomKey& key : keys) {
    PhysicalKey physical{.id = ++id, .row = 0, .col = id - 1, .signature = {}};
    for (const std::string_view code : key.codes)
      physical.signature.codes.push_back(plainKey(code));
    physical.signature.isChord = key.codes.size() > 1;
    set.device.layout.keys.push_back(std::move(physical));
    if (key.output) set.profile.mappings.push_back({id, *std::move(key.output), std::nullopt});
  }
  return set;
}

} // namespace trellivar
