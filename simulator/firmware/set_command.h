#pragma once

#include "core/json/parse_json.h"
#include "engine/macro_event.h"

#include <string>
#include <vector>

namespace trellivar::firmware {

/// What the pad plays when a key is clicked.
struct StoredMacro {
  std::vector<MacroEvent> steps;
  int repeatCount = 1;
  friend bool operator==(const StoredMacro&, const StoredMacro&) = default;
};

/// Stores a macro for the click of a key in a mode.
struct SetCommand {
  int key = 0;
  std::string mode; ///< "P", "M" or "R"
  StoredMacro macro;
  friend bool operator==(const SetCommand&, const SetCommand&) = default;
};

/// Reads {"o":"set","k":2,"m":"keyboard","e":"click","v":[…],"r":1,"s":"M"}. Throws DecodingError
/// when a member is missing or anything that the pad does not know.
SetCommand readSetCommand(const Json& command);

} // namespace trellivar::firmware
