#pragma once

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QByteArray>
#include <QList>
#include <QVariant>

namespace trellivar {

/// A list whose rows are values under named roles. Setting it anew tells views only what differs.
class RowModel : public QAbstractListModel {
  Q_OBJECT
  QML_ANONYMOUS

public:
  using Row = QVariantList; ///< a value for each role

  explicit RowModel(const QList<QByteArray>& roles, QObject* parent = nullptr);

  void setRows(const QList<Row>& rows);
  const QList<Row>& rows() const { return rows_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

private:
  QList<QByteArray> roles_;
  QList<Row> rows_;
};

} // namespace trellivar
