#pragma once

#include "viewmodels/published.h"

#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

/// What went wrong with the user's files, until the user has taken note of it. Main thread.
class FileTroubles {
public:
  /// Again what nobody has taken note of yet is nothing new.
  void report(std::string_view what);
  /// The first is noted.
  void dismiss();

  /// The oldest first.
  const Published<std::vector<std::string>>& all() const noexcept { return all_; }

private:
  Published<std::vector<std::string>> all_;
};

} // namespace trellivar
