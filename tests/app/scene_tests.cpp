#include "tests/app/surroundings.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char* argv[]) {
  testing::InitGoogleTest(&argc, argv);
  trellivar::useKnownSurroundings();
  trellivar::paintInMemory();
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
