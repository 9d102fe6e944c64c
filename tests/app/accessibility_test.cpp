#include "tests/app/scene_test.h"
#include "tests/app/window_items.h"

#include <QAccessibleInterface>
#include <QSet>
#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>

namespace trellivar {
namespace {

/// As what assistive technology is to know a control; Qt has a will of its own in that.
struct Agreement {
  std::string_view component;
  QAccessible::Role role;
  bool isCheckable;
};
constexpr std::array agreements{
    Agreement{"ActionButton", QAccessible::Button, false},
    Agreement{"ActionPill", QAccessible::Button, false},
    Agreement{"DeviceChip", QAccessible::Button, false},
    Agreement{"KeycapView", QAccessible::Button, false},
    Agreement{"LibraryItem", QAccessible::RadioButton, true},
    Agreement{"ModeSegment", QAccessible::RadioButton, true},
    Agreement{"PickerKey", QAccessible::CheckBox, true},
    Agreement{"Segment", QAccessible::RadioButton, true},
    Agreement{"SettingsButton", QAccessible::Button, false},
    Agreement{"ToggleSwitch", QAccessible::CheckBox, true},
};

/// Where every key is for what is listened to, until that ends by itself or by a click.
const std::set<std::string_view> listeningScenes{"recording", "discovery-listening",
                                                 "discovery-second-key"};

std::string text(QQuickItem& item) { return described(item).toStdString(); }

/// The keyboard works every screen, and assistive technology can tell what is on it.
class Accessibility : public SceneTest {
protected:
  /// Everything that assistive technology is told of, but for what is hidden.
  static void addObjects(QAccessibleInterface& parent, QList<QAccessibleInterface*>& to) {
    for (int i = 0; i < parent.childCount(); ++i) {
      QAccessibleInterface* child = parent.child(i);
      if (!child || child->state().invisible) continue;
      to += child;
      addObjects(*child, to);
    }
  }
  QList<QAccessibleInterface*> objects() {
    QList<QAccessibleInterface*> all;
    addObjects(*QAccessible::queryAccessibleInterface(stage.window()), all);
    return all;
  }

  /// What Tab is to come to: a sheet or a pop-over keeps the keyboard until it is closed.
  QList<QQuickItem*> stops() {
    const QQuickItem* sheet = sheetOf(*stage.window()->activeFocusItem());
    QList<QQuickItem*> stops = reachableItems(*stage.window());
    stops.removeIf([sheet](QQuickItem* item) {
      return !item->activeFocusOnTab() || !item->isEnabled() || (sheet && sheetOf(*item) != sheet);
    });
    return stops;
  }

  /// From where the keyboard is until Tab comes back, or for far too long.
  QList<QQuickItem*> round() {
    QList<QQuickItem*> visited;
    stage.key(Qt::Key_Tab);
    QQuickItem* first = stage.window()->activeFocusItem();
    do {
      visited += stage.window()->activeFocusItem();
      stage.key(Qt::Key_Tab);
    } while (stage.window()->activeFocusItem() != first && visited.size() < 200);
    return visited;
  }

  static bool isBackwards(QQuickItem& from, QQuickItem& to) {
    constexpr double touching = 2;
    const QRectF here = placeOf(from);
    const QRectF there = placeOf(to);
    const bool isRight = there.left() >= here.right() - touching;
    const bool isBelow = there.top() >= here.bottom() - touching;
    return !isRight && !isBelow && !here.contains(there);
  }

