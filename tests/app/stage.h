#pragma once

#include <QObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>
#include <memory>

namespace trellivar {

class AppBridge;
class AppRoot;

namespace desk {
class Machine;
}

/// The whole application but its main function, at a simulated computer, in a real window. Time, of
/// the computer and of all animations, passes only when it is told to. One at a time.
///
/// Tests in QML know it as Stage. Whatever they are given from inside the window belongs to it.
class Stage : public QObject {
  Q_OBJECT
  /// What QML sees of the application.
  Q_PROPERTY(QObject* app READ appObject)
  Q_PROPERTY(QQuickWindow* window READ window)
  /// Of Qt and QML, until they are forgotten.
  Q_PROPERTY(QStringList warnings READ warnings)
  /// What the application asked of the system, in order.
  Q_PROPERTY(QStringList calls READ calls)

public:
  explicit Stage(QObject* parent = nullptr);
  ~Stage() override;

  /// A new computer with a new user: everything is permitted, the pad is away, the application
  /// speaks English and is dark, and motion is reduced. Nothing is shown yet.
  Q_INVOKABLE void begin();
  /// Everything goes; what began must have ended before the process does.
  Q_INVOKABLE void end();
  Q_INVOKABLE void forgetWarnings() { warnings_.clear(); }

  // The computer

  /// Until the application has looked at its permissions again.
  Q_INVOKABLE void permit(bool accessibility, bool inputMonitoring);
  /// By "usb" or "bluetooth"; or takes it "away".
  Q_INVOKABLE void connectPad(const QString& by);
  /// The same; the application has not been told yet.
  Q_INVOKABLE void beginToConnectPad(const QString& by);
  Q_INVOKABLE void turnTo(const QString& mode);
  Q_INVOKABLE void hold(int padKey);
  Q_INVOKABLE void letGo(int padKey);
  /// Presses and releases a key of the pad.
  Q_INVOKABLE void press(int padKey);
  /// On the ordinary keyboard, as the computer hears it: all down, then all up in reverse.
  Q_INVOKABLE void strike(const QStringList& keys);
  /// The pad falls silent after so many commands, from its next connection by cable on.
  Q_INVOKABLE void silencePadAfter(int commands);
  /// Lets the oldest write that was begun take place.
  Q_INVOKABLE void finishWriting();
  /// What the system looks like by itself.
  Q_INVOKABLE void setSystemDark(bool dark);
  Q_INVOKABLE void setMotionReduced(bool reduced);
  /// The application takes the computer for one without an engine. Before anything is shown.
  Q_INVOKABLE void takeEngineAway();
  /// What the stores tell of the user's files.
  Q_INVOKABLE void reportOfFile(const QString& what);

  // Time

  Q_INVOKABLE void pass(double seconds);
  /// Lets happen what is due now.
  Q_INVOKABLE void settle();

  // The window

  /// Opens the main window, with the first steps.
  Q_INVOKABLE void open();
  /// Goes on from the first steps, which must all have been done.
  Q_INVOKABLE void goOn();
  /// Shows components alone: the content of a window, in QML. Returns the first of them.
  Q_INVOKABLE QQuickItem* show(const QString& qml);
  Q_INVOKABLE void resize(int width, int height);

  // What is seen in it

  /// What can be worked, by its accessible name. Null without one.
  Q_INVOKABLE QQuickItem* control(const QString& name) const;
  /// An item of a component, such as "KeycapView", by its number from 0. Null without one.
  Q_INVOKABLE QQuickItem* part(const QString& component, int number = 0) const;
  Q_INVOKABLE int count(const QString& component) const;
  /// Every text, in the order of painting.
  Q_INVOKABLE QStringList texts() const;
  Q_INVOKABLE bool shows(const QString& text) const { return texts().contains(text); }
  /// The accessible names of what can be worked, but for the keys of the drawn keyboard.
  Q_INVOKABLE QStringList names() const;
  /// What has the keyboard; by its accessible name.
  Q_INVOKABLE QString focused() const;
  /// The role of an item as the number in QAccessible.
  Q_INVOKABLE int role(QQuickItem* item) const;
  Q_INVOKABLE QString name(QQuickItem* item) const;
  Q_INVOKABLE QString description(QQuickItem* item) const;
  Q_INVOKABLE bool isChecked(QQuickItem* item) const;
  /// What assistive technology speaks out when it appears.
  Q_INVOKABLE QStringList alerts() const;
  /// Of an item and everything around it.
  Q_INVOKABLE qreal opacityOf(QQuickItem* item) const;
  /// Whether the picture changes while only animations go on for so long.
  Q_INVOKABLE bool movesIn(double seconds);

  // The user

  Q_INVOKABLE void click(QQuickItem* item);
  Q_INVOKABLE void doubleClick(QQuickItem* item);
  Q_INVOKABLE void hover(QQuickItem* item);
  /// Takes the pointer off whatever it is on.
  Q_INVOKABLE void pointAway();
  /// A key of the keyboard, Qt.Key_Tab and so on.
  Q_INVOKABLE void key(int key, int modifiers = 0);
  /// One half of that. The modifiers are those that are held before it.
  Q_INVOKABLE void keyDown(int key, int modifiers = 0);
  Q_INVOKABLE void keyUp(int key, int modifiers = 0);
  /// What a key does that is held down for long, on a system that repeats its release, too.
  Q_INVOKABLE void keyRepeats(int key);
  /// Another window gets the keyboard, until this one is turned to again.
  Q_INVOKABLE void turnAway();
  Q_INVOKABLE void turnBack();
  Q_INVOKABLE void type(const QString& text);
  /// As assistive technology works an item, with one of its actions: "Press", "Toggle".
  Q_INVOKABLE void assist(QQuickItem* item, const QString& action);
  Q_INVOKABLE void setLanguage(const QString& language);
  Q_INVOKABLE void setAppearance(const QString& appearance);

  // What the application has and keeps

  /// A text of the table in the language in force, with its placeholders replaced.
  Q_INVOKABLE QString text(const QString& key, const QStringList& arguments = {}) const;
  /// What is stored on the disk for a key of a mode: what it does, and behind a colon its label.
  /// Empty without a binding.
  Q_INVOKABLE QString stored(const QString& mode, int padKey) const;
  /// The codes that are stored as what a key of the pad sends, for any mode.
  Q_INVOKABLE QString learned(int padKey) const;

  /// The keys whose macros the pad has, such as "P1".
  Q_INVOKABLE QStringList written() const;

  AppBridge& app() const;
  AppRoot& root() const;
  desk::Machine& machine() const;
  QQuickWindow* window() const;
  QObject* appObject() const;
  const QStringList& warnings() const { return warnings_; }
  QStringList calls() const;

private:
  struct World;

  void openWindow(std::unique_ptr<QObject> window);
  void layOut();
  QPoint middleOf(const QQuickItem& item) const;

  QStringList warnings_;
  std::unique_ptr<World> world_;
};

} // namespace trellivar
