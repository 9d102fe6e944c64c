#include "app/app_delegate.h"
#include "core/l10n.h"
#include "tests/app/shell/fake_platform.h"
#include "tests/support/eventually.h"
#include "viewmodels/user_defaults.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWindow>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {
namespace {

using Calls = std::vector<std::string>;

/// A launch of the application with the user's defaults; several may follow one another.
struct Launch {
  explicit Launch(std::shared_ptr<UserDefaults> defaults, bool refusesLoginItem = false)
      : settings(std::move(defaults)) {
    platform.refusesLoginItem = refusesLoginItem;
    delegate.setMainWindow(&window);
    delegate.applicationDidFinishLaunching();
  }

  FakePlatform platform;
  SettingsStore settings;
  QWindow window;
  AppDelegate delegate{settings, platform};
};

struct AppDelegateTest : testing::Test {
  std::shared_ptr<MemoryUserDefaults> defaults =
      std::make_shared<MemoryUserDefaults>(std::vector<std::string>{"en"});
  std::unique_ptr<Launch> launch;

  ~AppDelegateTest() override { L10n::setCurrent(AppLanguage::en); }

  AppDelegate& start() {
    launch.reset();
    launch = std::make_unique<Launch>(defaults);
    return launch->delegate;
  }
  Calls takeCalls() const { return std::exchange(launch->platform.calls, {}); }
  /// The menu as it opens.
  QList<QAction*> items() const {
    Q_EMIT launch->delegate.menu().aboutToShow();
    return launch->delegate.menu().actions();
  }
  /// Titles, a line for a separator, and the check mark of what is checked.
  Calls shownMenu() const {
    Calls shown;
    for (const QAction* item : items()) {
      const std::string title = item->isSeparator() ? "---" : item->text().toStdString();
      shown.push_back(item->isChecked() ? "✓ " + title : title);
    }
    return shown;
  }
};

enum Item { open, startAtLogin, separator, quit };

// The start

TEST_F(AppDelegateTest, comesToTheFrontAtItsStart) {
  start();
  EXPECT_EQ(takeCalls(), Calls{"activate"});
}

TEST_F(AppDelegateTest, registersAnewAtEveryStartWhileStartAtLoginIsOn) {
  start();
  launch->settings.setStartAtLogin(true);
  for (int again = 0; again < 3; ++again) {
    start();
    EXPECT_EQ(takeCalls(), (Calls{"activate", "register"})) << again;
  }
}

TEST_F(AppDelegateTest, registersAndUnregistersWithEachSwitch) {
  start();
  takeCalls();
  launch->settings.setStartAtLogin(true);
  EXPECT_EQ(takeCalls(), Calls{"register"});
  launch->settings.setStartAtLogin(false);
  EXPECT_EQ(takeCalls(), Calls{"unregister"});
}

TEST_F(AppDelegateTest, staysSwitchedOffAcrossStarts) {
  start();
  launch->settings.autoEnableLoginItemIfFirstTime();
  EXPECT_EQ(takeCalls(), (Calls{"activate", "register"}));
  launch->settings.setStartAtLogin(false);
  for (int again = 0; again < 2; ++again) {
    start();
    launch->settings.autoEnableLoginItemIfFirstTime();
    EXPECT_EQ(takeCalls(), Calls{"activate"}) << again;
    EXPECT_FALSE(*launch->settings.startAtLogin());
  }
}

TEST_F(AppDelegateTest, aRefusedRegistrationChangesNothingForTheUser) {
  start();
  launch->platform.refusesLoginItem = true;
  launch->settings.setStartAtLogin(true);
  EXPECT_TRUE(*launch->settings.startAtLogin());
  launch->settings.setStartAtLogin(false);
  EXPECT_EQ(takeCalls(), (Calls{"activate", "register", "unregister"}));
}

TEST_F(AppDelegateTest, startsAlsoWhereTheRegistrationIsRefused) {
  start();
  launch->settings.setStartAtLogin(true);
  launch.reset();
  launch = std::make_unique<Launch>(defaults, true);
  EXPECT_EQ(takeCalls(), (Calls{"activate", "register"}));
  EXPECT_TRUE(*launch->settings.startAtLogin());
}

// The menu

TEST_F(AppDelegateTest, theMenuBelongsToAnIconInTheStatusArea) {
  const QSystemTrayIcon& item = start().statusItem();
  EXPECT_TRUE(item.isVisible());
  EXPECT_EQ(item.contextMenu(), &launch->delegate.menu());
  EXPECT_EQ(item.toolTip(), "Trellivar");
  EXPECT_TRUE(item.icon().isMask()) << "the system gives it its colour";
  const QImage drawn = item.icon().pixmap(44, 44).toImage();
  ASSERT_EQ(drawn.size(), QSize(44, 44));
  EXPECT_EQ(drawn.pixelColor(22, 12).alpha(), 255);
  EXPECT_EQ(drawn.pixelColor(22, 4).alpha(), 0);
}

TEST_F(AppDelegateTest, theMenuOffersTheWindowTheStartAtLoginAndTheEnd) {
  start();
  EXPECT_EQ(shownMenu(), (Calls{"Open Trellivar", "Start at login", "---", "Quit Trellivar"}));
}

TEST_F(AppDelegateTest, theMenuSpeaksTheLanguageOfTheMoment) {
  start();
  launch->settings.setLanguage(AppLanguage::zhHans);
  EXPECT_EQ(shownMenu(), (Calls{"打开 Trellivar", "登录时启动", "---", "退出 Trellivar"}));
  launch->settings.setLanguage(AppLanguage::en);
  EXPECT_EQ(shownMenu().front(), "Open Trellivar");
}

TEST_F(AppDelegateTest, theMenuSpeaksTheLanguageOfTheStart) {
  defaults->setString("appLanguage", "zh-Hans");
  start();
  EXPECT_EQ(launch->delegate.menu().actions().front()->text(), "打开 Trellivar");
}

TEST_F(AppDelegateTest, theCheckMarkFollowsTheSettingAndTheItemInvertsIt) {
  start();
  EXPECT_EQ(shownMenu()[startAtLogin], "Start at login");
  items()[startAtLogin]->trigger();
  EXPECT_TRUE(*launch->settings.startAtLogin());
  EXPECT_EQ(shownMenu()[startAtLogin], "✓ Start at login");
  launch->settings.setStartAtLogin(false); // elsewhere
  EXPECT_EQ(shownMenu()[startAtLogin], "Start at login");
  items()[startAtLogin]->trigger();
  EXPECT_EQ(takeCalls(), (Calls{"activate", "register", "unregister", "register"}));
}

TEST_F(AppDelegateTest, onlyTheQuitItemHasAShortcut) {
  start();
  EXPECT_EQ(items()[open]->shortcut(), QKeySequence());
  EXPECT_EQ(items()[startAtLogin]->shortcut(), QKeySequence());
  EXPECT_EQ(items()[quit]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

// The window

TEST_F(AppDelegateTest, theMenuOpensAClosedWindow) {
  start();
  launch->window.show();
  launch->window.close();
  takeCalls();
  items()[open]->trigger();
  EXPECT_TRUE(launch->window.isVisible());
  EXPECT_EQ(takeCalls(), Calls{"activate"});
}

TEST_F(AppDelegateTest, theMenuOpensAClosedWindowAtItsSize) {
  start();
  launch->window.showMaximized();
  launch->window.close();
  items()[open]->trigger();
  EXPECT_TRUE(launch->window.isVisible());
  EXPECT_EQ(launch->window.windowStates(), Qt::WindowMaximized);
}

TEST_F(AppDelegateTest, theMenuBringsBackAMinimizedWindowAtItsSize) {
  start();
  launch->window.showMaximized();
  launch->window.setWindowStates(Qt::WindowMaximized | Qt::WindowMinimized);
  items()[open]->trigger();
  EXPECT_TRUE(launch->window.isVisible());
  EXPECT_EQ(launch->window.windowStates(), Qt::WindowMaximized);
}

TEST_F(AppDelegateTest, theMenuDoesNoHarmBeforeThereIsAWindow) {
  start().setMainWindow(nullptr);
  items()[open]->trigger();
  EXPECT_FALSE(launch->window.isVisible());
}

TEST_F(AppDelegateTest, aCallOpensTheWindowUnlessOneIsVisible) {
  AppDelegate& delegate = start();
  delegate.applicationShouldHandleReopen(true);
  EXPECT_FALSE(launch->window.isVisible());
  delegate.applicationShouldHandleReopen(false);
  EXPECT_TRUE(launch->window.isVisible());
}

TEST_F(AppDelegateTest, aClickInTheDockOpensTheWindow) {
  start();
  Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
  QCoreApplication::processEvents();
  EXPECT_FALSE(launch->window.isVisible());
  Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
  QCoreApplication::processEvents();
  EXPECT_TRUE(launch->window.isVisible());
}

// The end

/// How many turns the loop has taken when the application ends.
struct Turns {
  int taken = 0;
  QTimer timer;

  explicit Turns(int most) {
    QObject::connect(&timer, &QTimer::timeout, [this, most] {
      if (++taken == most) QCoreApplication::exit(1);
    });
    timer.start(0);
  }
};

TEST_F(AppDelegateTest, goesOnWithoutAWindow) {
  start();
  launch->window.show();
  launch->window.requestActivate();
  ASSERT_TRUE(eventually([] {
    QCoreApplication::processEvents();
    return QGuiApplication::applicationState() == Qt::ApplicationActive;
  }));
  QCoreApplication::processEvents(); // what becoming active has brought about
  bool wasLast = false;
  QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &launch->window,
                   [&] { wasLast = true; });
  QTimer::singleShot(0, &launch->window, [this] { launch->window.close(); });
  const Turns turns(100);
  EXPECT_EQ(QApplication::exec(), 1) << "ended by itself after turn " << turns.taken;
  EXPECT_TRUE(wasLast);
  EXPECT_FALSE(launch->window.isVisible());
}

TEST_F(AppDelegateTest, endsByTheQuitItem) {
  start();
  launch->window.show();
  QTimer::singleShot(0, &launch->window, [this] { items()[quit]->trigger(); });
  const Turns turns(100);
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(AppDelegateTest, endsByTheQuitItemAlsoWithoutAWindow) {
  start();
  QTimer::singleShot(0, &launch->window, [this] { items()[quit]->trigger(); });
  const Turns turns(100);
  EXPECT_EQ(QApplication::exec(), 0);
}

} // namespace
} // namespace trellivar
