#pragma once

#include "cli/simulate/script.h"
#include "core/key_layout.h"
#include "core/tap_event.h"
#include "engine/remap_engine.h"
#include "viewmodels/pad_link.h"
#include "viewmodels/write_status.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
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

/// What a step reports.
struct Result {
  struct State {
    EngineStatus engine;
    PadLink padLink;
  };
  struct Error {
    std::string text;
  };

  std::variant<State, KeySignature, Output, WriteStatus::Done, WriteStatus::NeedPad, Error> value;
};

/// Who is told of a simulation.
struct Listener {
  /// A step begins.
  std::function<void(const Step&)> began;
  std::function<void(const Arrival&)> arrived;
  /// A step has come to something, which may be later.
  std::function<void(const Step&, const Result&)> reported;
  /// Nothing more will come.
  std::function<void()> ended;
};

/// Plays a script on a new desk. Time is virtual, but for a write into the pad. After the last step
/// time goes on until nothing is held back and nothing is captured any more. Throws BadInput for
/// files in `dataFolder` that cannot be read, before anything else happens.
void play(const std::vector<Step>& script, const std::optional<std::filesystem::path>& dataFolder,
          const Listener& listener);

} // namespace trellivar::cli::simulate
