#include "tests/app/scenes.h"
#include "tests/app/stage.h"
#include "tests/app/surroundings.h"

#include <QApplication>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>
#include <exception>
#include <memory>

namespace trellivar {

/// A stage that knows the scenes by name.
class Theatre final : public Stage {
  Q_OBJECT

public:
  using Stage::Stage;

  Q_INVOKABLE QStringList scenes() const {
    QStringList names;
    for (const Scene& each : trellivar::scenes())
      names += QString::fromStdString(std::string(each.name));
    return names;
  }
  /// Begins anew with a scene.
  Q_INVOKABLE void enter(const QString& name, const QString& language = "en") {
    try {
      begin();
      setLanguage(language);
      scene(name.toStdString()).arrange(*this);
    } catch (const std::exception& error) {
      qjsEngine(this)->throwError(QString::fromUtf8(error.what()));
    }
  }
};

/// Gives the stage to each file of tests.
class ComponentTests final : public QObject {
  Q_OBJECT

public Q_SLOTS:
  void applicationAvailable() { theatre_ = std::make_unique<Theatre>(); }
  void qmlEngineAvailable(QQmlEngine* engine) {
    engine->rootContext()->setContextProperty("Stage", theatre_.get());
  }
  void cleanupTestCase() { theatre_.reset(); }

private:
  std::unique_ptr<Theatre> theatre_;
};

} // namespace trellivar

int main(int argc, char* argv[]) {
  trellivar::useKnownSurroundings();
  const QApplication application(argc, argv); // as in the product, not the one that Qt would make
  trellivar::ComponentTests tests;
  return quick_test_main_with_setup(argc, argv, "components", TRELLIVAR_COMPONENT_TESTS, &tests);
}

#include "component_tests.moc"
