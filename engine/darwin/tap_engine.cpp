#include "engine/darwin/tap_engine.h"

#include "core/bound_layouts.h"
#include "core/known_devices.h"
#include "engine/darwin/event_translation.h"
#include "engine/engine_error.h"
#include "engine/log.h"
#include "engine/modifier_flags.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>
#include <utility>

namespace trellivar {

namespace {

constexpr CGEventMask tapMask =
    CGEventMaskBit(kCGEventKeyDown) | CGEventMaskBit(kCGEventKeyUp) |
    CGEventMaskBit(kCGEventFlagsChanged) | CGEventMaskBit(darwin::systemDefinedType) |
    CGEventMaskBit(kCGEventOtherMouseDown) | CGEventMaskBit(kCGEventOtherMouseUp);
static_assert(tapMask == 0x6005C00);

/// No exception may leave a function that the system calls.
CGEventRef tapped(CGEventTapProxy /*proxy*/, CGEventType type, CGEventRef event,
                  void* engine) noexcept {
  return static_cast<TapEngine*>(engine)->handle(type, event);
}

/// The compiler of the table takes it for granted that a layout of its own names each key once.
void lint(const MappingSet& set) {
  if (set.portable || KnownDevices::isKnown(set.device.vendorId, set.device.productId)) return;
  std::unordered_set<int> seen;
  for (const PhysicalKey& key : set.device.layout.keys) {
    if (!seen.insert(key.id).second)
      throw EngineError::lintFailed("The layout of " + set.device.name + " names key " +
                                    std::to_string(key.id) + " twice.");
  }
}

} // namespace

TapEngine::TapEngine(MainQueue& queue, std::shared_ptr<SenderResolving> resolver,
                     std::shared_ptr<HotplugWatching> hotplug, Check trustChecker,
                     Check inputMonitoringChecker)
    : queue_(queue),
      resolver_(std::move(resolver)),
      hotplug_(std::move(hotplug)),
      trustChecker_(std::move(trustChecker)),
      inputMonitoringChecker_(std::move(inputMonitoringChecker)) {
  if (!hotplug_) return;
  hotplugCallback_ = hotplug_->onDevicesChanged([this] { resolveSenders(); });
  hotplug_->start();
}

TapEngine::~TapEngine() {
  disarmDeadlineTimer();
  removeTap();
}

void TapEngine::startTap() {
  if (!trustChecker_()) return removeTap();
  if (tapPort_ && CFMachPortIsValid(tapPort_.get()) == 0) removeTap();
  if (!tapPort_ && !installTap()) return;
  if (!CGEventTapIsEnabled(tapPort_.get())) CGEventTapEnable(tapPort_.get(), true);
}

bool TapEngine::installTap() {
  auto port = darwin::CFRef<CFMachPortRef>::adopt(CGEventTapCreate(
      kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, tapMask, tapped, this));
  if (!port) return false;
  auto source = darwin::CFRef<CFRunLoopSourceRef>::adopt(
      CFMachPortCreateRunLoopSource(kCFAllocatorDefault, port.get(), 0));
  if (!source) return false;
  CFRunLoopAddSource(CFRunLoopGetMain(), source.get(), kCFRunLoopCommonModes);
  tapPort_ = std::move(port);
  tapSource_ = std::move(source);
  debugLog("tap installed");
  return true;
}

/// What happens from now on goes by unseen, so nothing is remembered.
void TapEngine::removeTap() {
  if (!tapPort_) return;
  expectMissedReleases();
  keys_ = {};
  underWay_ = 0;
  processor_.setTable(processor_.table());
  CGEventTapEnable(tapPort_.get(), false);
  CFRunLoopRemoveSource(CFRunLoopGetMain(), tapSource_.get(), kCFRunLoopCommonModes);
  CFMachPortInvalidate(tapPort_.get());
  tapSource_.reset();
  tapPort_.reset();
  debugLog("tap removed");
}

void TapEngine::apply(const MappingSet& set) { applyAll({&set, 1}); }

void TapEngine::applyAll(std::span<const MappingSet> sets) {
  std::ranges::for_each(sets, lint);
  MappingTable table = MappingTable::compile(sets);
  appliedIdentities_.clear();
  for (const MappingSet& set : sets) {
    for (const BoundLayout& bound : boundLayouts(set.device))
      appliedIdentities_.insert(bound.identity);
  }
  processor_.setTable(std::move(table));
  resolveSenders();
}

EngineStatus TapEngine::status(std::string_view /*trellivarDeviceName*/) {
  const auto isBound = [&](const auto& sender) {
    return processor_.table().identities.contains(sender.second);
  };
  return {trustChecker_(), inputMonitoringChecker_(),
          std::ranges::any_of(processor_.senders(), isBound)};
}

void TapEngine::setDeviceIgnored(bool ignored, int vendorId, int productId) {
  TapProcessor::PausedDevices paused = processor_.paused();
  if (ignored)
    paused.insert({vendorId, productId});
  else
    paused.erase({vendorId, productId});
  processor_.setPaused(std::move(paused));
  settle();
}

bool TapEngine::isDeviceReleased(std::string_view /*named*/) { return true; }

std::shared_ptr<void> TapEngine::onPadKeysChanged(PadKeyObserver observer) {
  return padKeyTeller_.observe(std::move(observer));
}

void TapEngine::resolveSenders() {
  TapProcessor::Senders senders;
  for (const DeviceIdentity identity : appliedIdentities_) {
    for (const std::int64_t id : resolver_->senderIds(identity.vendorId, identity.productId))
      senders.emplace(id, identity);
  }
  processor_.setSenders(std::move(senders));
  settle();
}

CGEventRef TapEngine::handle(CGEventType type, CGEventRef event) {
  if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
    if (tapPort_) {
      expectMissedReleases();
      startTap();
    }
    return event;
  }
  if (darwin::isOwn(event)) {
    underWay_ = std::max(underWay_ - 1, 0);
    return event;
  }
  const std::int64_t sender = darwin::senderOf(event);
  if (!processor_.senders().contains(sender)) {
    if (type == kCGEventFlagsChanged) noteForeignModifier(event, sender);
    return event;
  }
  auto described = darwin::translate(type, event, sender);
  if (!described) return event;
  if (type == kCGEventFlagsChanged) {
    // Pressed before its sender was known to be a pad's.
    if (isForeignRelease(event, *described)) return event;
    if (isReleaseInDisguise(*described)) described->kind = TapEvent::Kind::keyUp;
  }

