#include "cli/shortcut.h"
#include "cli/simulate/script.h"
#include "core/mode_profiles.h"
#include "simulator/desk/pad.h"

#include <array>
#include <string_view>
#include <utility>

namespace trellivar::cli::simulate {

namespace {

struct ModeBindings {
  std::string_view mode;
  std::array<std::string_view, 3> shortcuts; ///< of keys 1 to 3
};

/// One of every kind of output; two of them the pad's firmware has no equivalent for.
constexpr std::array bindings{
    ModeBindings{"P", {"cmd+c", "cmd+v", "play_or_pause"}},
    ModeBindings{"M", {"h,e,l,l,o", "cmd+shift+4", "ropt"}},
    ModeBindings{"R", {"ctrl+left_arrow", "button3", "cmd+opt+d"}},
};

class Tour {
public:
  std::vector<Step> steps() {
    for (const ModeBindings& row : bindings)
      bindAll(row);
    for (const std::string_view mode : modeNames) {
      add(SetMode{std::string(mode)});
      for (const auto link : {Connect::Link::usb, Connect::Link::bluetooth}) {
        add(Connect{link});
        if (mode != modeNames.front()) learnAll(); // of the first one everything is known
        pressAll();
      }
    }
    recordOne();
    writeAll();
    return std::move(steps_);
  }

private:
  template <class Action> void add(Action action) {
    steps_.push_back({steps_.size() + 1, std::move(action)});
  }

  void bindAll(const ModeBindings& row) {
    for (const int key : desk::Pad::keyIds) {
      const std::string_view shortcut = row.shortcuts.at(static_cast<std::size_t>(key - 1));
      add(Bind{std::string(row.mode), key, parseShortcut(shortcut), std::nullopt});
    }
  }

  void learnAll() {
    for (const int key : desk::Pad::keyIds) {
      add(Learn{key});
      add(Press{{key}});
      add(settle);
    }
  }

  void pressAll() {
    for (const int key : desk::Pad::keyIds)
      add(Press{{key}});
  }

  void recordOne() {
    add(SetMode{"P"});
    add(Connect{Connect::Link::usb});
    add(Record{2});
    add(Type{{KeyName("left_command"), KeyName("left_shift"), KeyName("v")}});
    add(settle);
    add(Press{{2}});
  }

  /// The written pad plays its bindings over Bluetooth by itself.
  void writeAll() {
    add(Write{});
    for (const std::string_view mode : modeNames) {
      add(SetMode{std::string(mode)});
      add(Connect{Connect::Link::bluetooth});
      for (const int key : desk::Pad::keyIds) {
        add(Press{{key}});
        add(settle);
      }
    }
    add(Status{});
  }

  /// Long enough for a capture, or the macro of a key, to end.
  static constexpr Wait settle{Seconds(0.6)};

  std::vector<Step> steps_;
};

} // namespace

std::vector<Step> tour() { return Tour().steps(); }

} // namespace trellivar::cli::simulate
