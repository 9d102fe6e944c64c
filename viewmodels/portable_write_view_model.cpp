#include "viewmodels/portable_write_view_model.h"

#include "core/l10n.h"

#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <span>
#include <utility>

namespace trellivar {

namespace {

WriteStatus failure(L10n::Key key) { return {WriteStatus::Error{std::string(L10n::t(key))}}; }

struct Outcome {
  WriteStatus operator()(const Orlo3Error::Io& io) const {
    return {WriteStatus::Error{io.message}};
  }
  WriteStatus operator()(Orlo3Error::NoPort) const { return {WriteStatus::NeedPad{}}; }
  WriteStatus operator()(Orlo3Error::Dormant) const { return {WriteStatus::NeedPad{}}; }
  WriteStatus operator()(Orlo3Error::HealthCheckFailed) const {
    return failure(L10n::Key::errMidWrite);
  }
};

WriteStatus write(Orlo3Linking& link, std::span<const ModeBindings> modes) {
  PortableCommands commands = portableCommands(modes);
  if (commands.lines.empty()) return failure(L10n::Key::errNothingToWrite);
  try {
    std::string firmware = link.writeMacros(commands.lines);
    return {WriteStatus::Done{std::move(firmware), std::move(commands.modes),
                              std::move(commands.skippedByMode)}};
  } catch (const Orlo3Error& error) {
    return std::visit(Outcome{}, error.value());
  } catch (const std::exception& error) {
    return {WriteStatus::Error{error.what()}};
  }
}

} // namespace

/// The writes that are asked for and have not begun. They happen one at a time in the order in
/// which they came, although the blocks on the background queue may run together and in any order:
/// each of them does the oldest write, whichever it was put there for.
class PortableWriteViewModel::Backlog {
public:
  using Write = std::function<void()>;

  void add(Write write) {
    const std::lock_guard lock(mutex_);
    writes_.push_back(std::move(write));
  }
  void doOldest() {
    const std::lock_guard lock(turn_);
    takeOldest()();
  }

private:
  Write takeOldest() {
    const std::lock_guard lock(mutex_);
    Write write = std::move(writes_.front());
    writes_.pop_front();
    return write;
  }

  std::mutex turn_;  ///< to use the link
  std::mutex mutex_; ///< of what follows
  std::deque<Write> writes_;
};

PortableWriteViewModel::PortableWriteViewModel(Setup setup)
    : setup_(std::move(setup)), backlog_(std::make_shared<Backlog>()) {}

std::shared_ptr<PortableWriteViewModel> PortableWriteViewModel::make(Setup setup) {
  return std::shared_ptr<PortableWriteViewModel>(new PortableWriteViewModel(std::move(setup)));
}

void PortableWriteViewModel::writeAll(std::vector<ModeBindings> modes) {
  newest_.advance();
  status_.set({WriteStatus::Writing{}});
  backlog_->add([weak = weak_from_this(), link = setup_.link, &queue = setup_.queue,
                 token = newest_.value(), modes = std::move(modes)] {
    queue.async([weak, token, outcome = write(*link, modes)] {
      if (const auto self = weak.lock()) self->finish(token, outcome);
    });
  });
  setup_.background.async([backlog = backlog_] { backlog->doOldest(); });
}

void PortableWriteViewModel::finish(SessionToken::Value token, WriteStatus outcome) {
  if (const auto* error = std::get_if<WriteStatus::Error>(&outcome.value))
    setup_.report(error->message);
  if (const auto* done = std::get_if<WriteStatus::Done>(&outcome.value))
    portableModes_ = {done->modes.begin(), done->modes.end()};
  if (newest_.isCurrent(token)) status_.set(std::move(outcome));
}

void PortableWriteViewModel::clearNeedPad() {
  if (status_->is<WriteStatus::NeedPad>()) status_.set({WriteStatus::Idle{}});
}

} // namespace trellivar
