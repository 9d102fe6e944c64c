#pragma once

#include <xcb/xcb.h>

#include <QPoint>
#include <QRect>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

/// A display with the mouse and the keyboard in front of it: what is done here comes to programs as
/// if hardware had done it. There is no window manager, so its part is done here too. One thread.
class Display {
public:
  using Key = xcb_keysym_t;
  using WindowId = xcb_window_t;

  static constexpr Key enter = 0xFF0D;
  static constexpr Key escape = 0xFF1B;
  static constexpr Key tab = 0xFF09;
  static constexpr Key left = 0xFF51;
  static constexpr Key up = 0xFF52;
  static constexpr Key right = 0xFF53;
  static constexpr Key down = 0xFF54;
  static constexpr Key deleteKey = 0xFFFF;
  static constexpr Key shift = 0xFFE1;
  static constexpr Key space = ' ';

  /// The one of this process.
  Display();

  // The mouse
  void pointAt(QPoint place);
  void pressButton();
  void releaseButton();

  // The keyboard, which does not repeat; a character of ASCII is its own key.
  void press(Key key);
  void release(Key key);
  void type(Key key);
  void type(std::string_view text);

  // Windows of programs, by their titles
  std::vector<WindowId> windows(std::string_view title);
  void place(WindowId window, const QRect& at);
  void raise(WindowId window);
  /// The keyboard is this window's from now on.
  void focus(WindowId window);
  bool hasFocus(WindowId window);
  /// Nothing else is in front of it.
  bool isInFront(WindowId window);
  /// As the button at its corner does.
  void close(WindowId window);

private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  struct KeyPlace {
    xcb_keycode_t code = 0;
    bool isShifted = false;
  };

  void fake(std::uint8_t type, std::uint8_t detail, QPoint place = {});
  KeyPlace placeOf(Key key) const;
  xcb_atom_t atom(std::string_view name);
  std::string titleOf(WindowId window);
  bool isShown(WindowId window);
  /// The one at the back first.
  std::vector<WindowId> shownWindows();
  /// Until the display has done everything.
  void settle();

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  WindowId root_ = 0;
  std::uint8_t firstKey_ = 0;
  std::size_t levels_ = 0;   ///< of each key
  std::vector<Key> symbols_; ///< of all levels of each key, from the first on
};

} // namespace trellivar
