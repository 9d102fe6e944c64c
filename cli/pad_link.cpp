#include "cli/pad_link.h"

#include "core/l10n.h"

namespace trellivar::cli {

namespace {

std::string text(L10n::Key key) { return std::string(L10n::text(key, AppLanguage::en)); }

struct Message {
  std::string operator()(const Orlo3Error::Io& io) const { return io.message; }
  std::string operator()(Orlo3Error::NoPort) const { return text(L10n::Key::needPad); }
  std::string operator()(Orlo3Error::Dormant) const { return text(L10n::Key::needPad); }
  std::string operator()(Orlo3Error::HealthCheckFailed) const {
    return text(L10n::Key::errMidWrite);
  }
};

} // namespace

Orlo3SerialLink padLink(const Context& context, const std::optional<std::string>& port,
                        LinkClock& clock) {
  if (!port) return {context.discoverPort, clock};
  return {[port] { return port; }, clock};
}

Failure failureOf(const Orlo3Error& error) { return Failure(std::visit(Message{}, error.value())); }

} // namespace trellivar::cli
