#include "app/qt_user_defaults.h"
#include "viewmodels/settings_store.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <iostream>
#include <memory>
#include <string_view>

/// The tests run inside one application, on a display that nobody sees. With --language it is a
/// program that a user starts for the first time and that tells which language it speaks, with its
/// settings in the file named after that.
int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleTest(&argc, argv);
  const QApplication loop(argc, argv);
  if (argc == 3 && argv[1] == std::string_view("--language")) {
    const trellivar::SettingsStore settings(std::make_shared<trellivar::QtUserDefaults>(argv[2]));
    std::cout << (*settings.language()).rawValue();
    return 0;
  }
  return RUN_ALL_TESTS();
}
