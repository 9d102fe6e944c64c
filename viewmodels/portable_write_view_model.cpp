#include "viewmodels/portable_write_view_model.h"

#include "core/l10n.h"

#include <exception>
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

std::shared_ptr<PortableWriteViewModel> PortableWriteViewModel::make(Setup setup) {
  return std::shared_ptr<PortableWriteViewModel>(new PortableWriteViewModel(std::move(setup)));
}

void PortableWriteViewModel::writeAll(std::vector<ModeBindings> modes) {
  newest_.advance();
  status_.set({WriteStatus::Writing{}});
  setup_.background.async([weak = weak_from_this(), link = setup_.link, turn = turn_,
                           &queue = setup_.queue, token = newest_.value(),
                           modes = std::move(modes)] {
    const std::lock_guard lock(*turn);
    queue.async([weak, token, outcome = write(*link, modes)] {
      if (const auto self = weak.lock()) self->finish(token, outcome);
    });
  });
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
