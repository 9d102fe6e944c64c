#include "tests/app/journeys/display.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

namespace trellivar {

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc): of a C library
};
template <class T> using Reply = std::unique_ptr<T, Free>;

template <class T> Reply<T> owned(T* reply) { return Reply<T>(reply); }

} // namespace

Display::Display() : connection_(xcb_connect(nullptr, nullptr)) {
  xcb_connection_t* c = connection_.get();
  if (xcb_connection_has_error(c) != 0) throw std::runtime_error("there is no display");
  const xcb_setup_t* setup = xcb_get_setup(c);
  root_ = xcb_setup_roots_iterator(setup).data->root;
  firstKey_ = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto keys = owned(
      xcb_get_keyboard_mapping_reply(c, xcb_get_keyboard_mapping(c, firstKey_, count), nullptr));
  if (!keys) throw std::runtime_error("the display has no keyboard");
  const std::uint32_t off = XCB_AUTO_REPEAT_MODE_OFF;
  xcb_change_keyboard_control(c, XCB_KB_AUTO_REPEAT_MODE, &off);
  levels_ = keys->keysyms_per_keycode;
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(keys.get());
  symbols_.assign(symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(keys.get()));
}

void Display::settle() {
  xcb_connection_t* c = connection_.get();
  owned(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
}

void Display::fake(std::uint8_t type, std::uint8_t detail, QPoint place) {
  xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, root_,
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      0);
  settle();
}

void Display::pointAt(QPoint place) { fake(XCB_MOTION_NOTIFY, 0, place); }
void Display::pressButton() { fake(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1); }
void Display::releaseButton() { fake(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1); }

Display::KeyPlace Display::placeOf(Key key) const {
  for (std::size_t level = 0; level < 2; ++level) {
    for (std::size_t i = level; i < symbols_.size(); i += levels_) {
      if (symbols_[i] == key)
        return {static_cast<xcb_keycode_t>(firstKey_ + i / levels_), level == 1};
    }
  }
  throw std::runtime_error("the keyboard has no key " + std::to_string(key));
}

void Display::press(Key key) { fake(XCB_KEY_PRESS, placeOf(key).code); }
void Display::release(Key key) { fake(XCB_KEY_RELEASE, placeOf(key).code); }

void Display::type(Key key) {
  const bool isShifted = placeOf(key).isShifted;
  if (isShifted) press(shift);
  press(key);
  release(key);
  if (isShifted) release(shift);
}

void Display::type(std::string_view text) {
  for (const char c : text)
    type(static_cast<Key>(c));
}

xcb_atom_t Display::atom(std::string_view name) {
  xcb_connection_t* c = connection_.get();
  const auto cookie = xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const auto reply = owned(xcb_intern_atom_reply(c, cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string Display::titleOf(WindowId window) {
  xcb_connection_t* c = connection_.get();
  const auto cookie =
      xcb_get_property(c, 0, window, atom("_NET_WM_NAME"), XCB_GET_PROPERTY_TYPE_ANY, 0, 100);
  const auto title = owned(xcb_get_property_reply(c, cookie, nullptr));
  if (!title) return {};
  return {static_cast<const char*>(xcb_get_property_value(title.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(title.get()))};
}

bool Display::isShown(WindowId window) {
  xcb_connection_t* c = connection_.get();
  const auto facts =
      owned(xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr));
  return facts && facts->map_state == XCB_MAP_STATE_VIEWABLE &&
         facts->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

std::vector<Display::WindowId> Display::shownWindows() {
  xcb_connection_t* c = connection_.get();
  const auto tree = owned(xcb_query_tree_reply(c, xcb_query_tree(c, root_), nullptr));
  if (!tree) return {};
  const WindowId* first = xcb_query_tree_children(tree.get());
  std::vector<WindowId> found(first, first + xcb_query_tree_children_length(tree.get()));
  std::erase_if(found, [this](WindowId window) { return !isShown(window); });
  return found;
}

std::vector<Display::WindowId> Display::windows(std::string_view title) {
  auto found = shownWindows();
  std::erase_if(found, [&](WindowId window) { return titleOf(window) != title; });
  return found;
}

void Display::place(WindowId window, const QRect& at) {
  const std::array values{static_cast<std::uint32_t>(at.x()), static_cast<std::uint32_t>(at.y()),
                          static_cast<std::uint32_t>(at.width()),
                          static_cast<std::uint32_t>(at.height())};
  xcb_configure_window(connection_.get(), window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
  settle();
}

void Display::raise(WindowId window) {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  settle();
}

void Display::focus(WindowId window) {
  xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  settle();
}

bool Display::hasFocus(WindowId window) {
  xcb_connection_t* c = connection_.get();
  const auto focused = owned(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
  return focused && focused->focus == window;
}

bool Display::isInFront(WindowId window) {
  const auto shown = shownWindows();
  return !shown.empty() && shown.back() == window;
}

void Display::close(WindowId window) {
  xcb_client_message_event_t request{};
  request.response_type = XCB_CLIENT_MESSAGE;
  request.format = 32;
  request.window = window;
  request.type = atom("WM_PROTOCOLS");
  request.data.data32[0] = atom("WM_DELETE_WINDOW");
  request.data.data32[1] = XCB_CURRENT_TIME;
  xcb_send_event(connection_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&request)); // NOLINT(*-reinterpret-cast): its API
  settle();
}

} // namespace trellivar
