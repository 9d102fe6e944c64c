#pragma once

#include "core/mode_sets.h"
#include "tests/journeys/user.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// What always holds while people use the application, each as a sentence about what is wrong;
/// empty when nothing is.
namespace trellivar::invariants {

/// What the person has begun besides what the models tell.
struct Activities {
  std::shared_ptr<DiscoveryViewModel> sheet;
  std::size_t captureOfSheet = 0;   ///< the number of its newest capture
  DeviceIdentity identityOfCapture; ///< of this capture
  int begun = 0;                    ///< activities that tell of their end
  bool isMixedUp = false;           ///< something was begun while something else was under way
};

inline bool isSheetListening(const Activities& now, const Application& app) {
  return now.sheet && app.capturer->unanswered.contains(now.captureOfSheet);
}

inline std::string filesHoldTheModels(User& user) {
  if (user.storedProfiles() != *user.profiles().profiles())
    return "profiles.json does not hold the profiles";
  const Profile* active = user.profiles().active();
  if (!active || *active != *user.mapping().profile())
    return "the profile that is edited is not the active one of the list";
  return "";
}

inline TrellivarDevice withoutAlternatives(TrellivarDevice device) {
  for (PhysicalKey& key : device.layout.keys)
    key.altSignatures.clear();
  return device;
}

/// As it would be after a new start. (Factory keys that are stored along with a learned one lose
/// their alternatives then, which nothing looks at.)
inline std::string deviceCarriesWhatIsStored(User& user) {
  const TrellivarDevice& device = *user.mapping().device();
  TrellivarDevice fresh{device.name, device.vendorId, device.productId, {}};
  if (auto layout = KnownDevices::layout(device.vendorId, device.productId, device.name))
    fresh.layout = *std::move(layout);
  else
    for (const int id : desk::Pad::keyIds)
      fresh.layout.keys.push_back({.id = id, .row = 0, .col = id - 1, .signature = {}});
  fresh = fresh.applyingStoredSignatures(user.storedSignatures());
  if (withoutAlternatives(std::move(fresh)) != withoutAlternatives(device))
    return "the device does not carry what is stored about it";
  return "";
}

/// Labels do not matter to it, and of what the pad holds it learns when the last write has ended.
inline std::string engineRemapsWhatTheModelsHold(User& user) {
  auto expected =
      setsForAllModes(*user.mapping().device(), *user.profiles().profiles(),
                      user.storedSignatures(), user.root().portableWrite().portableModes());
  auto applied = user.app().engine->applied;
  const bool isWriting = user.root().portableWrite().status()->is<WriteStatus::Writing>();
  for (auto* sets : {&expected, &applied}) {
    for (MappingSet& set : *sets) {
      for (KeyMapping& mapping : set.profile.mappings)
        mapping.label.reset();
    }
    if (isWriting) std::erase_if(*sets, [](const MappingSet& set) { return set.portable; });
  }
  return expected == applied ? "" : "the engine does not remap what the models hold";
}

inline std::string exemptionsHaveAReason(User& user, const Activities& now) {
  std::set<DeviceIdentity> reasons;
  if (*user.mapping().isLearning()) reasons.insert(user.mapping().device()->identity());
  if (isSheetListening(now, user.app())) reasons.insert(now.identityOfCapture);
  const auto& exempted = user.app().engine->exempted;
  if (!std::ranges::includes(reasons, exempted)) return "a pad is exempted without a reason";
  if (!now.isMixedUp && exempted != reasons) return "a pad that is listened to is not exempted";
  return "";
}

inline std::string atMostOneCaptureRuns(User& user) {
  const WatchedCapturer& capturer = *user.app().capturer;
  const auto alive = user.machine.platform.liveReferences();
  const auto managers = std::ranges::count_if(alive, [](const std::string& line) {
    return line.find("IOHIDManager") != std::string::npos;
  });
  if (managers != (capturer.isRunning() ? 1 : 0))
    return std::to_string(managers) + " HID managers stand";
  if (capturer.unanswered.size() > 1) return "a capture that was cut short has not told of it";
  return "";
}

inline std::string inputFlows(User& user) {
  if (user.machine.desk.events().isFrozen()) return "no input reaches the applications";
  if (user.machine.platform.taps() > 1) return "several taps stand";
  return "";
}

inline std::string settingsAreKept(User& user) {
  const SettingsStore& settings = *user.app().settings;
  const MemoryUserDefaults& kept = *user.defaults;
  if (L10n::current() != *settings.language()) return "the texts are in another language";
  if (kept.string("appLanguage").value_or("en") != settings.language()->rawValue())
    return "the language is not kept";
  if (kept.string("appAppearance").value_or("system") != rawValue(*settings.appearance()))
    return "the appearance is not kept";
  if (kept.boolean("startAtLogin") != *settings.startAtLogin()) return "start at login is not kept";
  return "";
}

/// Of a sheet that has just been saved. What was stored earlier about the same identity in another
/// mode goes first.
inline std::string deviceCarriesWhatWasCaptured(User& user, const DiscoveryViewModel& sheet) {
  const DeviceIdentity identity = **sheet.deviceIdentity();
  std::vector<StoredDeviceSignatures> records = user.storedSignatures();
  std::erase_if(records, [&](const StoredDeviceSignatures& record) {
    return DeviceIdentity{record.vendorId, record.productId} != identity;
  });
  const auto kept = std::ranges::find(records, sheet.modeId(), &StoredDeviceSignatures::modeId);
  if (kept == records.end()) return "nothing is stored about the mode";
  std::map<int, KeySignature> stored;
  for (const StoredKeySignature& key : kept->keySignatures)
    stored.emplace(key.keyId, key.signature);
  if (stored != *sheet.captured()) return "what was captured is not what is stored";

  const TrellivarDevice& device = *user.mapping().device();
  if (device.identity() != identity || kept != records.begin()) return "";
  std::map<int, KeySignature> carried;
  for (const PhysicalKey& key : device.layout.keys)
    carried.emplace(key.id, key.signature);
  for (const auto& [keyId, signature] : *sheet.captured()) {
    if (carried[keyId] != signature) return "the device does not carry what was captured";
  }
  return "";
}

/// With nobody pressing anything, and some time to notice it.
inline std::string nothingIsDown(User& user) {
  if (!user.held().empty()) return "held down by nobody: " + user.held();
  if (!user.root().pressedKeys().ids()->empty()) return "a keycap is down that nobody presses";
  return "";
}

/// The first that does not hold.
inline std::string broken(User& user, const Activities& now) {
  std::string problem = filesHoldTheModels(user);
  if (problem.empty()) problem = deviceCarriesWhatIsStored(user);
  if (problem.empty()) problem = engineRemapsWhatTheModelsHold(user);
  if (problem.empty()) problem = exemptionsHaveAReason(user, now);
  if (problem.empty()) problem = atMostOneCaptureRuns(user);
  if (problem.empty()) problem = inputFlows(user);
  if (problem.empty()) problem = settingsAreKept(user);
  return problem;
}

} // namespace trellivar::invariants
