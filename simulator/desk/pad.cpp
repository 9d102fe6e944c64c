#include "simulator/desk/pad.h"

#include "core/key_table.h"
#include "core/known_devices.h"
#include "simulator/desk/key_codes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellivar::desk {

namespace {

const KnownDevice& model() { return KnownDevices::all().front(); }

const KnownTransport* transport(std::string_view mode, bool isUSB) {
  const KnownMode* known = model().mode(mode);
  if (!known) return nullptr;
  const auto found = std::ranges::find(known->transports, isUSB, &KnownTransport::isUSB);
  return found == known->transports.end() ? nullptr : &*found;
}

/// An identity that the registry does not know: each link has a maker's id, each mode a product.
DeviceIdentity unregistered(std::string_view mode, bool isUSB) {
  const int letter = static_cast<unsigned char>(mode.front());
  return isUSB ? DeviceIdentity{0x4C4A, 0x4100 + letter} : DeviceIdentity{0x04E8, 0x7000 + letter};
}

/// What the pad sends where the registry knows no layout.
std::vector<std::string_view> unregisteredCodes(std::string_view mode, int key) {
  static constexpr std::array<std::string_view, 3> digits{"1", "2", "3"};
  static constexpr std::array<std::string_view, 3> controls{"return_or_enter", "tab", "escape"};
  const auto index = static_cast<std::size_t>(key - 1);
  if (mode == "R") return {controls.at(index)};
  return {"left_option", digits.at(index)};
}

KeyName namedByFirmware(const std::string& name) {
  for (const auto& row : keytable::keys) {
    if (row.firmware.name == name) return KeyName{row.name};
  }
  for (const auto& row : keytable::modifiers) {
    if (row.alone.name == name || row.combined.name == name) return KeyName{row.name};
  }
  return {};
}

} // namespace

std::string Pad::name() const {
  const bool isRegistered =
      identity_ && KnownDevices::knownAcrossModes(identity_->vendorId, identity_->productId);
  return isRegistered ? model().name : model().name + "-" + mode_;
}

void Pad::setMode(std::string_view mode) {
  if (mode == mode_) return;
  disconnect();
  mode_ = mode;
  if (ownIdentity_)
    connectAs(*ownIdentity_);
  else
    connect(link_);
}

void Pad::connect(Link link) {
  disconnect();
  ownIdentity_.reset();
  link_ = link;
  if (link == Link::away) return;
  const bool isUSB = link == Link::usb;
  const KnownTransport* known = transport(mode_, isUSB);
  attach(known ? known->identity : unregistered(mode_, isUSB), isUSB);
}

void Pad::connectAs(DeviceIdentity identity) {
  disconnect();
  bool isUSB = false;
  for (const KnownMode& mode : model().modes) {
    const KnownTransport* known = mode.transport(identity.vendorId, identity.productId);
    if (known) isUSB = known->isUSB;
  }
  ownIdentity_ = identity;
  link_ = isUSB ? Link::usb : Link::bluetooth;
  attach(identity, isUSB);
}

void Pad::disconnect() {
  if (device_ != 0) desk_.detach(std::exchange(device_, 0));
  identity_.reset();
  down_.clear();
}

void Pad::attach(DeviceIdentity identity, bool isUSB) {
  using Description = DeviceDescription;
  identity_ = identity;
  device_ = desk_.attach({.product = name(),
                          .identity = identity,
                          .isUSB = isUSB,
                          .interfaces = {{Description::keyboard},
                                         {Description::consumerControl},
                                         {Description::mouse}},
                          .calloutPath = isUSB && calloutPath_ ? calloutPath_() : ""});
  sentUntil_ = desk_.queue().now();
}

std::vector<KeyName> Pad::factoryCodes(int key) const {
  std::vector<KeyName> result;
  const KnownTransport* known = transport(mode_, link_ == Link::usb);
  if (identity_ && known && known->identity != *identity_)
    known = model().transport(identity_->vendorId, identity_->productId);
  const auto index = static_cast<std::size_t>(key - 1);
  if (known && !known->layout.keys.at(index).signature.codes.empty()) {
    const PhysicalKey& physical = known->layout.keys[index];
    const bool alternative = isAlternative_ && !physical.altSignatures.empty();
    const auto& signature = alternative ? physical.altSignatures.front() : physical.signature;
    for (const Key& code : signature.codes)
      result.push_back(code.keyCode);
  } else {
    for (const std::string_view name : unregisteredCodes(mode_, key))
      result.emplace_back(name);
  }
  // A report lists the modifiers before the keys.
  std::ranges::stable_partition(
      result, [](KeyName code) { return keyCodes(code)->family == KeyCodes::Family::modifier; });
  return result;
}

void Pad::press(int key) {
  if (device_ == 0 || down_.contains(key)) return;
  const auto macro = macros_ && link_ == Link::bluetooth ? macros_(mode_, key) : std::nullopt;
  if (macro) {
    down_[key] = {};
    play(*macro);
    return;
  }
  const auto& codes = down_[key] = factoryCodes(key);
  for (const KeyName code : codes)
    later(codeGap, code, true);
}

void Pad::release(int key) {
  const auto found = down_.find(key);
  if (found == down_.end()) return;
  auto codes = std::move(found->second);
  down_.erase(found);
  std::ranges::reverse(codes);
  for (const KeyName code : codes)
    later(codeGap, code, false);
}

/// The first code goes out at once, each further one that long after the one before.
void Pad::later(Seconds after, KeyName code, bool down) {
  const Instant now = desk_.queue().now();
  const Instant at = sentUntil_ < now ? now : sentUntil_;
  sentUntil_ = at + after;
  desk_.queue()
      .asyncAfter(at - now,
                  [&desk = desk_, device = device_, code, down] {
                    if (down)
                      desk.press(device, code);
                    else
                      desk.release(device, code);
                  })
      .detach();
}

void Pad::play(const std::vector<MacroEvent>& macro) {
  for (const MacroEvent& step : macro) {
    if (const auto* wait = std::get_if<MacroEvent::Wait>(&step.value)) {
      sentUntil_ = std::max(sentUntil_, desk_.queue().now()) + Seconds(wait->ms / 1000.0);
    } else if (const auto* down = std::get_if<MacroEvent::Down>(&step.value)) {
      later(Seconds::zero(), namedByFirmware(down->k), true);
    } else if (const auto* up = std::get_if<MacroEvent::Up>(&step.value)) {
      later(Seconds::zero(), namedByFirmware(up->k), false);
    }
  }
}

} // namespace trellivar::desk
