#include "engine/orlo3_link.h"

#include "engine/orlo3_protocol.h"

#include <utility>

namespace trellivar {

Orlo3Error::Orlo3Error(Case value) : value_(std::move(value)) {}

const char* Orlo3Error::what() const noexcept {
  if (const auto* io = std::get_if<Io>(&value_)) return io->message.c_str();
  if (is<NoPort>()) return "no serial port of the pad";
  if (is<Dormant>()) return "the pad does not answer";
  return "the pad stopped answering while it was written";
}

std::string Orlo3Linking::writeMacros(const std::vector<std::string>& lines) {
  if (!query(Orlo3Protocol::firmwareQuery, firmwareTimeoutSeconds))
    throw Orlo3Error(Orlo3Error::Dormant{});
  for (const auto& frames : Orlo3Protocol::numberedFrames(lines)) {
    for (const std::string& frame : frames)
      query(frame, frameReplyTimeoutSeconds);
  }
  const auto reply = query(Orlo3Protocol::firmwareQuery, firmwareTimeoutSeconds);
  if (!reply) throw Orlo3Error(Orlo3Error::HealthCheckFailed{});
  return reply->value;
}

} // namespace trellivar
