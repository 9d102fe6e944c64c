#include "engine/darwin/aux_event.h"

#include "simulator/darwin/event.h"
#include "simulator/darwin/machine.h"

namespace trellivar::darwin {

using darwin_double::Event;

CGEventRef createAuxEvent(int auxKey, bool isDown) {
  darwin_double::machine("createAuxEvent");
  const int state = isDown ? auxKeyDownState : auxKeyUpState;
  auto* event = new Event;
  event->input.type = desk::InputEvent::systemDefined;
  event->input.flags = static_cast<std::uint64_t>(state) << 8U;
  event->input.subtype = auxControlSubtype;
  event->input.data1 = (long{auxKey} << 16) | (state << 8);
  return darwin_double::handedOut<CGEventRef>(event);
}

std::optional<SystemDefinedData> systemDefinedData(CGEventRef event) {
  if (event == nullptr) return std::nullopt;
  const auto& input = darwin_double::as<Event>(event, "systemDefinedData").input;
  if (input.type != desk::InputEvent::systemDefined) return std::nullopt;
  return SystemDefinedData{input.subtype, input.data1};
}

} // namespace trellivar::darwin
