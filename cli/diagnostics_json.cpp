#include "cli/diagnostics_json.h"

#include "core/json/quoted.h"

#include <map>
#include <string>
#include <unordered_set>

namespace trellivar {

namespace {

void refuseRepeatedKeyIds(const KeyLayout& layout, const JsonReader& device) {
  std::unordered_set<int> seen;
  for (std::size_t i = 0; i < layout.keys.size(); ++i) {
    const int id = layout.keys[i].id;
    if (seen.insert(id).second) continue;
    throw DecodingError::atPath(device.path() + ".layout.keys[" + std::to_string(i) + "].id",
                                "key " + std::to_string(id) + " is there twice");
  }
}

} // namespace

template <> DeviceIdentity decode<DeviceIdentity>(const JsonReader& reader) {
  return {reader.member("vendorId").integer(), reader.member("productId").integer()};
}

template <> TapEvent decode<TapEvent>(const JsonReader& reader) {
  const JsonReader kindReader = reader.member("kind");
  const std::string& kindText = kindReader.text();
  const auto kind = tapEventKindFromRawValue(kindText);
  if (!kind) kindReader.fail("unknown kind of event " + quotedJson(kindText));
  return {reader.member("sender").integer64(), *kind, KeyName(reader.member("name").text())};
}

template <> MappingSet decode<MappingSet>(const JsonReader& reader) {
  const JsonReader device = reader.member("device");
  const auto portable = reader.optionalMember("portable");
  MappingSet set{device.as<TrellivarDevice>(), reader.member("profile").as<Profile>(),
                 portable && portable->boolean()};
  refuseRepeatedKeyIds(set.device.layout, device);
  return set;
}

template <> KeyEvent decode<KeyEvent>(const JsonReader& reader) {
  const JsonReader phase = reader.member("phase");
  const std::string& phaseText = phase.text();
  if (phaseText != "down" && phaseText != "up")
    phase.fail(R"(expected "down" or "up", found )" + quotedJson(phaseText));
  return {reader.member("key").as<Key>(),
          phaseText == "down" ? KeyEvent::Phase::down : KeyEvent::Phase::up,
          reader.member("timestamp").number(), reader.member("isModifier").boolean()};
}

template <> DeviceKeyEvent decode<DeviceKeyEvent>(const JsonReader& reader) {
  return {reader.as<KeyEvent>(), reader.member("vendorId").integer(),
          reader.member("productId").integer()};
}

namespace cli {

namespace {

OrderedJson printable(const MappingTable::ChordTrigger& trigger) {
  OrderedJson members = OrderedJson::array();
  for (const KeyName member : trigger.members)
    members.push_back(member.text());
  return {{"members", members}, {"output", trellivar::encode(trigger.output.output())}};
}

OrderedJson printable(const MappingTable::SingleAction& action) {
  const auto* fire = std::get_if<MappingTable::SingleAction::Fire>(&action.value);
  if (!fire) return "swallow";
  return {{"fire", trellivar::encode(fire->output.output())}};
}

OrderedJson printable(const MappingTable::CompiledIdentity& compiled) {
  std::map<std::string, OrderedJson> singles;
  for (const auto& [name, action] : compiled.singles)
    singles.emplace(name.text(), printable(action));
  std::map<std::string, std::string> normalization;
  for (const auto& [name, target] : compiled.normalization)
    normalization.emplace(name.text(), target.text());
  OrderedJson chords = OrderedJson::array();
  for (const auto& trigger : compiled.chords)
    chords.push_back(printable(trigger));
  return {{"chords", chords}, {"singles", singles}, {"normalization", normalization}};
}

} // namespace

OrderedJson printable(const DeviceIdentity& identity) {
  return {{"vendorId", identity.vendorId}, {"productId", identity.productId}};
}

OrderedJson printable(const TapEvent& event) {
  return {{"sender", event.senderId}, {"kind", rawValue(event.kind)}, {"name", event.name.text()}};
}

OrderedJson printable(const DeviceKeyEvent& captured) {
  const KeyEvent& event = captured.event;
  return {{"key", trellivar::encode(event.key)},
          {"phase", event.phase == KeyEvent::Phase::down ? "down" : "up"},
          {"timestamp", event.timestamp},
          {"isModifier", event.isModifier},
          {"vendorId", captured.vendorId},
          {"productId", captured.productId}};
}

OrderedJson printable(const TapAction& action) {
  struct Encoder {
    OrderedJson operator()(const TapAction::Pass&) const { return "pass"; }
    OrderedJson operator()(const TapAction::Suppress&) const { return "suppress"; }
    OrderedJson operator()(const TapAction::Rewrite& rewrite) const {
      return {{"rewrite", rewrite.name.text()}};
    }
    OrderedJson operator()(const TapAction::Post& post) const {
      return {{"post", printableList(*post.events)}};
    }
    OrderedJson operator()(const TapAction::Replay& replay) const {
      return {{"replay", printableList(replay.events)}};
    }
  };
  return std::visit(Encoder{}, action.value);
}

OrderedJson printable(const MappingTable& table) {
  OrderedJson identities = OrderedJson::array();
  for (const auto& [identity, compiled] : table.identities) {
    OrderedJson entry = printable(identity);
    entry.update(printable(compiled));
    identities.push_back(entry);
  }
  return {{"identities", identities}};
}

std::vector<MappingSet> decodeSets(const JsonReader& document) {
  return document.member("sets").list<MappingSet>();
}

} // namespace cli

} // namespace trellivar