  const Instant now = queue_.now();
  if (isDown(described->kind) && !darwin::isRepeat(type, event))
    releaseMissed(*described, now);
  else if (!isKnownToBeDown(*described))
    return event; // began where the tap could not see it, and ends as it began
  else if (isDown(described->kind) && isTakenBack(*described))
    return nullptr;
  CGEventRef result = carryOut(processor_.process(*described, now), event, *described);
  padKeyTeller_.keysMayHaveChanged();
  armDeadlineTimer();
  return result;
}

/// Events have gone past a tap that was disabled. What is held back is given as a short press,
/// since its release may have been among them; so may that of a key that applications know as
/// another.
void TapEngine::expectMissedReleases() {
  underWay_ = 0;
  foreignModifiers_.clear();
  const PadKeys::Keys before(keys_.all());
  replayAll(processor_.flush(Instant::max()));
  for (const PadKeys::Key& earlier : before) {
    PadKeys::Key* key = keys_.find(earlier.sender, earlier.name);
    key->isUncertain = true;
    if (earlier.deliveredAs == key->name) continue;
    releaseDelivered(*key);
    key->deliveredAs.reset();
  }
  padKeyTeller_.keysMayHaveChanged();
  armDeadlineTimer();
}

/// A key that is pressed afresh while it counts as down was released where the tap could not see
/// it, as happens while the system has disabled it. Without that release the press would be taken
/// for a repetition and lost.
void TapEngine::releaseMissed(const TapEvent& press, Instant now) {
  if (!isKnownToBeDown(press)) return;
  TapEvent release = press;
  release.kind = releaseOf(press.kind);
  replayAll(processor_.process(release, now));
  if (const PadKeys::Key* key = keys_.find(press.senderId, press.name)) {
    releaseDelivered(*key);
    keys_.release(press.senderId, press.name);
  }
}

