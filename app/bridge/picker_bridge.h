#pragma once

#include "app/bridge/refreshing.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <QStringList>
#include <QVariantList>
#include <optional>
#include <vector>

namespace trellivar {

/// The keyboard on which a shortcut is composed for the selected key.
class PickerBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// A list for each row of keys of {keyId, label, name, width, isSpacer}.
  Q_PROPERTY(QVariantList rows READ rows CONSTANT)
  /// The ids of the keys that are chosen.
  Q_PROPERTY(QStringList chosen READ chosen NOTIFY chosenChanged)
  Q_PROPERTY(QString preview READ preview NOTIFY chosenChanged)
  Q_PROPERTY(bool canAssign READ canAssign NOTIFY chosenChanged)
  Q_PROPERTY(QString assignText READ assignText NOTIFY assignTextChanged)

public:
  explicit PickerBridge(AppRoot& root, QObject* parent = nullptr);

  QVariantList rows() const { return rows_; }
  QStringList chosen() const;
  QString preview() const;
  bool canAssign() const;
  QString assignText() const { return assignText_; }

  /// Begins anew, with nothing chosen.
  Q_INVOKABLE void reset();
  /// Latches or unlatches a modifier; makes another key the only one, or none when it is already.
  Q_INVOKABLE void toggle(const QString& keyId);
  /// Binds the selected key to what is chosen.
  Q_INVOKABLE void assign();

  void refresh() override;

Q_SIGNALS:
  void chosenChanged();
  void assignTextChanged();

private:
  struct Base {
    QString id;
    Key key;
    std::string label;
  };

  AppRoot& root_;
  QVariantList rows_;
  std::vector<Modifier> modifiers_;
  std::optional<Base> base_;
  QString assignText_;
};

} // namespace trellivar
