#pragma once

#include "engine/connected_device.h"
#include "tests/support/printing.h"

#include <ostream>
#include <string>
#include <vector>

/// The words in which tests speak about attached devices, and how failed checks show them.
namespace trellivar {

inline void PrintTo(const ConnectedDevice& device, std::ostream* out) {
  *out << '"' << device.name << "\" ";
  showValue(device.id(), *out);
}

namespace words {

using Devices = std::vector<ConnectedDevice>;

inline ConnectedDevice device(const std::string& name, int vendorId, int productId) {
  return {name, name, vendorId, productId};
}

inline const ConnectedDevice ordinaryKeyboard = device("Keyboard", 0x05AC, 0x024F);
inline const ConnectedDevice onCable = device("Orlo3", 0x4C4A, 0x4155);
inline const ConnectedDevice overBluetooth = device("Any name", 0x04E8, 0x7021);
inline const ConnectedDevice inModeM = device("Orlo3", 0x05AC, 0x0220);
/// Known by its name alone.
inline const ConnectedDevice inModeR = device("orlo3-r", 7, 9);

} // namespace words
} // namespace trellivar
