#include "tests/app/journeys/waiting.h"

#include "tests/app/journeys/controls.h"
#include "tests/app/journeys/running_application.h"
#include "tests/app/journeys/screen.h"

#include <gtest/gtest.h>

#include <QDir>
#include <stdexcept>
#include <string>
#include <thread>

namespace trellivar {

namespace {

constexpr QRect wholeScreen(0, 0, -1, -1);

/// The file.
std::string picture() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const QString folder = TRELLIVAR_SCREENSHOTS;
  const QString file = folder + '/' + test->test_suite_name() + '.' + test->name() + ".png";
  QDir().mkpath(folder);
  pictureOf(wholeScreen).save(file);
  return file.toStdString();
}

std::string sight() {
  std::string tree;
  onMainThread([&] { tree = treeOf(controlsInSight()); });
  return tree;
}

} // namespace

void waitFor(std::string_view what, const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end)
      throw std::runtime_error("waited in vain until " + std::string(what) + "\n" + picture() +
                               '\n' + sight());
    std::this_thread::sleep_for(std::chrono::milliseconds(10)); // between two looks
  }
}

} // namespace trellivar
