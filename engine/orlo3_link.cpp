#include "engine/orlo3_link.h"

#include "engine/orlo3_protocol.h"

#include <utility>

namespace trellivar {

namespace {

struct Description {
  const char* operator()(const Orlo3Error::Io& io) const { return io.message.c_str(); }
  const char* operator()(Orlo3Error::NoPort) const { return "no serial port of the pad"; }
  const char* operator()(Orlo3Error::Dormant) const { return "the pad does not answer"; }
  const char* operator()(Orlo3Error::HealthCheckFailed) const {
    return "the pad stopped answering while it was written";
  }
};

} // namespace

Orlo3Error::Orlo3Error(Case value) : value_(std::move(value)) {}

const char* Orlo3Error::what() const noexcept { return std::visit(Description{}, value_); }

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
