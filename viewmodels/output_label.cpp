#include "viewmodels/output_label.h"

#include "viewmodels/discovery_view_model.h"
#include "viewmodels/shortcut_composer.h"

namespace trellivar {

namespace {

struct Label {
  std::string operator()(const Output::Chord& chord) const {
    const std::string key = DiscoveryViewModel::friendlyLabel(chord.key);
    return ShortcutComposer::preview(chord.modifiers, key);
  }
  std::string operator()(const Output::Sequence& sequence) const {
    std::string text;
    for (const Key& key : sequence.keys)
      text += (text.empty() ? "" : " ") + DiscoveryViewModel::friendlyLabel(key);
    return text;
  }
  std::string operator()(const Output::Modifiers& held) const {
    return ShortcutComposer::preview(held.modifiers, std::nullopt);
  }
};

} // namespace

std::string outputLabel(const Output& output) { return std::visit(Label{}, output.value); }

} // namespace trellivar
