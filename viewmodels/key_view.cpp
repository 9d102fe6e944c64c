#include "viewmodels/key_view.h"

#include "core/l10n.h"
#include "viewmodels/output_label.h"
#include "viewmodels/output_library.h"
#include "viewmodels/profile_editing.h"

namespace trellivar {

namespace {

/// The label, else what the binding does.
std::string captionOf(const KeyMapping& mapping) {
  return mapping.label ? *mapping.label : outputLabel(mapping.output);
}

} // namespace

std::vector<KeyView> keyViews(const MappingViewModel& of) {
  std::vector<KeyView> views;
  for (const PhysicalKey& key : of.device()->layout.keys) {
    KeyView view;
    view.id = key.id;
    view.caption = L10n::t(L10n::Key::empty);
    view.isLearned = of.hasSignature(key.id);
    view.isSelected = *of.selectedKeyId() == key.id;
    if (const KeyMapping* mapping = mappingOf(*of.profile(), key.id)) {
      view.isBound = true;
      view.legend = outputLabel(mapping->output);
      view.glyph = OutputLibrary::glyph(mapping->output);
      view.caption = captionOf(*mapping);
      view.label = mapping->label.value_or("");
    }
    views.push_back(std::move(view));
  }
  return views;
}

std::string selectionTitle(const MappingViewModel& of) {
  const auto keyId = *of.selectedKeyId();
  if (!keyId) return std::string(L10n::t(L10n::Key::noKeySelected));
  const KeyMapping* mapping = mappingOf(*of.profile(), *keyId);
  if (!mapping) return L10n::t(L10n::Key::keyN, *keyId);
  return L10n::t(L10n::Key::keyNNamed, *keyId, captionOf(*mapping));
}

} // namespace trellivar
