#pragma once

#include "engine/device_enumerating.h"
#include "engine/device_key_event.h"
#include "engine/remap_engine.h"

#include <functional>
#include <memory>
#include <string_view>

namespace trellivar::cli {

/// What commands use of the machine that they run on.
struct LocalMachine {
  using OnKeyEvent = std::function<void(const DeviceKeyEvent&)>;
  /// Tells of live key events; in between it calls the second function several times a second, and
  /// goes on until that throws. Throws Failure when nothing can be heard.
  using Monitor = std::function<void(const OnKeyEvent&, const std::function<void()>&)>;

  /// What the machine cannot do, for people; empty: nothing is missing.
  std::string_view missing;
  std::unique_ptr<DeviceEnumerating> enumerator;
  std::shared_ptr<RemapEngine> engine;
  Monitor monitor;
};

/// The machine that the process runs on.
LocalMachine localMachine();

} // namespace trellivar::cli
