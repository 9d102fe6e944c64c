#include "viewmodels/output_library.h"

#include <algorithm>

namespace trellivar {

namespace {

Output tap(std::string_view name, Key::Kind kind) {
  return {Output::Chord{{}, {KeyName(name), kind}}};
}

} // namespace

const std::vector<Output>& OutputLibrary::outputs() {
  using Kind = Key::Kind;
  static const std::vector<Output> outputs{
      tap("volume_increment", Kind::consumerKeyCode),
      tap("volume_decrement", Kind::consumerKeyCode),
      tap("mute", Kind::consumerKeyCode),
      tap("play_or_pause", Kind::consumerKeyCode),
      tap("button1", Kind::pointingButton),
      tap("button2", Kind::pointingButton),
      tap("button3", Kind::pointingButton),
  };
  return outputs;
}

std::string OutputLibrary::glyph(const Output& output) {
  const auto found = std::ranges::find(outputs(), output);
  return found == outputs().end() ? "" : std::get<Output::Chord>(found->value).key.keyCode.text();
}

} // namespace trellivar
