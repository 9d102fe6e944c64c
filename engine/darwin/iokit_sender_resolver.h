#pragma once

#include "engine/sender_resolving.h"

namespace trellivar {

/// Finds senders in the I/O registry: the service of each matching HID device and everything below
/// it, since an event names the leaf that produced it. Needs no permission.
class IOKitSenderResolver final : public SenderResolving {
public:
  std::unordered_set<std::int64_t> senderIds(int vendorId, int productId) override;
};

} // namespace trellivar
