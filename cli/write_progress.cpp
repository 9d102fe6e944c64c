#include "cli/write_progress.h"

#include <ostream>
#include <utility>

namespace trellivar::cli {

namespace {

constexpr const char* erasedLine = "\r\x1b[K";

} // namespace

WriteProgress::WriteProgress(Context& context, std::vector<PortableCommands::Target> targets)
    : context_(context), targets_(std::move(targets)) {}

WriteProgress::~WriteProgress() {
  if (isShown_ && context_.errIsTerminal) context_.err << erasedLine << std::flush;
}

void WriteProgress::show(const Orlo3SerialLink::Progress& progress) {
  if (context_.errIsTerminal) {
    const auto& [mode, key] = targets_[progress.line];
    context_.err << erasedLine << "Writing mode " << mode << ", key " << key << ": frame "
                 << progress.frame << " of " << progress.frames << std::flush;
  } else if (!isShown_) {
    context_.err << "trellivarctl: writing " << targets_.size()
                 << (targets_.size() == 1 ? " command" : " commands") << " into the pad\n"
                 << std::flush;
  }
  isShown_ = true;
}

} // namespace trellivar::cli
