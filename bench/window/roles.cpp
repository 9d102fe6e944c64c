#include "bench/window/roles.h"

#include "app/trellivar_app.h"
#include "bench/window/controls.h"
#include "bench/window/figures.h"
#include "bench/window/first_frame.h"
#include "bench/window/resources.h"
#include "bench/window/timed_loop.h"

#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

namespace trellivar {

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// What a person does, and what moves then.
struct Transition {
  const char* name;
  const char* control; ///< that is pressed; null: Escape is
};

constexpr Transition leavingFirstSteps{"leave the first steps", "Continue"};

constexpr std::array transitions{
    Transition{"select a key", "2"},
    Transition{"select another", "1"},
    Transition{"change the mode", "M"},
    Transition{"open discovery", "Discover this mode"},
    Transition{"go on to the keys", "Check connection"},
    Transition{"close it", "Close"},
    Transition{"change the mode back", "P"},
    Transition{"select a key of it", "1"},
    Transition{"open the keyboard", "Choose on keyboard"},
    Transition{"close it", "Cancel"},
    Transition{"open the settings", "SETTINGS"},
    Transition{"change the appearance", "Dark"},
    Transition{"close the settings", "Close"},
    Transition{"open the pad's chip", "No Orlo3"},
    Transition{"close it", nullptr},
    Transition{"write without a binding", "Write to pad"},
};

constexpr int transitionMilliseconds = 500;
constexpr int settleMilliseconds = 2'000;
constexpr int idleMilliseconds = 10'000;

void tellSinceStart() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  const std::chrono::nanoseconds start(startOfRole());
  tell({"first frame", Milliseconds(now - start).count()});
}

Options options(const QTemporaryDir& folder) {
  Options options;
  options.simulate = true;
  options.dataFolder = folder.path().toStdString();
  options.isDataFolderGiven = true;
  options.language = AppLanguage::en;
  return options;
}

void measure(const Transition& transition, TimedLoop& loop) {
  loop.takeLongest();
  transition.control ? press(transition.control) : pressEscape();
  letPass(transitionMilliseconds);
  tell({transition.name, Milliseconds(loop.takeLongest()).count()});
}

void measureRest() {
  letPass(settleMilliseconds);
  tell({"resident", residentMebibytes()});
  const auto used = processorTime();
  letPass(idleMilliseconds);
  const std::chrono::duration<double> idle = std::chrono::milliseconds(idleMilliseconds);
  tell({"idle", 100 * (processorTime() - used) / idle});
}

int runApplication(TimedLoop& loop, std::function<void(QQuickWindow&)> shown) {
  const QTemporaryDir folder;
  FirstFrame firstFrame(std::move(shown));
  loop.installEventFilter(&firstFrame);
  TrellivarApp application(options(folder));
  return application.launch() ? QApplication::exec() : 1;
}

} // namespace

int runEmptyWindow(int argc, char** argv) {
  const TimedLoop loop(argc, argv);
  QQuickWindow window;
  window.resize(976, 656); // as the application's
  QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [] {
    tellSinceStart();
    QCoreApplication::quit();
  });
  window.show();
  return QCoreApplication::exec();
}

int runFirstFrame(int argc, char** argv) {
  TimedLoop loop(argc, argv);
  return runApplication(loop, [](QQuickWindow&) {
    tellSinceStart();
    QCoreApplication::quit();
  });
}

int runMappingScreen(int argc, char** argv) {
  TimedLoop loop(argc, argv);
  return runApplication(loop, [&loop](QQuickWindow&) {
    QTimer::singleShot(0, &loop, [&loop] {
      measure(leavingFirstSteps, loop);
      measureRest();
      for (const Transition& transition : transitions)
        measure(transition, loop);
      QCoreApplication::quit();
    });
  });
}

} // namespace trellivar
