#pragma once

#include "app/bridge/refreshing.h"
#include "app/bridge/row_model.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

namespace trellivar {

/// The mapping screen: the pad and its keys, the modes, and what can be done with the selected key.
class MappingBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// Roles: keyId, legend, glyph, caption, label, isBound, isLearned, isSelected, isDown.
  Q_PROPERTY(trellivar::RowModel* keys READ keys CONSTANT)
  /// Roles: name, isActive.
  Q_PROPERTY(trellivar::RowModel* modes READ modes CONSTANT)
  /// The ready outputs. Roles: name, glyph, isAssigned.
  Q_PROPERTY(trellivar::RowModel* library READ library CONSTANT)
  Q_PROPERTY(QString activeMode READ activeMode NOTIFY activeModeChanged)
  /// 0 without a selection.
  Q_PROPERTY(int selectedKey READ selectedKey NOTIFY selectedKeyChanged)
  Q_PROPERTY(QString title READ title NOTIFY titleChanged)
  Q_PROPERTY(QString legend READ legend NOTIFY legendChanged)
  Q_PROPERTY(QString glyph READ glyph NOTIFY legendChanged)
  /// What the selected key sends is known, so that it can be bound.
  Q_PROPERTY(bool canAssign READ canAssign NOTIFY canAssignChanged)
  Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
  Q_PROPERTY(bool isLearning READ isLearning NOTIFY isLearningChanged)
  /// Of one period of listening.
  Q_PROPERTY(
      int listeningMilliseconds READ listeningMilliseconds NOTIFY listeningMillisecondsChanged)
  /// Empty without one.
  Q_PROPERTY(QString error READ error NOTIFY errorChanged)
  Q_PROPERTY(QString learnText READ learnText NOTIFY learnTextChanged)

public:
  explicit MappingBridge(AppRoot& root, QObject* parent = nullptr);

  RowModel* keys() { return &keys_; }
  RowModel* modes() { return &modes_; }
  RowModel* library() { return &library_; }
  QString activeMode() const { return activeMode_; }
  int selectedKey() const { return selectedKey_; }
  QString title() const { return title_; }
  QString legend() const { return legend_; }
  QString glyph() const { return glyph_; }
  bool canAssign() const { return canAssign_; }
  bool isRecording() const { return isRecording_; }
  bool isLearning() const { return isLearning_; }
  int listeningMilliseconds() const { return listeningMilliseconds_; }
  QString error() const { return error_; }
  QString learnText() const { return learnText_; }

  /// 0 selects none.
  Q_INVOKABLE void select(int keyId);
  Q_INVOKABLE void setMode(const QString& name);
  Q_INVOKABLE void learn();
  Q_INVOKABLE void record();
  /// Ends learning or recording.
  Q_INVOKABLE void cancel();
  /// Binds the selected key to a row of the library.
  Q_INVOKABLE void assign(int row);
  Q_INVOKABLE void rename(int keyId, const QString& text);

  void refresh() override;

Q_SIGNALS:
  void activeModeChanged();
  void selectedKeyChanged();
  void titleChanged();
  void legendChanged();
  void canAssignChanged();
  void listeningMillisecondsChanged();
  void isRecordingChanged();
  void isLearningChanged();
  void errorChanged();
  void learnTextChanged();

private:
  void refreshLists();

  AppRoot& root_;
  RowModel keys_;
  RowModel modes_;
  RowModel library_;
  QString activeMode_;
  int selectedKey_ = 0;
  QString title_;
  QString legend_;
  QString glyph_;
  bool canAssign_ = false;
  int listeningMilliseconds_ = 0;
  bool isRecording_ = false;
  bool isLearning_ = false;
  QString error_;
  QString learnText_;
};

} // namespace trellivar
