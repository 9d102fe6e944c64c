#pragma once

#include "engine/orlo3_link.h"

#include <functional>
#include <optional>
#include <ostream>
#include <string>

/// The words in which tests speak about the link to the pad, and how failed checks show them.
namespace trellivar {

inline std::ostream& operator<<(std::ostream& out, const Orlo3Reply& reply) {
  return out << reply.op << ' ' << reply.target << ' ' << reply.value;
}

namespace words {

inline const Orlo3Error::Case noPort = Orlo3Error::NoPort{};
inline const Orlo3Error::Case dormant = Orlo3Error::Dormant{};
inline const Orlo3Error::Case healthCheckFailed = Orlo3Error::HealthCheckFailed{};
inline Orlo3Error::Case io(const std::string& message) { return Orlo3Error::Io{message}; }

/// What a health check sends.
inline const std::string firmwareQuery = R"({"o":"get","t":"firmware"})";

/// The error with which `action` ends; none when it does not fail.
inline std::optional<Orlo3Error::Case> errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Orlo3Error& error) {
    return error.value();
  }
  return std::nullopt;
}

} // namespace words

/// For failed checks.
inline void PrintTo(const Orlo3Error::Case& value, std::ostream* out) {
  *out << Orlo3Error(value).what();
}

} // namespace trellivar
