#include "core/json/coding.h"

#include "core/json/quoted.h"

namespace trellivar {

template <> Modifier decode<Modifier>(const JsonReader& reader) {
  const std::string& text = reader.text();
  const auto modifier = Modifier::fromRawValue(text);
  if (!modifier) reader.fail("unknown modifier " + quotedJson(text));
  return *modifier;
}

Json encode(Modifier modifier) { return modifier.rawValue(); }

template <> Key::Kind decode<Key::Kind>(const JsonReader& reader) {
  const std::string& text = reader.text();
  const auto kind = kindFromRawValue(text);
  if (!kind) reader.fail("unknown kind of key " + quotedJson(text));
  return *kind;
}

template <> Key decode<Key>(const JsonReader& reader) {
  Key key{KeyName(reader.member("keyCode").text())};
  if (const auto kind = reader.optionalMember("kind")) key.kind = kind->as<Key::Kind>();
  return key;
}

Json encode(const Key& key) {
  Json json{{"keyCode", key.keyCode.text()}};
  if (key.kind != Key::Kind::keyCode) json["kind"] = rawValue(key.kind);
  return json;
}

template <> Output decode<Output>(const JsonReader& reader) {
  const bool isChord = reader.has("chord");
  const bool isSequence = reader.has("sequence");
  const bool isModifiers = reader.has("modifiers");
  if (isChord + isSequence + isModifiers != 1)
    reader.fail("Invalid number of keys found, expected one.");
  if (isChord) {
    const JsonReader chord = reader.member("chord");
    return {
        Output::Chord{chord.member("modifiers").list<Modifier>(), chord.member("key").as<Key>()}};
  }
  if (isSequence) {
    const JsonReader sequence = reader.member("sequence");
    return {Output::Sequence{sequence.member("keys").list<Key>()}};
  }
  const JsonReader modifiers = reader.member("modifiers");
  return {Output::Modifiers{modifiers.member("_0").list<Modifier>()}};
}

Json encode(const Output& output) {
  struct Encoder {
    Json operator()(const Output::Chord& chord) const {
      return {{"chord", {{"modifiers", encodeList(chord.modifiers)}, {"key", encode(chord.key)}}}};
    }
    Json operator()(const Output::Sequence& sequence) const {
      return {{"sequence", {{"keys", encodeList(sequence.keys)}}}};
    }
    Json operator()(const Output::Modifiers& alone) const {
      return {{"modifiers", {{"_0", encodeList(alone.modifiers)}}}};
    }
  };
  return std::visit(Encoder{}, output.value);
}

template <> KeySignature decode<KeySignature>(const JsonReader& reader) {
  const auto isChord = reader.optionalMember("isChord");
  return {reader.member("codes").list<Key>(), isChord && isChord->boolean()};
}

Json encode(const KeySignature& signature) {
  return {{"codes", encodeList(signature.codes)}, {"isChord", signature.isChord}};
}

template <> PhysicalKey decode<PhysicalKey>(const JsonReader& reader) {
  PhysicalKey key{reader.member("id").integer(),
                  reader.member("row").integer(),
                  reader.member("col").integer(),
                  reader.member("signature").as<KeySignature>(),
                  {}};
  if (const auto alternatives = reader.optionalMember("altSignatures"))
    key.altSignatures = alternatives->list<KeySignature>();
  return key;
}

Json encode(const PhysicalKey& key) {
  Json json{
      {"id", key.id}, {"row", key.row}, {"col", key.col}, {"signature", encode(key.signature)}};
  if (!key.altSignatures.empty()) json["altSignatures"] = encodeList(key.altSignatures);
  return json;
}

template <> KeyLayout decode<KeyLayout>(const JsonReader& reader) {
  return {reader.member("keys").list<PhysicalKey>()};
}

Json encode(const KeyLayout& layout) { return {{"keys", encodeList(layout.keys)}}; }

template <> TrellivarDevice decode<TrellivarDevice>(const JsonReader& reader) {
  return {reader.member("name").text(), reader.member("vendorId").integer(),
          reader.member("productId").integer(), reader.member("layout").as<KeyLayout>()};
}

Json encode(const TrellivarDevice& device) {
  return {{"name", device.name},
          {"vendorId", device.vendorId},
          {"productId", device.productId},
          {"layout", encode(device.layout)}};
}

template <> UUID decode<UUID>(const JsonReader& reader) {
  const auto uuid = UUID::fromText(reader.text());
  if (!uuid) reader.fail("expected a UUID of 36 characters");
  return *uuid;
}

template <> KeyMapping decode<KeyMapping>(const JsonReader& reader) {
  KeyMapping mapping{reader.member("fromKeyId").integer(), reader.member("output").as<Output>(),
                     std::nullopt};
  if (const auto label = reader.optionalMember("label")) mapping.label = label->text();
  return mapping;
}

Json encode(const KeyMapping& mapping) {
  Json json{{"fromKeyId", mapping.fromKeyId}, {"output", encode(mapping.output)}};
  if (mapping.label) json["label"] = *mapping.label;
  return json;
}

template <> Profile decode<Profile>(const JsonReader& reader) {
  return {reader.member("id").as<UUID>(), reader.member("name").text(),
          reader.member("mappings").list<KeyMapping>()};
}

Json encode(const Profile& profile) {
  return {{"id", profile.id.text()},
          {"name", profile.name},
          {"mappings", encodeList(profile.mappings)}};
}

template <> StoredKeySignature decode<StoredKeySignature>(const JsonReader& reader) {
  return {reader.member("keyId").integer(), reader.member("signature").as<KeySignature>()};
}

Json encode(const StoredKeySignature& stored) {
  return {{"keyId", stored.keyId}, {"signature", encode(stored.signature)}};
}

template <> StoredDeviceSignatures decode<StoredDeviceSignatures>(const JsonReader& reader) {
  StoredDeviceSignatures stored{
      reader.member("vendorId").integer(), reader.member("productId").integer(),
      reader.member("keySignatures").list<StoredKeySignature>(), std::nullopt};
  if (const auto modeId = reader.optionalMember("modeId")) stored.modeId = modeId->text();
  return stored;
}

Json encode(const StoredDeviceSignatures& stored) {
  Json json{{"vendorId", stored.vendorId},
            {"productId", stored.productId},
            {"keySignatures", encodeList(stored.keySignatures)}};
  if (stored.modeId) json["modeId"] = *stored.modeId;
  return json;
}

std::string prettyPrinted(const Json& document) {
  constexpr bool escapesNonAscii = false;
  return document.dump(2, ' ', escapesNonAscii, Json::error_handler_t::replace) + '\n';
}

} // namespace trellivar
