#pragma once

#include <string>
#include <vector>

namespace trellivar {

/// One thing that a run has measured.
struct Figure {
  std::string name;
  double value;
};

/// Writes a figure for the process that started this one.
void tell(const Figure& figure);

/// What a run of this program in a role told. Ends the process with a message if that fails.
std::vector<Figure> figuresOf(const std::string& role);

/// When the process of this role was started, as a time of the steady clock in nanoseconds.
long long startOfRole();

/// The role of this process; empty when it is the one that starts the others.
std::string role();

} // namespace trellivar
