#pragma once

#include "cli/context.h"
#include "engine/orlo3_serial_link.h"
#include "engine/portable_commands.h"

#include <vector>

namespace trellivar::cli {

/// How far a portable write has come, on the error stream: for people who watch, one line that is
/// overwritten with each frame and erased in the end; for a file, one plain line.
class WriteProgress {
public:
  /// `targets` are those of the lines to be written. The context must outlive the object.
  WriteProgress(Context& context, std::vector<PortableCommands::Target> targets);
  WriteProgress(const WriteProgress&) = delete;
  WriteProgress& operator=(const WriteProgress&) = delete;
  ~WriteProgress();

  void show(const Orlo3SerialLink::Progress& progress);

private:
  Context& context_;
  std::vector<PortableCommands::Target> targets_;
  bool isShown_ = false;
};

} // namespace trellivar::cli
