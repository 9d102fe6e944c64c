#include <gtest/gtest.h>

#include <QApplication>

/// The tests run inside one application, on a display that nobody sees.
int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleTest(&argc, argv);
  const QApplication loop(argc, argv);
  return RUN_ALL_TESTS();
}
