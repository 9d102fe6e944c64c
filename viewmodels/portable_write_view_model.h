#pragma once

#include "engine/log.h"
#include "engine/main_queue.h"
#include "engine/orlo3_link.h"
#include "engine/portable_commands.h"
#include "viewmodels/published.h"
#include "viewmodels/report.h"
#include "viewmodels/session_token.h"
#include "viewmodels/write_status.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace trellivar {

/// Writes the bindings of all modes into the pad's firmware, so that the pad keeps them on its own.
///
/// Main thread; who calls a function holds the model meanwhile. The exchange with the pad happens
/// on a background queue, which holds the model weakly, and never twice at the same time.
class PortableWriteViewModel : public std::enable_shared_from_this<PortableWriteViewModel> {
public:
  struct Setup {
    MainQueue& queue;            ///< must outlive the model and its writes
    BackgroundQueue& background; ///< must outlive the model
    std::shared_ptr<Orlo3Linking> link;
    Report report = debugLog;
  };

  static std::shared_ptr<PortableWriteViewModel> make(Setup setup);
  PortableWriteViewModel(const PortableWriteViewModel&) = delete;
  PortableWriteViewModel& operator=(const PortableWriteViewModel&) = delete;

  const Published<WriteStatus>& status() const noexcept { return status_; }
  /// The modes of the last write that succeeded; it is already the new set when `Done` is
  /// announced.
  const std::set<std::string>& portableModes() const noexcept { return portableModes_; }

  /// Writes each mode in the order given, and a mode's keys in ascending order. What the firmware
  /// has no equivalent for is left out. Called during a write, it begins when that has ended, whose
  /// outcome is then not shown.
  void writeAll(std::vector<ModeBindings> modes);
  /// The pad is there again: `NeedPad` becomes `Idle`.
  void clearNeedPad();

private:
  class Backlog;

  explicit PortableWriteViewModel(Setup setup);

  void finish(SessionToken::Value token, WriteStatus outcome);

  Setup setup_;
  Published<WriteStatus> status_;
  std::set<std::string> portableModes_;
  SessionToken newest_;
  std::shared_ptr<Backlog> backlog_; ///< also owned by the blocks that work it off
};

} // namespace trellivar
