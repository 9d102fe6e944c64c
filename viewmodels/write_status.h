#pragma once

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace trellivar {

/// What has become of a portable write.
struct WriteStatus {
  /// Finished.
  struct Done {
    std::string firmware;           ///< the version that the pad reports
    std::vector<std::string> modes; ///< that were written, in order
    /// Key ids without a firmware equivalent, ascending; modes without any are absent.
    std::map<std::string, std::vector<int>> skippedByMode;
    friend bool operator==(const Done&, const Done&) = default;
  };
  /// Failed; the message is shown as it is.
  struct Error {
    std::string message;
    friend bool operator==(const Error&, const Error&) = default;
  };
  /// Nothing is going on.
  struct Idle {
    friend bool operator==(const Idle&, const Idle&) = default;
  };
  /// No pad answers at the cable; the user is asked to connect it.
  struct NeedPad {
    friend bool operator==(const NeedPad&, const NeedPad&) = default;
  };
  struct Writing {
    friend bool operator==(const Writing&, const Writing&) = default;
  };

  std::variant<Idle, Writing, NeedPad, Error, Done> value;

  template <class Case> bool is() const noexcept { return std::holds_alternative<Case>(value); }

  friend bool operator==(const WriteStatus&, const WriteStatus&) = default;
};

} // namespace trellivar
