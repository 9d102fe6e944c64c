#pragma once

#include "app/bridge/refreshing.h"
#include "app/bridge/row_model.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <QVariantList>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace trellivar {

struct KeyDef;

/// The keyboard on which a shortcut is composed for a key of the pad.
class PickerBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// The rows of keys. Roles of a row: keyId, label, name, units (its width in plain keys),
  /// isSpacer, isChosen.
  Q_PROPERTY(QVariantList rows READ rows CONSTANT)
  Q_PROPERTY(QString preview READ preview NOTIFY chosenChanged)
  Q_PROPERTY(bool canAssign READ canAssign NOTIFY chosenChanged)
  Q_PROPERTY(QString assignText READ assignText NOTIFY assignTextChanged)

public:
  explicit PickerBridge(AppRoot& root, QObject* parent = nullptr);

  QVariantList rows();
  QString preview() const;
  bool canAssign() const;
  QString assignText() const { return assignText_; }

  /// Begins with nothing chosen, for the selected key, whatever is selected later. What is being
  /// learned or recorded ends, since both would hear what is typed here.
  Q_INVOKABLE void begin();
  /// Latches or unlatches a modifier; makes any other key the one base key.
  Q_INVOKABLE void choose(const QString& keyId);
  /// A key of the real keyboard goes down: with the modifiers that are held it is chosen. A
  /// modifier that is pressed and released alone is toggled. Both answer whether the key is taken.
  Q_INVOKABLE bool press(int key, int modifiers);
  Q_INVOKABLE bool release(int key);
  /// Selects the key and binds it to what is chosen.
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

  bool isChosen(const KeyDef& def) const;
  void showChosen();

  AppRoot& root_;
  std::deque<RowModel> rows_;
  int keyId_ = 0;
  bool isKeyKnown_ = false; ///< what it sends, on the pad that is there
  std::vector<Modifier> modifiers_;
  std::optional<Base> base_;
  int loneModifier_ = 0; ///< the key that is down, and no other with it
  QString assignText_;
};

} // namespace trellivar
