#pragma once

#include "tests/journeys/walk/walker.h"

#include <array>
#include <span>
#include <string_view>

namespace trellivar::walk {

/// Something to do, and how often people do it beside the others.
struct Action {
  int weight;
  const char* name;
  void (*act)(Walker&);
};

/// What is edited.
std::span<const Action> edits();
/// What goes on for a while.
std::span<const Action> activities();
/// What happens on the desk.
std::span<const Action> deskEvents();
/// How the application begins and ends.
std::span<const Action> restarts();

// What several of them are made of

void show(Walker& walker);
void learn(Walker& walker);
void closeSheet(Walker& walker);
void connect(Walker& walker);
void press(Walker& walker);
void letGoOfEverything(Walker& walker);

/// Modifiers that people press on the keyboard, the pad's own left_control among them. Outputs
/// leave them out, since the end of an output releases its modifiers whoever else holds them.
inline constexpr std::array<std::string_view, 3> keyboardModifiers{"right_shift", "right_option",
                                                                   "left_control"};

} // namespace trellivar::walk
