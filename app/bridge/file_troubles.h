#pragma once

#include "viewmodels/published.h"

#include <optional>
#include <string>
#include <string_view>

namespace trellivar {

/// What went wrong last with a file of the user's, until the user has taken note of it. It goes to
/// the log as well. Main thread.
class FileTroubles {
public:
  void report(std::string_view what);
  void dismiss() { last_.set(std::nullopt); }

  const Published<std::optional<std::string>>& last() const noexcept { return last_; }

private:
  Published<std::optional<std::string>> last_;
};

} // namespace trellivar
