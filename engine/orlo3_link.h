#pragma once

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace trellivar {

/// What the pad answered, such as {"o":"get","t":"firmware","v":"1.0.7"}.
struct Orlo3Reply {
  std::string op;
  std::string target; ///< empty when the pad named none
  std::string value;  ///< as text, whatever its type; empty when there was none
  friend bool operator==(const Orlo3Reply&, const Orlo3Reply&) = default;
};

/// Why talking to the pad failed.
class Orlo3Error : public std::exception {
public:
  /// The port cannot be opened or is no serial port; the message says which and why.
  struct Io {
    std::string message;
    friend bool operator==(const Io&, const Io&) = default;
  };
  /// No serial port of the pad is present.
  struct NoPort {
    friend bool operator==(const NoPort&, const NoPort&) = default;
  };
  /// The port is there, but the pad did not answer before the write; nothing has been written.
  struct Dormant {
    friend bool operator==(const Dormant&, const Dormant&) = default;
  };
  /// The pad answered before the write but not after it, or took no more in between. Some or all of
  /// the commands may have reached it.
  struct HealthCheckFailed {
    friend bool operator==(const HealthCheckFailed&, const HealthCheckFailed&) = default;
  };
  using Case = std::variant<Io, NoPort, Dormant, HealthCheckFailed>;

  explicit Orlo3Error(Case value);

  const Case& value() const noexcept { return value_; }
  template <class C> bool is() const noexcept { return std::holds_alternative<C>(value_); }

  /// The message of `Io` as it is; else a sentence in English for logs. What people read of the
  /// other cases comes from the texts of the application.
  const char* what() const noexcept override;

  friend bool operator==(const Orlo3Error& a, const Orlo3Error& b) { return a.value_ == b.value_; }

private:
  Case value_;
};

/// The pad by cable, as portable write uses it. Every call blocks, for seconds if the pad is
/// silent, so it belongs off the main thread; two calls must never run at the same time.
class Orlo3Linking {
public:
  static constexpr double firmwareTimeoutSeconds = 3.0;
  static constexpr double frameReplyTimeoutSeconds = 0.2;

  virtual ~Orlo3Linking() = default;

  /// The device path of the pad's serial port; none when there is no such port.
  virtual std::optional<std::string> discoverPort() = 0;

  /// Sends one line and waits for its reply; none when the time is over. Throws Orlo3Error.
  virtual std::optional<Orlo3Reply> query(std::string_view line, double timeoutSeconds) = 0;

  /// Stores macros: asks for the firmware, sends the lines, asks for the firmware again. Returns
  /// the version of the last reply. Throws Orlo3Error.
  ///
  /// As it stands here, it works through `query` alone, for links that cannot write without
  /// waiting: each frame is a query of its own whose reply does not matter.
  virtual std::string writeMacros(const std::vector<std::string>& lines);

protected:
  Orlo3Linking() = default;
  Orlo3Linking(const Orlo3Linking&) = default;
  Orlo3Linking& operator=(const Orlo3Linking&) = default;
};

} // namespace trellivar
