#pragma once

#include <cstdint>
#include <unordered_set>

namespace trellivar {

/// Finds the services of a device that events name as their sender. Main thread.
class SenderResolving {
public:
  virtual ~SenderResolving() = default;

  /// Of every attached device with this identity, all services that may have sent an event; none of
  /// them is 0.
  virtual std::unordered_set<std::int64_t> senderIds(int vendorId, int productId) = 0;

protected:
  SenderResolving() = default;
  SenderResolving(const SenderResolving&) = default;
  SenderResolving& operator=(const SenderResolving&) = default;
};

/// Answers the same ids for every device.
class StubSenderResolver final : public SenderResolving {
public:
  std::unordered_set<std::int64_t> senderIds(int /*vendorId*/, int /*productId*/) override {
    return ids;
  }

  std::unordered_set<std::int64_t> ids;
};

} // namespace trellivar
