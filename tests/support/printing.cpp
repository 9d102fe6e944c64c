#include "tests/support/printing.h"

#include "core/json/coding.h"

namespace trellivar {

namespace {

void showJson(const Json& json, std::ostream& out) {
  out << json.dump(-1, ' ', true, Json::error_handler_t::replace);
}

} // namespace

void showValue(const KeyName& name, std::ostream& out) { showJson(name.text(), out); }
void showValue(Key::Kind kind, std::ostream& out) { out << rawValue(kind); }
void showValue(const DeviceIdentity& identity, std::ostream& out) {
  out << '(' << identity.vendorId << ", " << identity.productId << ')';
}
void showValue(const UUID& uuid, std::ostream& out) { out << uuid.text(); }

void showValue(const Key& key, std::ostream& out) { showJson(encode(key), out); }
void showValue(Modifier modifier, std::ostream& out) { showJson(encode(modifier), out); }
void showValue(const Output& output, std::ostream& out) { showJson(encode(output), out); }
void showValue(const KeySignature& signature, std::ostream& out) {
  showJson(encode(signature), out);
}
void showValue(const PhysicalKey& key, std::ostream& out) { showJson(encode(key), out); }
void showValue(const KeyLayout& layout, std::ostream& out) { showJson(encode(layout), out); }
void showValue(const TrellivarDevice& device, std::ostream& out) { showJson(encode(device), out); }
void showValue(const KeyMapping& mapping, std::ostream& out) { showJson(encode(mapping), out); }
void showValue(const Profile& profile, std::ostream& out) { showJson(encode(profile), out); }
void showValue(const StoredKeySignature& stored, std::ostream& out) {
  showJson(encode(stored), out);
}
void showValue(const StoredDeviceSignatures& stored, std::ostream& out) {
  showJson(encode(stored), out);
}

} // namespace trellivar
