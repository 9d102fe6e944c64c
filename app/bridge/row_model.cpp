#include "app/bridge/row_model.h"

#include <algorithm>

namespace trellivar {

RowModel::RowModel(const QList<QByteArray>& roles, QObject* parent)
    : QAbstractListModel(parent), roles_(roles) {}

void RowModel::setRows(const QList<Row>& rows) {
  const auto common = std::min(rows_.size(), rows.size());
  for (qsizetype i = 0; i < common; ++i) {
    if (rows_[i] == rows[i]) continue;
    rows_[i] = rows[i];
    const QModelIndex changed = index(static_cast<int>(i));
    Q_EMIT dataChanged(changed, changed);
  }
  if (rows.size() > common) {
    beginInsertRows({}, static_cast<int>(common), static_cast<int>(rows.size()) - 1);
    rows_.append(rows.mid(common));
    endInsertRows();
  } else if (rows_.size() > common) {
    beginRemoveRows({}, static_cast<int>(common), static_cast<int>(rows_.size()) - 1);
    rows_.resize(common);
    endRemoveRows();
  }
}

int RowModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
  const int column = role - Qt::UserRole;
  if (!index.isValid() || index.row() >= rows_.size() || column < 0 || column >= roles_.size())
    return {};
  return rows_[index.row()][column];
}

QHash<int, QByteArray> RowModel::roleNames() const {
  QHash<int, QByteArray> names;
  for (int i = 0; i < roles_.size(); ++i)
    names.insert(Qt::UserRole + i, roles_[i]);
  return names;
}

} // namespace trellivar
