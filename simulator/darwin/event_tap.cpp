#include "simulator/darwin/event.h"
#include "simulator/darwin/machine.h"
#include "simulator/darwin/run_loop.h"

#include <ApplicationServices/ApplicationServices.h>

#include <optional>

namespace trellivar::darwin_double {

namespace {

using desk::EventStream;
using desk::InputEvent;

CGEventRef call(MachPort& port, CGEventType type, Event* event) {
  const CallbackScope scope(machine("CGEventTap"));
  return port.tap().callback(reference<CGEventTapProxy>(&port), type, reference<CGEventRef>(event),
                             port.tap().context);
}

/// What the callback makes of the event.
std::optional<InputEvent> answerOf(const Held<MachPort>& port, const InputEvent& input,
                                   bool isFilter) {
  const Held event(new Event(input));
  CGEventRef answer = call(*port, static_cast<CGEventType>(input.type), event.get());
  if (!isFilter) return input;
  if (answer == reference<CGEventRef>(event.get())) return event->input;
  if (answer == nullptr) return std::nullopt;
  constexpr const char* name = "the answer of an event tap's callback";
  auto& other = as<Event>(answer, name);
  const InputEvent result = other.input;
  other.release(name);
  return result;
}

void tell(const Held<MachPort>& port, std::uint32_t notice) {
  if (!port->isHeard()) return;
  if (call(*port, static_cast<CGEventType>(notice), nullptr) != nullptr)
    fail("the answer of an event tap's callback", "a notice was not returned as it was");
}

CFMachPortRef createTap(EventStream::Tap tap, CGEventTapCallBack callback, void* context) {
  Machine& here = machine("CGEventTapCreate");
  if (!here.desk.isTrusted())
    return here.untrustedTap == Platform::UntrustedTap::deaf
               ? handedOut<CFMachPortRef>(new MachPort)
               : nullptr;
  if (desk::Faults::strikes(here.desk.faults().failingTaps) || tap.mask == 0) return nullptr;
  auto* port = new MachPort;
  port->tap().callback = callback;
  port->tap().context = context;
  // Small enough for a function to keep them without memory of its own.
  tap.handle = [port, isFilter = tap.isFilter](const InputEvent& input) {
    return port->isHeard() ? answerOf(Held(port), input, isFilter) : std::optional(input);
  };
  tap.disabled = [port](std::uint32_t notice) { tell(Held(port), notice); };
  port->tap().id = here.desk.events().addTap(std::move(tap));
  return handedOut<CFMachPortRef>(port);
}

} // namespace

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask mask,
                               CGEventTapCallBack callback, void* context) {
  if (callback == nullptr) fail("CGEventTapCreate", "NULL is no call-back");
  trellivar::desk::EventStream::Tap tap;
  tap.level = static_cast<trellivar::desk::EventStream::Level>(location);
  tap.atHead = placement == kCGHeadInsertEventTap;
  tap.isFilter = options == kCGEventTapOptionDefault;
  tap.mask = mask;
  return createTap(std::move(tap), callback, context);
}

void CGEventTapEnable(CFMachPortRef tap, bool enable) {
  MachPort::Tap& standing = as<MachPort>(tap, "CGEventTapEnable").tap();
  if (standing.id == 0)
    standing.isEnabled = enable;
  else
    machine("CGEventTapEnable").desk.events().setEnabled(standing.id, enable);
}

bool CGEventTapIsEnabled(CFMachPortRef tap) {
  auto& port = as<MachPort>(tap, "CGEventTapIsEnabled");
  const MachPort::Tap& standing = port.tap();
  if (!port.isValid()) return false;
  return standing.id == 0 ? standing.isEnabled
                          : machine("CGEventTapIsEnabled").desk.events().isEnabled(standing.id);
}

} // extern "C"
