#pragma once

#include "core/device_identity.h"
#include "core/key_layout.h"
#include "core/output.h"
#include "core/profile.h"
#include "core/stored_signatures.h"
#include "core/trellivar_device.h"
#include "core/uuid.h"

#include <ostream>

/// How failed checks show the model: names as quoted text, everything that has a JSON form as JSON.
/// Both GoogleTest (`PrintTo`) and RapidCheck (`showValue`) find these by the type's namespace.
namespace trellivar {

void showValue(const KeyName& name, std::ostream& out);
void showValue(Key::Kind kind, std::ostream& out);
void showValue(const Key& key, std::ostream& out);
void showValue(Modifier modifier, std::ostream& out);
void showValue(const Output& output, std::ostream& out);
void showValue(const KeySignature& signature, std::ostream& out);
void showValue(const PhysicalKey& key, std::ostream& out);
void showValue(const KeyLayout& layout, std::ostream& out);
void showValue(const DeviceIdentity& identity, std::ostream& out);
void showValue(const TrellivarDevice& device, std::ostream& out);
void showValue(const UUID& uuid, std::ostream& out);
void showValue(const KeyMapping& mapping, std::ostream& out);
void showValue(const Profile& profile, std::ostream& out);
void showValue(const StoredKeySignature& stored, std::ostream& out);
void showValue(const StoredDeviceSignatures& stored, std::ostream& out);

template <class T>
concept Shown = requires(const T& value, std::ostream& out) { showValue(value, out); };

template <Shown T> void PrintTo(const T& value, std::ostream* out) { showValue(value, *out); }

} // namespace trellivar
