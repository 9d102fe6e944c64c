#pragma once

#include "app/bridge/file_troubles.h"
#include "app/bridge/refreshing.h"
#include "app/bridge/row_model.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace trellivar {

/// What keeps the application from working as it should, told quietly where the pad is drawn: a
/// problem (a file that could not be read or written, no engine, a permission that has been
/// withdrawn), and a mode that nobody has discovered.
class NotesBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// Roles: title, detail, action (the text of its button; empty without one).
  Q_PROPERTY(trellivar::RowModel* rows READ rows CONSTANT)

public:
  enum class Kind : std::uint8_t { files, noEngine, accessibility, inputMonitoring, undiscovered };

  NotesBridge(AppRoot& root, const FileTroubles& troubles, bool hasEngine,
              QObject* parent = nullptr);

  RowModel* rows() { return &rows_; }
  /// One for each row.
  const std::vector<Kind>& kinds() const { return kinds_; }

  void refresh() override;

private:
  std::optional<Kind> problem() const;
  RowModel::Row row(Kind kind) const;

  AppRoot& root_;
  const FileTroubles& troubles_;
  bool hasEngine_;
  std::vector<Kind> kinds_;
  RowModel rows_;
};

} // namespace trellivar