/// A modifier of another keyboard has changed: it was up and is down now, or the reverse.
void TapEngine::noteForeignModifier(CGEventRef event, std::int64_t sender) {
  const auto described = darwin::translate(kCGEventFlagsChanged, event, sender);
  if (!described) return;
  if (!isDown(described->kind)) return forgetModifier(described->name);
  if (isForeignRelease(event, *described)) return;
  // So many are of keyboards that have gone; starting over keeps this free of allocations.
  if (foreignModifiers_.size() == mostForeignModifiers) foreignModifiers_.clear();
  foreignModifiers_.push_back({sender, described->name});
}

/// An event says that it is up, and the flags speak for all keyboards: also for one that has gone
/// with the modifier held, whose release never comes.
void TapEngine::forgetModifier(KeyName modifier) {
  foreignModifiers_.eraseUnorderedIf([&](const auto& each) { return each.name == modifier; });
}

/// Takes note of the release. Should it say that the modifier is down because a pad holds it too,
/// of which applications are not told, then for them it is up: the pad's own release will never
/// reach them.
bool TapEngine::isForeignRelease(CGEventRef event, const TapEvent& described) {
  const ForeignModifier modifier{described.senderId, described.name};
  ForeignModifier* const known = std::ranges::find(foreignModifiers_, modifier);
  if (known == foreignModifiers_.end()) return false;
  foreignModifiers_.eraseUnordered(known);
  if (isDown(described.kind) && isHeldInSecretOnly(described.name))
    CGEventSetFlags(event, modifier_flags::releasing(CGEventGetFlags(event), described.name));
  return true;
}

/// Pads hold it, but no key that applications know as it is down.
bool TapEngine::isHeldInSecretOnly(KeyName modifier) const {
  const auto& keys = keys_.all();
  return std::ranges::find(keys, modifier, &PadKeys::Key::name) != keys.end() &&
         std::ranges::find(keys, modifier, &PadKeys::Key::deliveredAs) == keys.end() &&
         std::ranges::find(foreignModifiers_, modifier, &ForeignModifier::name) ==
             foreignModifiers_.end();
}

bool TapEngine::isHeldElsewhere(const TapEvent& event) const {
  return std::ranges::any_of(foreignModifiers_,
                             [&](const auto& other) { return other.name == event.name; }) ||
         std::ranges::any_of(keys_.all(), [&](const PadKeys::Key& key) {
           return key.name == event.name && key.sender != event.senderId;
         });
}

/// A modifier that changes while it is down comes up, even if the flags say that it is down, when
/// it is down on another keyboard.
bool TapEngine::isReleaseInDisguise(const TapEvent& event) {
  const PadKeys::Key* key = keys_.find(event.senderId, event.name);
  return isDown(event.kind) && key && !key->isUncertain && isHeldElsewhere(event);
}

bool TapEngine::isKnownToBeDown(const TapEvent& event) {
  return keys_.find(event.senderId, event.name) ||
         processor_.countsAsDown(event.senderId, event.name);
}

/// A change has released the key for the applications, or made the processor forget that it acted,
/// while it is held. Until it is pressed anew it does nothing.
bool TapEngine::isTakenBack(const TapEvent& event) {
  const PadKeys::Key* key = keys_.find(event.senderId, event.name);
  return key && !key->deliveredAs && processor_.handles(event.senderId) &&
         !processor_.countsAsDown(event.senderId, event.name);
}

CGEventRef TapEngine::carryOut(const TapActions& actions, CGEventRef event,
                               const TapEvent& described) {
  KeyName deliveredAs = described.name;
  if (isDown(described.kind))
    keys_.press(described.senderId, processor_.senders().at(described.senderId), described.name);
  for (const TapAction& action : actions) {
    if (const auto* rewrite = std::get_if<TapAction::Rewrite>(&action.value)) {
      if (darwin::rewriteModifier(event, rewrite->name, isDown(described.kind)))
        deliveredAs = rewrite->name;
    } else if (const auto* made = std::get_if<TapAction::Post>(&action.value)) {
      underWay_ += darwin::post(*made->events, {});
    } else if (const auto* held = std::get_if<TapAction::Replay>(&action.value)) {
      replay(held->events);
    }
  }
  bool passes = letsThrough(actions);
  if (PadKeys::Key* key = keys_.find(described.senderId, described.name)) {
    if (isDown(described.kind)) {
      if (passes) key->deliveredAs = deliveredAs;
    } else {
      // A release must not overtake a press that is still on its way.
      if (key->isPosted && underWay_ > 0) passes = false;
      if (!passes) releaseDelivered(*key);
      keys_.release(described.senderId, described.name);
    }
  }
  return passes ? event : nullptr;
}

