#pragma once

#include "core/key_layout.h"
#include "core/output.h"
#include "engine/device_key_event.h"

#include <optional>
#include <span>

/// What a capture of live input means. Pure.
namespace trellivar::CaptureInterpreter {

/// The signature of the pad key that was pressed: the distinct keys that the pad sent, in order of
/// arrival; a chord when more than one of them was down at once. Events of other devices are
/// ignored.
KeySignature signature(std::span<const DeviceKeyEvent> from, int vendorId, int productId);

/// The output that was pressed on the user's own keyboard; the events of the pad, with the given
/// ids, are ignored. None when nothing usable was pressed.
std::optional<Output> output(std::span<const DeviceKeyEvent> from, int excludingVendorId,
                             int productId);

} // namespace trellivar::CaptureInterpreter
