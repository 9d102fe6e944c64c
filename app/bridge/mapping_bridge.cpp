#include "app/bridge/mapping_bridge.h"

#include "app/bridge/text.h"
#include "core/l10n.h"
#include "viewmodels/key_view.h"
#include "viewmodels/output_label.h"
#include "viewmodels/output_library.h"

#include <chrono>

namespace trellivar {

namespace {

/// Of one period of what is listened for; 0 while nothing is.
int millisecondsOfPeriod(const MappingViewModel& mapping) {
  Seconds period{};
  if (*mapping.isLearning()) period = MappingViewModel::learnPeriod;
  if (*mapping.isRecording()) period = MappingViewModel::recordPeriod;
  return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(period).count());
}

} // namespace

MappingBridge::MappingBridge(AppRoot& root, QObject* parent)
    : Refreshing(parent),
      root_(root),
      keys_({"keyId", "legend", "glyph", "caption", "label", "isBound", "isLearned", "isSelected",
             "isDown"}),
      modes_({"name", "isActive"}),
      library_({"name", "glyph", "isAssigned"}) {
  MappingViewModel& mapping = root_.mapping();
  watch(mapping.device());
  watch(mapping.profile());
  watch(mapping.selectedKeyId());
  watch(mapping.isRecording());
  watch(mapping.isLearning());
  watch(mapping.lastError());
  watch(root_.pressedKeys().ids());
  watch(root_.profiles().activeId());
  watch(root_.profiles().profiles());
  watch(root_.settings().language());
  refresh();
}

void MappingBridge::select(int keyId) {
  root_.mapping().select(keyId == 0 ? std::nullopt : std::optional(keyId));
}

void MappingBridge::setMode(const QString& name) {
  if (const Profile* profile = root_.profiles().profile(name.toStdString()))
    root_.profiles().setActive(profile->id);
}

void MappingBridge::learn() {
  root_.mapping().endActiveCapture();
  root_.mapping().learnKey([] {});
}

void MappingBridge::record() {
  root_.mapping().endActiveCapture();
  root_.mapping().record([] {});
}

void MappingBridge::cancel() { root_.mapping().endActiveCapture(); }

void MappingBridge::assign(int row) {
  const auto& outputs = OutputLibrary::outputs();
  if (row >= 0 && static_cast<std::size_t>(row) < outputs.size())
    root_.mapping().assign(outputs[static_cast<std::size_t>(row)]);
}

void MappingBridge::rename(int keyId, const QString& text) {
  root_.mapping().rename(keyId, text.toStdString());
}

void MappingBridge::refresh() {
  const MappingViewModel& mapping = root_.mapping();
  refreshLists();
  const Profile* active = root_.profiles().active();
  const int selected = mapping.selectedKeyId()->value_or(0);
  const auto bound = mapping.mapping(selected);
  if (take(activeMode_, active ? qtText(active->name) : QString())) Q_EMIT activeModeChanged();
  if (take(selectedKey_, selected)) Q_EMIT selectedKeyChanged();
  if (take(title_, qtText(selectionTitle(mapping)))) Q_EMIT titleChanged();
  bool isOther = take(legend_, bound ? qtText(outputLabel(bound->output)) : QString());
  isOther |= take(glyph_, bound ? qtText(OutputLibrary::glyph(bound->output)) : QString());
  if (isOther) Q_EMIT legendChanged();
  if (take(canAssign_, mapping.hasSignature(selected))) Q_EMIT canAssignChanged();
  // The period first: with it begins what shows the time that is left.
  if (take(listeningMilliseconds_, millisecondsOfPeriod(mapping)))
    Q_EMIT listeningMillisecondsChanged();
  if (take(isRecording_, *mapping.isRecording())) Q_EMIT isRecordingChanged();
  if (take(isLearning_, *mapping.isLearning())) Q_EMIT isLearningChanged();
  if (take(error_, qtText(mapping.lastError()->value_or("")))) Q_EMIT errorChanged();
  if (take(learnText_, qtText(L10n::t(L10n::Key::captureKeyN, selected))))
    Q_EMIT learnTextChanged();
}

void MappingBridge::refreshLists() {
  const MappingViewModel& mapping = root_.mapping();
  QList<RowModel::Row> keys;
  for (const KeyView& key : keyViews(mapping))
    keys.append({key.id, qtText(key.legend), qtText(key.glyph), qtText(key.caption),
                 qtText(key.label), key.isBound, key.isLearned, key.isSelected,
                 root_.pressedKeys().ids()->contains(key.id)});
  keys_.setRows(keys);

  QList<RowModel::Row> modes;
  for (const Profile& profile : *root_.profiles().profiles())
    modes.append({qtText(profile.name), profile.id == root_.profiles().activeId()->value()});
  modes_.setRows(modes);

  const auto bound = mapping.mapping(mapping.selectedKeyId()->value_or(0));
  QList<RowModel::Row> library;
  for (const Output& output : OutputLibrary::outputs())
    library.append({qtText(outputLabel(output)), qtText(OutputLibrary::glyph(output)),
                    bound && bound->output == output});
  library_.setRows(library);
}

} // namespace trellivar
