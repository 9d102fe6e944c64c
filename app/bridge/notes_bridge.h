#pragma once

#include "app/bridge/file_troubles.h"
#include "app/bridge/refreshing.h"
#include "app/bridge/row_model.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>

namespace trellivar {

/// What keeps the application from working as it should, told quietly where the pad is drawn: a
/// problem (a file that could not be read or written, no engine, a permission that has been
/// withdrawn), and a mode that nobody has discovered.
class NotesBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// One for each kind, so that a note keeps its place on the screen, and its button what it does,
  /// while others come and go. Roles: isShown, mayBeBrief (its title is enough where there is no
  /// room for two), title, detail, action (the text of its button; empty without one).
  Q_PROPERTY(trellivar::RowModel* rows READ rows CONSTANT)
  /// How many are shown; two at most.
  Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
  enum class Kind : std::uint8_t { files, noEngine, accessibility, inputMonitoring, undiscovered };

  NotesBridge(AppRoot& root, const FileTroubles& troubles, bool hasEngine,
              QObject* parent = nullptr);

  RowModel* rows() { return &rows_; }
  int count() const { return count_; }

  void refresh() override;

Q_SIGNALS:
  void countChanged();

private:
  std::optional<Kind> problem() const;

  AppRoot& root_;
  const FileTroubles& troubles_;
  bool hasEngine_;
  int count_ = 0;
  RowModel rows_;
};

} // namespace trellivar
