#include "app/bridge/picker_bridge.h"

#include "app/bridge/text.h"
#include "app/bridge/typed_key.h"
#include "core/l10n.h"
#include "viewmodels/keyboard_layout.h"
#include "viewmodels/shortcut_composer.h"

#include <algorithm>
#include <utility>

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

QString spokenName(const KeyDef& def) {
  return qtText(std::visit(SpokenName{}, def.role.value)).replace('_', ' ');
}

const KeyDef* keyDef(const std::string& id) {
  for (const auto& row : KeyboardLayout::rows()) {
    const auto found = std::ranges::find(row, id, &KeyDef::id);
    if (found != row.end()) return &*found;
  }
  return nullptr;
}

} // namespace

PickerBridge::PickerBridge(AppRoot& root, QObject* parent) : Refreshing(parent), root_(root) {
  for (std::size_t i = 0; i < KeyboardLayout::rows().size(); ++i)
    rows_.emplace_back(
        QList<QByteArray>{"keyId", "label", "name", "units", "isSpacer", "isChosen"});
  showChosen();
  watch(root_.mapping().device());
  watch(root_.settings().language());
  refresh();
}

QVariantList PickerBridge::rows() {
  QVariantList rows;
  for (RowModel& row : rows_)
    rows.append(QVariant::fromValue(&row));
  return rows;
}

bool PickerBridge::isChosen(const KeyDef& def) const {
  const auto* held = std::get_if<KeyDef::Role::Modifier>(&def.role.value);
  if (held) return std::ranges::find(modifiers_, held->modifier) != modifiers_.end();
  return base_ && base_->id == qtText(def.id);
}

void PickerBridge::showChosen() {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    QList<RowModel::Row> keys;
    for (const KeyDef& def : KeyboardLayout::rows()[i])
      keys.append({qtText(def.id), qtText(def.label), spokenName(def), def.width,
                   std::holds_alternative<KeyDef::Role::Spacer>(def.role.value), isChosen(def)});
    rows_[i].setRows(keys);
  }
  Q_EMIT chosenChanged();
}

QString PickerBridge::preview() const {
  const auto label = base_ ? std::optional<std::string_view>(base_->label) : std::nullopt;
  return qtText(ShortcutComposer::preview(modifiers_, label));
}

bool PickerBridge::canAssign() const { return isKeyKnown_ && (!modifiers_.empty() || base_); }

void PickerBridge::begin() {
  root_.mapping().endActiveCapture();
  keyId_ = root_.mapping().selectedKeyId()->value_or(0);
  refresh();
  modifiers_.clear();
  base_.reset();
  loneModifier_ = 0;
  showChosen();
}

void PickerBridge::choose(const QString& keyId) {
  const KeyDef* def = keyDef(keyId.toStdString());
  if (!def) return;
  if (const auto* held = std::get_if<KeyDef::Role::Modifier>(&def->role.value)) {
    if (std::erase(modifiers_, held->modifier) == 0) modifiers_.push_back(held->modifier);
  } else if (const auto* base = std::get_if<KeyDef::Role::Base>(&def->role.value)) {
    base_ = Base{keyId, base->key, def->label};
  }
  showChosen();
}

bool PickerBridge::press(int key, int modifiers) {
  const auto modifier = TypedKey::modifier(key);
  const auto allHeld = TypedKey::modifiers(Qt::KeyboardModifiers(modifiers));
  const bool isAlone =
      std::ranges::all_of(allHeld, [&](Modifier held) { return held == modifier; });
  loneModifier_ = modifier && isAlone ? key : 0;
  const auto base = TypedKey::base(key);
  if (!base) return modifier.has_value();
  for (const Modifier held : allHeld) {
    const bool isThere = std::ranges::any_of(modifiers_, [held](Modifier chosen) {
      return chosen == held || chosen == held.oppositeSide();
    });
    if (!isThere) modifiers_.push_back(held);
  }
  choose(*base);
  return true;
}

bool PickerBridge::release(int key) {
  const bool isAlone = std::exchange(loneModifier_, 0) == key;
  const auto modifier = TypedKey::modifier(key);
  if (isAlone && modifier) choose("mod-" + qtText(modifier->rawValue()));
  return modifier.has_value();
}

void PickerBridge::assign() {
  const auto key = base_ ? std::optional(base_->key) : std::nullopt;
  const auto output = ShortcutComposer::output(modifiers_, key);
  if (!output) return;
  root_.mapping().select(keyId_); // which a pad that has come in between has ended
  root_.mapping().assign(*output);
}

void PickerBridge::refresh() {
  const std::string key = std::to_string(keyId_);
  if (take(assignText_, qtText(L10n::t(L10n::Key::assignToKey, key)))) Q_EMIT assignTextChanged();
  if (take(isKeyKnown_, root_.mapping().hasSignature(keyId_))) Q_EMIT chosenChanged();
}

} // namespace trellivar
