#pragma once

#include <array>
#include <string_view>

namespace trellivar {

/// What one process can be started to measure. Each returns the process's exit code.
struct Role {
  std::string_view name;
  int (*run)(int argc, char** argv);
};

int runEmptyWindow(int argc, char** argv);
int runFirstFrame(int argc, char** argv);
int runMappingScreen(int argc, char** argv);

inline constexpr std::array allRoles{Role{"empty window", runEmptyWindow},
                                     Role{"first frame", runFirstFrame},
                                     Role{"mapping screen", runMappingScreen}};

} // namespace trellivar
