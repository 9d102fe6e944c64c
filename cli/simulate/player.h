#pragma once

#include "cli/diagnostics_json.h"
#include "cli/simulate/script.h"
#include "simulator/desk/event_stream.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace trellivar::cli::simulate {

/// A press or release that an application received.
struct Arrival {
  enum class Source : std::uint8_t { pad, keyboard, engine };

  Instant t;
  Source source = Source::pad;
  TapEvent::Kind kind = TapEvent::Kind::keyDown;
  KeyName name;
  std::vector<KeyName> flags; ///< the modifiers that the event says to be down
};
std::string_view rawValue(Arrival::Source source) noexcept;

/// What a script is told.
struct Listener {
  /// A step begins.
  std::function<void(const Step&)> began;
  std::function<void(const Arrival&)> arrived;
  /// What a step reports, which may be later.
  std::function<void(const Step&, const OrderedJson& result)> reported;
};

/// Plays a script on a new desk. Time is virtual, but for a write into the pad. After the last step
/// time goes on until nothing is held back and nothing is captured any more. Throws BadInput for
/// profiles in `dataFolder` that cannot be read, before anything else happens.
void play(const std::vector<Step>& script, const std::optional<std::filesystem::path>& dataFolder,
          const Listener& listener);

} // namespace trellivar::cli::simulate
