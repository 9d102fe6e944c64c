#pragma once

#include "core/json/json_reader.h"
#include "core/profile.h"
#include "core/stored_signatures.h"
#include "core/trellivar_device.h"

#include <string>

/// The JSON forms of the model, in both directions. Member names are those of the fields; optional
/// fields are left out when unset and read as unset when missing or null. These forms stand in
/// people's files: never change what is written, only add to what is read.
namespace trellivar {

template <> Modifier decode<Modifier>(const JsonReader& reader);
template <> Key decode<Key>(const JsonReader& reader);
template <> Output decode<Output>(const JsonReader& reader);
template <> KeySignature decode<KeySignature>(const JsonReader& reader);
template <> PhysicalKey decode<PhysicalKey>(const JsonReader& reader);
template <> KeyLayout decode<KeyLayout>(const JsonReader& reader);
template <> TrellivarDevice decode<TrellivarDevice>(const JsonReader& reader);
template <> KeyMapping decode<KeyMapping>(const JsonReader& reader);
template <> Profile decode<Profile>(const JsonReader& reader);
template <> StoredKeySignature decode<StoredKeySignature>(const JsonReader& reader);
template <> StoredDeviceSignatures decode<StoredDeviceSignatures>(const JsonReader& reader);

Json encode(Modifier modifier);
Json encode(const Key& key);
Json encode(const Output& output);
Json encode(const KeySignature& signature);
Json encode(const PhysicalKey& key);
Json encode(const KeyLayout& layout);
Json encode(const TrellivarDevice& device);
Json encode(const KeyMapping& mapping);
Json encode(const Profile& profile);
Json encode(const StoredKeySignature& stored);
Json encode(const StoredDeviceSignatures& stored);

template <class List> Json encodeList(const List& items) {
  Json list = Json::array();
  for (const auto& item : items)
    list.push_back(encode(item));
  return list;
}

/// The text of a data file: pretty-printed, keys sorted, a newline at the end. What is not valid
/// UTF-8 in a text of the model becomes U+FFFD, so that saving never fails for it.
std::string prettyPrinted(const Json& document);

} // namespace trellivar
