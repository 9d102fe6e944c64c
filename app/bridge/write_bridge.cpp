#include "app/bridge/write_bridge.h"

#include "app/bridge/text.h"
#include "viewmodels/status_texts.h"

#include <array>

namespace trellivar {

namespace {

QString stateName(const WriteStatus& status) {
  constexpr std::array names{"idle", "writing", "needPad", "error", "done"};
  static_assert(names.size() == std::variant_size_v<decltype(WriteStatus::value)>);
  return names.at(status.value.index());
}

QStringList linesOf(const WriteStatus& status) {
  QStringList lines;
  if (const auto* done = std::get_if<WriteStatus::Done>(&status.value)) {
    for (const std::string& line : StatusTexts::modeLines(*done))
      lines.append(qtText(line));
  }
  return lines;
}

} // namespace

WriteBridge::WriteBridge(AppRoot& root, QObject* parent) : Refreshing(parent), root_(root) {
  watch(root_.portableWrite().status());
  watch(root_.settings().language());
  refresh();
}

void WriteBridge::write() { root_.writeToPad(); }

void WriteBridge::refresh() {
  const WriteStatus& status = *root_.portableWrite().status();
  if (take(state_, stateName(status))) Q_EMIT stateChanged();
  if (take(text_, qtText(StatusTexts::write(status)))) Q_EMIT textChanged();
  if (take(lines_, linesOf(status))) Q_EMIT linesChanged();
}

} // namespace trellivar
