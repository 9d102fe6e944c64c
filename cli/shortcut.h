#pragma once

#include "core/output.h"

#include <string>
#include <string_view>

namespace trellivar::cli {

/// Reads a shortcut as people type it: "cmd+shift+c", "right_option", "play_or_pause", "button3",
/// or a sequence "h,e,l,l,o". Names are the system's key names and the short forms cmd, shift, ctrl
/// and opt, with r in front for the right side; capitals and spaces around names do not matter. A
/// key gives a chord, modifiers alone a modifiers-only output; modifiers keep the order typed.
/// Throws BadInput.
Output parseShortcut(std::string_view text);

/// The same form, for people to read (a sequence of one key looks like the key); "nothing" for an
/// output without keys.
std::string shortcutText(const Output& output);

} // namespace trellivar::cli
