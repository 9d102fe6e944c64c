#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace trellivar {

/// Why the engine refused something; `what` is meant for people.
class EngineError : public std::exception {
public:
  enum class Case : std::uint8_t { lintFailed };

  /// Bindings that make no sense.
  static EngineError lintFailed(std::string message) {
    return {Case::lintFailed, std::move(message)};
  }

  Case kind() const noexcept { return kind_; }
  const char* what() const noexcept override { return message_.c_str(); }

  friend bool operator==(const EngineError& a, const EngineError& b) {
    return a.kind_ == b.kind_ && a.message_ == b.message_;
  }

private:
  EngineError(Case kind, std::string message) : kind_(kind), message_(std::move(message)) {}

  Case kind_;
  std::string message_;
};

} // namespace trellivar
