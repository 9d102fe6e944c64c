#pragma once

#include "tests/journeys/invariants.h"
#include "tests/journeys/user.h"
#include "tests/journeys/walk/dice.h"
#include "tests/journeys/walk/instant_link.h"

#include <array>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace trellivar::walk {

/// A person who does anything at random, and what is remembered about it.
struct Walker {
  explicit Walker(unsigned seed) : dice(seed) {
    user.link = std::make_shared<InstantLink>(user.machine, dice);
    user.start();
  }

  Dice dice;
  User user;
  invariants::Activities now;
  std::deque<std::string> done; ///< the latest actions, with what became of them
  std::string problem;          ///< the first that an action saw

  void say(std::string_view what) { done.back() += " " + std::string(what); }
  /// Takes what is wrong; empty: nothing.
  void see(std::string wrong) {
    if (problem.empty()) problem = std::move(wrong);
  }
  desk::Pad& pad() { return user.machine.pad; }
  int anyKey() { return 1 + dice.below(3); }
  std::string_view anyMode() { return dice.oneOf(std::array<std::string_view, 3>{"P", "M", "R"}); }
};

} // namespace trellivar::walk
