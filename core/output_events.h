#pragma once

#include "core/output.h"
#include "core/tap_event.h"

#include <vector>

namespace trellivar::OutputEvents {

/// The presses and releases that carry out an output, in order: sender 0, `keyDown` and `keyUp`
/// only, whatever the kind of the output's key. The kind is deliberately lost here: who posts the
/// events decides by the name whether a key, a media key or a mouse button is meant.
std::vector<TapEvent> events(const Output& output);

} // namespace trellivar::OutputEvents