  void expectNamesAndRoles();
  void expectStopsToBeKnown();
  void expectEachStopOnce(const QList<QQuickItem*>& visited);
  static void expectOrderOfReading(const QList<QQuickItem*>& visited);
  void expectTheSameBackwards(const QList<QQuickItem*>& forwards);
  void expectToListenOnly();
  void expectToSeeWhereTheKeyboardIs(const QList<QQuickItem*>& visited);
};

void Accessibility::expectNamesAndRoles() {
  const auto all = objects();
  EXPECT_GE(all.size(), 5);
  for (QAccessibleInterface* object : all) {
    const auto* item = qobject_cast<QQuickItem*>(object->object());
    const std::string what = item ? componentOf(*item).toStdString() : "?";
    EXPECT_NE(object->role(), QAccessible::NoRole) << what;
    EXPECT_FALSE(object->text(QAccessible::Name).isEmpty())
        << what << " with role " << object->role();
    const auto wanted = std::ranges::find(agreements, what, &Agreement::component);
    if (wanted == agreements.end()) continue;
    EXPECT_EQ(object->role(), wanted->role) << what;
    EXPECT_EQ(object->state().checkable, wanted->isCheckable) << what;
  }
}

void Accessibility::expectStopsToBeKnown() {
  QSet<QObject*> known;
  for (QAccessibleInterface* object : objects())
    known += object->object();
  for (QQuickItem* stop : stops()) {
    EXPECT_TRUE(known.contains(stop)) << text(*stop);
    EXPECT_TRUE(isControl(*stop) || accessibleRole(*stop) == QAccessible::StaticText)
        << text(*stop) << " has role " << accessibleRole(*stop);
  }
}

void Accessibility::expectEachStopOnce(const QList<QQuickItem*>& visited) {
  const QList<QQuickItem*> wanted = stops();
  EXPECT_GE(wanted.size(), 1);
  for (QQuickItem* stop : wanted)
    EXPECT_EQ(visited.count(stop), 1) << text(*stop);
  for (QQuickItem* stop : visited)
    EXPECT_TRUE(wanted.contains(stop)) << text(*stop);
}

void Accessibility::expectOrderOfReading(const QList<QQuickItem*>& visited) {
  int turns = 0; // one leads from the last to the first
  std::string backwards;
  for (qsizetype i = 0; i < visited.size() && visited.size() > 1; ++i) {
    QQuickItem& from = *visited[i];
    QQuickItem& to = *visited[(i + 1) % visited.size()];
    if (!isBackwards(from, to)) continue;
    ++turns;
    backwards += "\n" + text(from) + " to " + text(to);
  }
  EXPECT_LE(turns, 1) << backwards;
}

/// From the first on, so that the way leads over the last.
void Accessibility::expectTheSameBackwards(const QList<QQuickItem*>& forwards) {
  QList<QQuickItem*> backwards;
  for (qsizetype i = 0; i < forwards.size(); ++i) {
    stage.key(Qt::Key_Backtab, Qt::ShiftModifier);
    backwards.prepend(stage.window()->activeFocusItem());
  }
  EXPECT_EQ(backwards, forwards);
}

void Accessibility::expectToSeeWhereTheKeyboardIs(const QList<QQuickItem*>& visited) {
  QImage before = stage.window()->grabWindow();
  for (qsizetype i = 0; i < visited.size() && visited.size() > 1; ++i) {
    stage.key(Qt::Key_Tab);
    const QImage after = stage.window()->grabWindow();
    EXPECT_TRUE(after != before) << text(*stage.window()->activeFocusItem());
    before = after;
  }
}

/// The keyboard is at what listens, which is seen, and stays there.
void Accessibility::expectToListenOnly() {
  ASSERT_NE(stage.window()->activeFocusItem(), nullptr);
  QQuickItem& listener = *stage.window()->activeFocusItem();
  EXPECT_EQ(accessibleRole(listener), QAccessible::StaticText) << text(listener);
  EXPECT_TRUE(stops().contains(&listener)) << text(listener);
  EXPECT_EQ(stage.count("FocusRing"), 1) << text(listener);
  stage.key(Qt::Key_Tab);
  EXPECT_EQ(stage.window()->activeFocusItem(), &listener) << "Tab belongs to what is heard";
  stage.key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(stage.window()->activeFocusItem(), &listener) << "backwards as well";
}

TEST_P(Accessibility, everythingHasANameAndARole) {
  enter(GetParam());
  expectNamesAndRoles();
  expectStopsToBeKnown();
}

TEST_P(Accessibility, theKeyboardReachesEverything) {
  enter(GetParam());
  if (listeningScenes.contains(GetParam().name)) {
    expectToListenOnly();
    return;
  }
  const QList<QQuickItem*> visited = round();
  expectEachStopOnce(visited);
  expectOrderOfReading(visited);
  expectTheSameBackwards(visited);
  expectToSeeWhereTheKeyboardIs(visited);
}

using Agreements = StageTest;

TEST_F(Agreements, eachIsAboutAControlThatIsThere) {
  std::set<std::string> seen;
  for (const char* name : {"selected", "picker", "settings"}) {
    enter(scene(name));
    for (const QQuickItem* item : seenItems(*stage.window()))
      seen.insert(componentOf(*item).toStdString());
  }
  for (const Agreement& agreement : agreements)
    EXPECT_TRUE(seen.contains(std::string(agreement.component))) << agreement.component;
}

INSTANTIATE_TEST_SUITE_P(Screens, Accessibility, everyScene(), nameOfScene);

} // namespace
} // namespace trellivar
