#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>

namespace trellivar {

/// Every text of the application in the current language, each a property named like its key, so
/// that a screen which misspells one is found without running it.
class Texts : public QObject {
  Q_OBJECT
  QML_ANONYMOUS

public:
// moc reads a file once only, so nothing that this header includes may include the table.
#define TRELLIVAR_STRING(name, english, chinese)                                                   \
  Q_PROPERTY(QString name READ name NOTIFY changed)                                                \
  QString name() const;
#include "core/strings.def"

Q_SIGNALS:
  /// There is another language.
  void changed();
};

} // namespace trellivar
