#include "core/output_events.h"

#include <utility>
#include <variant>

namespace trellivar::OutputEvents {

namespace {

/// Builds the list; one overload for each form of an output.
class Expansion {
public:
  void operator()(const Output::Chord& chord) {
    for (const Modifier modifier : chord.modifiers)
      down(modifier.keyName());
    tap(chord.key.keyCode);
    release(chord.modifiers);
  }
  void operator()(const Output::Sequence& sequence) {
    for (const Key& key : sequence.keys)
      tap(key.keyCode);
  }
  void operator()(const Output::Modifiers& alone) {
    for (const Modifier modifier : alone.modifiers)
      down(modifier.keyName());
    release(alone.modifiers);
  }

  std::vector<TapEvent> events;

private:
  void down(KeyName name) { events.push_back({0, TapEvent::Kind::keyDown, name}); }
  void up(KeyName name) { events.push_back({0, TapEvent::Kind::keyUp, name}); }
  void tap(KeyName name) {
    down(name);
    up(name);
  }
  void release(const std::vector<Modifier>& modifiers) {
    for (auto each = modifiers.rbegin(); each != modifiers.rend(); ++each)
      up(each->keyName());
  }
};

} // namespace

std::vector<TapEvent> events(const Output& output) {
  Expansion expansion;
  std::visit(expansion, output.value);
  return std::move(expansion.events);
}

} // namespace trellivar::OutputEvents
