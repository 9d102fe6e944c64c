#pragma once

#include "engine/engine_error.h"
#include "engine/remap_engine.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {

/// An engine that remembers what it is told and answers as it is set up to.
class RecordingEngine final : public RemapEngine {
public:
  std::vector<std::vector<MappingSet>> applied; ///< of each call, failed ones left out
  std::vector<std::string> ignores;             ///< "+1:2" and "-1:2", "+1:2 consumer" with a kind
  std::set<std::pair<int, int>> ignored;        ///< identities that are ignored now
  std::vector<std::string> released;            ///< the names that were asked for
  std::vector<std::string> statusNames;         ///< the same for the status

  std::optional<EngineError> applyError;
  std::optional<EngineError> ignoreError;
  std::optional<EngineError> statusError;
  EngineStatus currentStatus;
  /// Answers whether the device has been let go of.
  std::function<bool()> isReleased = [] { return true; };

  void apply(const MappingSet& set) override { applyAll({&set, 1}); }
  void applyAll(std::span<const MappingSet> sets) override {
    if (applyError) throw *applyError; // NOLINT
    applied.emplace_back(sets.begin(), sets.end());
  }
  EngineStatus status(std::string_view trellivarDeviceName) override {
    statusNames.emplace_back(trellivarDeviceName);
    if (statusError) throw *statusError; // NOLINT
    return currentStatus;
  }
  void setDeviceIgnored(bool isIgnored, int vendorId, int productId) override {
    note(isIgnored, vendorId, productId, "");
  }
  void setDeviceIgnored(bool isIgnored, int vendorId, int productId, DeviceKind kind) override {
    static const std::map<DeviceKind, std::string> names{{DeviceKind::keyboard, " keyboard"},
                                                         {DeviceKind::consumer, " consumer"},
                                                         {DeviceKind::pointing, " pointing"}};
    note(isIgnored, vendorId, productId, names.at(kind));
  }
  bool isDeviceReleased(std::string_view named) override {
    released.emplace_back(named);
    return isReleased();
  }
  std::shared_ptr<void> onPadKeysChanged(PadKeyObserver observer) override {
    auto shared = std::make_shared<PadKeyObserver>(std::move(observer));
    padKeyObserver_ = shared;
    return shared;
  }
  /// Tells of the keys of pads that are down now.
  void tell(const std::vector<DeviceKey>& down) {
    if (const auto observer = padKeyObserver_.lock()) (*observer)(down);
  }

private:
  void note(bool isIgnored, int vendorId, int productId, const std::string& kind) {
    ignores.push_back((isIgnored ? "+" : "-") + std::to_string(vendorId) + ":" +
                      std::to_string(productId) + kind);
    if (ignoreError) throw *ignoreError; // NOLINT
    if (isIgnored)
      ignored.emplace(vendorId, productId);
    else
      ignored.erase({vendorId, productId});
  }

  std::weak_ptr<PadKeyObserver> padKeyObserver_;
};

} // namespace trellivar
