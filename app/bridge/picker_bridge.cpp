#include "app/bridge/picker_bridge.h"

#include "app/bridge/text.h"
#include "core/l10n.h"
#include "viewmodels/keyboard_layout.h"
#include "viewmodels/shortcut_composer.h"

#include <QVariantMap>
#include <algorithm>

namespace trellivar {

namespace {

/// What assistive technology calls a key.
struct SpokenName {
  std::string operator()(const KeyDef::Role::Base& base) const { return base.key.keyCode.text(); }
  std::string operator()(const KeyDef::Role::Modifier& held) const {
    return std::string(held.modifier.rawValue());
  }
  std::string operator()(KeyDef::Role::Spacer) const { return {}; }
};

QVariantList keyboardRows() {
  QVariantList rows;
  for (const auto& row : KeyboardLayout::rows()) {
    QVariantList keys;
    for (const KeyDef& def : row) {
      QString name = qtText(std::visit(SpokenName{}, def.role.value));
      keys.append(
          QVariantMap{{"keyId", qtText(def.id)},
                      {"label", qtText(def.label)},
                      {"name", name.replace('_', ' ')},
                      {"width", def.width},
                      {"isSpacer", std::holds_alternative<KeyDef::Role::Spacer>(def.role.value)}});
    }
    rows.append(QVariant(keys));
  }
  return rows;
}

const KeyDef* keyDef(const std::string& id) {
  for (const auto& row : KeyboardLayout::rows()) {
    const auto found = std::ranges::find(row, id, &KeyDef::id);
    if (found != row.end()) return &*found;
  }
  return nullptr;
}

} // namespace

PickerBridge::PickerBridge(AppRoot& root, QObject* parent)
    : Refreshing(parent), root_(root), rows_(keyboardRows()) {
  watch(root_.mapping().selectedKeyId());
  watch(root_.settings().language());
  refresh();
}

QStringList PickerBridge::chosen() const {
  QStringList ids;
  for (const Modifier modifier : modifiers_)
    ids.append("mod-" + qtText(modifier.rawValue()));
  if (base_) ids.append(base_->id);
  return ids;
}

QString PickerBridge::preview() const {
  const auto label = base_ ? std::optional<std::string_view>(base_->label) : std::nullopt;
  return qtText(ShortcutComposer::preview(modifiers_, label));
}

bool PickerBridge::canAssign() const { return !modifiers_.empty() || base_; }

void PickerBridge::reset() {
  modifiers_.clear();
  base_.reset();
  Q_EMIT chosenChanged();
}

void PickerBridge::toggle(const QString& keyId) {
  const KeyDef* def = keyDef(keyId.toStdString());
  if (!def) return;
  if (const auto* held = std::get_if<KeyDef::Role::Modifier>(&def->role.value)) {
    if (std::erase(modifiers_, held->modifier) == 0) modifiers_.push_back(held->modifier);
  } else if (const auto* base = std::get_if<KeyDef::Role::Base>(&def->role.value)) {
    if (base_ && base_->id == keyId)
      base_.reset();
    else
      base_ = Base{keyId, base->key, def->label};
  }
  Q_EMIT chosenChanged();
}

void PickerBridge::assign() {
  const auto key = base_ ? std::optional(base_->key) : std::nullopt;
  if (const auto output = ShortcutComposer::output(modifiers_, key))
    root_.mapping().assign(*output);
}

void PickerBridge::refresh() {
  const std::string key = std::to_string(root_.mapping().selectedKeyId()->value_or(0));
  if (take(assignText_, qtText(L10n::t(L10n::Key::assignToKey, key)))) Q_EMIT assignTextChanged();
}

} // namespace trellivar
