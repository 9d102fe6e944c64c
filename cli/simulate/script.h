#pragma once

#include "cli/context.h"
#include "core/device_identity.h"
#include "core/instant.h"
#include "core/key_name.h"
#include "core/output.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// What happens on the simulated desk, step by step.
namespace trellivar::cli::simulate {

enum class Permission { accessibility, inputMonitoring };

/// Plugs the pad in or out.
struct Connect {
  enum class Link { none, usb, bluetooth };
  std::variant<Link, DeviceIdentity> to;
};
/// Moves the pad's switch.
struct SetMode {
  std::string mode;
};
/// Edits the profile of a mode.
struct Bind {
  std::string mode;
  int key = 0;
  Output output;
  std::optional<std::string> label;
};
/// Presses pad keys in order and releases them together.
struct Press {
  std::vector<int> keys;
  Seconds hold{0.05};
  Seconds stagger{0};
};
/// Presses keys of the ordinary keyboard in order and releases them in reverse.
struct Type {
  std::vector<KeyName> keys;
};
struct Learn {
  int key = 0;
};
struct Record {
  int key = 0;
};
struct Wait {
  Seconds duration{0};
};
struct Write {};
struct SetPermissions {
  std::vector<Permission> permissions;
  bool granted = true;
};
struct DisableTap {
  enum class Reason { timeout, userInput };
  Reason reason = Reason::timeout;
};
struct Status {};

struct Step {
  std::size_t number = 0; ///< the line of the script, from 1
  std::variant<Connect, SetMode, Bind, Press, Type, Learn, Record, Wait, Write, SetPermissions,
               DisableTap, Status>
      action;
};

/// Reads a whole script and checks it. Throws BadInput, which says where it is wrong, and Failure.
std::vector<Step> readScript(Context& context, const std::string& file);

/// The script that shows everything: each pad key in each mode over each link, learned where it has
/// to be, and a portable write.
std::vector<Step> tour();

} // namespace trellivar::cli::simulate
