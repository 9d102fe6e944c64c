#pragma once

#include "tests/app/scenes.h"
#include "tests/app/stage.h"
#include "viewmodels/app_root.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

namespace trellivar {

/// A test on a stage. A warning of Qt or QML fails it.
class StageTest : public testing::Test {
protected:
  void TearDown() override {
    stage.end();
    EXPECT_EQ(stage.warnings().join('\n').toStdString(), "");
  }

  /// Begins anew with a scene.
  void enter(const Scene& scene, const QString& language = "en",
             const QString& appearance = "dark") {
    stage.begin();
    stage.setLanguage(language);
    stage.setAppearance(appearance);
    scene.arrange(stage);
  }

  Stage stage;
};

/// The same for each scene.
class SceneTest : public StageTest, public testing::WithParamInterface<Scene> {};

inline auto everyScene() { return testing::ValuesIn(scenes().begin(), scenes().end()); }

inline std::string nameOfScene(const testing::TestParamInfo<Scene>& scene) {
  std::string name(scene.param.name);
  std::ranges::replace(name, '-', '_'); // which GoogleTest does not take
  return name;
}

inline void PrintTo(const Scene& scene, std::ostream* out) { *out << scene.name; }

} // namespace trellivar
