#include "app/bridge/file_troubles.h"

#include <algorithm>
#include <utility>

namespace trellivar {

void FileTroubles::report(std::string_view what) {
  auto all = *all_;
  if (std::ranges::find(all, what) != all.end()) return;
  all.emplace_back(what);
  all_.set(std::move(all));
}

void FileTroubles::dismiss() {
  auto all = *all_;
  if (all.empty()) return;
  all.erase(all.begin());
  all_.set(std::move(all));
}

} // namespace trellivar
