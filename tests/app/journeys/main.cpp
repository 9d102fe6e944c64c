#include "tests/app/journeys/running_application.h"
#include "tests/app/journeys/warnings.h"
#include "tests/app/journeys/x_server.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <atomic>
#include <thread>

namespace {

/// The journeys on a thread of their own; applications run on this one, one after another.
int journeys() {
  std::atomic<bool> isOver = false;
  int result = 0;
  const std::jthread person([&] {
    result = RUN_ALL_TESTS();
    trellivar::onMainThread([&] { isOver = true; });
  });
  while (!isOver)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  return result;
}

} // namespace

int main(int argc, char* argv[]) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  trellivar::startDisplay();
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("QT_QUICK_BACKEND", "software");
  QApplication loop(argc, argv);
  trellivar::prepare(loop);
  trellivar::collectWarnings();
  return journeys();
}