/// Gives the applications what was held back, as it would have come.
void TapEngine::replay(const TapEvents& events) {
  for (const TapEvent& event : events) {
    if (!isDown(event.kind))
      keys_.release(event.senderId, event.name);
    else if (PadKeys::Key* key = keys_.find(event.senderId, event.name)) {
      key->deliveredAs = event.name;
      key->isPosted = true;
    }
  }
  underWay_ += darwin::post({events.begin(), events.size()}, heldModifiers());
}

/// Of the actions, those that give something back.
void TapEngine::replayAll(const TapActions& actions) {
  for (const TapAction& action : actions) {
    if (const auto* held = std::get_if<TapAction::Replay>(&action.value)) replay(held->events);
  }
}

void TapEngine::releaseDelivered(const PadKeys::Key& key) {
  if (!key.deliveredAs) return;
  const std::array release{TapEvent{0, TapEvent::Kind::keyUp, *key.deliveredAs}};
  underWay_ += darwin::post(release, heldModifiers());
}

/// After a change of what is remapped.
void TapEngine::settle() {
  replayAll(processor_.flushUnhandled());
  releaseWhatWouldStay();
  padKeyTeller_.keysMayHaveChanged();
  armDeadlineTimer();
}

/// Of the keys that are down, releases those whose own release will not come or will not reach the
/// applications as the key that they know.
void TapEngine::releaseWhatWouldStay() {
  for (const PadKeys::Key& key : PadKeys::Keys(keys_.all())) {
    const bool isKnown = processor_.senders().contains(key.sender);
    const bool isGone = !isKnown && !isAttached(key);
    const bool stays = isGone || processor_.releasedAs(key.sender, key.name) != key.deliveredAs;
    if (stays) releaseDelivered(key);
    if (!isKnown)
      keys_.release(key.sender, key.name);
    else if (stays)
      keys_.find(key.sender, key.name)->deliveredAs.reset();
  }
}

bool TapEngine::isAttached(const PadKeys::Key& key) {
  return resolver_->senderIds(key.device.vendorId, key.device.productId).contains(key.sender);
}

/// The modifiers that the session holds down, with the keys of pads as applications know them.
darwin::ModifierContext TapEngine::heldModifiers() const {
  darwin::ModifierContext context{.ofSession = true};
  for (const PadKeys::Key& key : keys_.all()) {
    if (key.deliveredAs == key.name) continue;
    context.hidden.push_back(key.name);
    if (key.deliveredAs) context.shown.push_back(*key.deliveredAs);
  }
  return context;
}

void TapEngine::disarmDeadlineTimer() {
  if (deadlineTimer_) CFRunLoopTimerInvalidate(deadlineTimer_.get());
  deadlineTimer_.reset();
  armedFor_.reset();
}

void TapEngine::armDeadlineTimer() {
  const auto deadline = processor_.nextDeadline();
  if (deadline == armedFor_) return;
  disarmDeadlineTimer();
  if (!deadline) return;
  CFRunLoopTimerContext context{};
  context.info = this;
  const Seconds delay = *deadline - queue_.now();
  deadlineTimer_ = darwin::CFRef<CFRunLoopTimerRef>::adopt(CFRunLoopTimerCreate(
      kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + delay.count(), 0, 0, 0,
      [](CFRunLoopTimerRef, void* engine) noexcept { static_cast<TapEngine*>(engine)->flush(); },
      &context));
  CFRunLoopAddTimer(CFRunLoopGetMain(), deadlineTimer_.get(), kCFRunLoopCommonModes);
  armedFor_ = deadline;
}

void TapEngine::flush() {
  disarmDeadlineTimer();
  replayAll(processor_.flush(queue_.now()));
  armDeadlineTimer();
}

} // namespace trellivar
