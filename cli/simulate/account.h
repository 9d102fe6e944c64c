#pragma once

#include "cli/simulate/player.h"

#include <optional>
#include <string>

namespace trellivar::cli::simulate {

/// Tells a simulation as JSON Lines.
class JsonAccount {
public:
  explicit JsonAccount(std::string& out) : out_(out) {}
  Listener listener();

private:
  std::string& out_;
};

/// Tells a simulation in words: each step with what applications received in its course.
class WordedAccount {
public:
  explicit WordedAccount(std::string& out) : out_(out) {}
  Listener listener();

private:
  void began(const Step& step);
  void arrived(const Arrival& arrival);
  void reported(const Step& step, const Result& result);
  void endLine();

  std::string& out_;
  std::optional<Arrival::Source> lineOf_; ///< whose arrivals the unfinished line lists
};

} // namespace trellivar::cli::simulate
