#include "engine/pad_key_teller.h"

#include <utility>

namespace trellivar {

std::shared_ptr<void> PadKeyTeller::observe(PadKeyObserver observer) {
  auto shared = std::make_shared<PadKeyObserver>(std::move(observer));
  observer_ = shared;
  told_.clear();
  tellSoon();
  return shared;
}

void PadKeyTeller::tellSoon() {
  if (!telling_.isPending()) telling_ = queue_.asyncAfter(Seconds::zero(), [this] { tell(); });
}

/// A key whose release may have gone by unseen is not said to be down.
void PadKeyTeller::tell() {
  const auto observer = observer_.lock();
  if (!observer) return;
  std::vector<DeviceKey> down;
  for (const PadKeys::Key& key : keys_.all()) {
    if (!key.isUncertain) down.push_back({key.device, key.name});
  }
  if (down == told_) return;
  told_ = std::move(down);
  (*observer)(told_);
}

} // namespace trellivar
