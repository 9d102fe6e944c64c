#include "core/known_devices.h"

#include <algorithm>
#include <ranges>

namespace trellivar {

namespace {

Key plain(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }
Key media(std::string_view name) { return {KeyName(name), Key::Kind::consumerKeyCode}; }

KeyLayout rowOfThree(KeySignature first, KeySignature second, KeySignature third) {
  return {{{1, 0, 0, std::move(first), {}},
           {2, 0, 1, std::move(second), {}},
           {3, 0, 2, std::move(third), {}}}};
}

KeyLayout bluetoothPLayout() {
  KeyLayout layout = rowOfThree({{plain("spacebar")}, false}, {{media("volume_decrement")}, false},
                                {{media("volume_increment")}, false});
  layout.keys.front().altSignatures = {{{plain("z"), plain("left_option")}, true}};
  return layout;
}

KeyLayout emptyLayout() { return rowOfThree({}, {}, {}); }

std::vector<KnownDevice> registry() {
  const KeyLayout cable = KnownDevices::copyPasteCutLayout(KeyName("left_control"));
  return {
      {std::string(KnownDevices::padModel),
       {
           {"P",
            {
                {{0x4C4A, 0x4155}, cable, true},
                {{0x04E8, 0x7021}, bluetoothPLayout(), false},
                {{0x05AC, 0x022C}, bluetoothPLayout(), false},
            }},
           {"M", {{{0x05AC, 0x0220}, emptyLayout(), false}}},
           // No identity belongs to R: it is recognised by its name alone.
           {"R", {}},
       }},
  };
}

constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, lowerCase, lowerCase);
}

/// The transport of an identity in any mode, with what it belongs to.
struct Place {
  const KnownDevice* device = nullptr;
  const KnownMode* mode = nullptr;
  const KnownTransport* transport = nullptr;
};

std::optional<Place> findAcrossModes(int vendorId, int productId) {
  for (const KnownDevice& device : KnownDevices::all()) {
    for (const KnownMode& mode : device.modes) {
      if (const auto* found = mode.transport(vendorId, productId))
        return Place{&device, &mode, found};
    }
  }
  return std::nullopt;
}

} // namespace

std::vector<DeviceIdentity> KnownMode::identities() const {
  std::vector<DeviceIdentity> result;
  for (const KnownTransport& transport : transports)
    result.push_back(transport.identity);
  return result;
}

const KnownTransport* KnownMode::transport(int vendorId, int productId) const {
  const auto found =
      std::ranges::find(transports, DeviceIdentity{vendorId, productId}, &KnownTransport::identity);
  return found == transports.end() ? nullptr : &*found;
}

const KnownMode* KnownDevice::primaryMode() const {
  if (const KnownMode* p = mode("P")) return p;
  return modes.empty() ? nullptr : &modes.front();
}

const KnownMode* KnownDevice::mode(std::string_view forProfileName) const {
  const auto found = std::ranges::find(modes, forProfileName, &KnownMode::id);
  return found == modes.end() ? nullptr : &*found;
}

std::vector<KnownTransport> KnownDevice::transports() const {
  const KnownMode* primary = primaryMode();
  return primary ? primary->transports : std::vector<KnownTransport>{};
}

std::vector<DeviceIdentity> KnownDevice::identities() const {
  const KnownMode* primary = primaryMode();
  return primary ? primary->identities() : std::vector<DeviceIdentity>{};
}

bool KnownDevice::matches(int vendorId, int productId) const {
  return transport(vendorId, productId) != nullptr;
}

const KnownTransport* KnownDevice::transport(int vendorId, int productId) const {
  const KnownMode* primary = primaryMode();
  return primary ? primary->transport(vendorId, productId) : nullptr;
}

namespace KnownDevices {

const std::vector<KnownDevice>& all() {
  static const auto& devices = *new std::vector<KnownDevice>(registry());
  return devices;
}

const KnownDevice* known(int vendorId, int productId) {
  const auto found = std::ranges::find_if(
      all(), [&](const KnownDevice& device) { return device.matches(vendorId, productId); });
  return found == all().end() ? nullptr : &*found;
}

const KnownDevice* knownAcrossModes(int vendorId, int productId) {
  const auto place = findAcrossModes(vendorId, productId);
  return place ? place->device : nullptr;
}

bool isKnown(int vendorId, int productId) { return known(vendorId, productId) != nullptr; }

std::optional<Resolution> resolve(int vendorId, int productId, std::string_view name) {
  if (const auto place = findAcrossModes(vendorId, productId))
    return Resolution{place->device, place->mode->id};
  for (const KnownDevice& device : all()) {
    for (const KnownMode& mode : device.modes) {
      if (equalIgnoringCase(name, device.name + "-" + mode.id)) return Resolution{&device, mode.id};
    }
  }
  return std::nullopt;
}

std::optional<KeyLayout> layout(int vendorId, int productId) {
  const KnownDevice* device = known(vendorId, productId);
  if (!device) return std::nullopt;
  return device->transport(vendorId, productId)->layout;
}

std::optional<KeyLayout> layout(int vendorId, int productId, std::string_view name) {
  if (const auto place = findAcrossModes(vendorId, productId)) return place->transport->layout;
  const auto resolution = resolve(vendorId, productId, name);
  if (!resolution) return std::nullopt;
  const KnownMode* mode = resolution->device->mode(resolution->modeId);
  if (mode->transports.empty()) return std::nullopt;
  return mode->transports.front().layout;
}

std::vector<DeviceIdentity> identities(int vendorId, int productId) {
  const KnownDevice* device = known(vendorId, productId);
  return device ? device->identities() : std::vector<DeviceIdentity>{};
}

std::vector<KnownTransport> transports(int vendorId, int productId) {
  const KnownDevice* device = known(vendorId, productId);
  return device ? device->transports() : std::vector<KnownTransport>{};
}

KeyLayout copyPasteCutLayout(KeyName modifier) {
  const auto chord = [&](std::string_view letter) {
    return KeySignature{{plain(letter), {modifier, Key::Kind::keyCode}}, true};
  };
  return rowOfThree(chord("c"), chord("v"), chord("x"));
}

} // namespace KnownDevices

} // namespace trellivar
