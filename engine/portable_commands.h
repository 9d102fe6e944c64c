#pragma once

#include "core/profile.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace trellivar {

/// The bindings of one position of the pad's mode switch.
struct ModeBindings {
  std::string mode;
  std::vector<KeyMapping> mappings;
};

/// What a portable write sends, and what it has to leave out.
struct PortableCommands {
  /// The place in the pad that a command fills.
  struct Target {
    std::string mode;
    int key = 0;
    friend bool operator==(const Target&, const Target&) = default;
  };

  std::vector<std::string> lines; ///< one command a binding; empty: there is nothing to write
  std::vector<Target> targets;    ///< of the lines, one by one
  std::vector<std::string> modes; ///< in the order given
  /// Key ids without a firmware equivalent, ascending; modes without any are absent.
  std::map<std::string, std::vector<int>> skippedByMode;
};

/// One set command for each binding, by mode in the order given and by ascending key id within it.
PortableCommands portableCommands(std::span<const ModeBindings> modes);

/// The modes that a portable write covers: "P", "M" and "R" in this order, as far as there are
/// profiles of these names; of two with the same name the first counts.
std::vector<ModeBindings> portableModes(std::span<const Profile> profiles);

} // namespace trellivar
