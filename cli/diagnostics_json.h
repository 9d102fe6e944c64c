#pragma once

#include "core/json/coding.h"
#include "core/mapping_table.h"
#include "core/tap_action.h"
#include "core/tap_event.h"
#include "engine/device_key_event.h"

#include <nlohmann/json.hpp>

#include <span>
#include <vector>

/// The JSON forms that only the diagnostics use. What they print keeps its members in the order in
/// which people expect to read them.
namespace trellivar {

using OrderedJson = nlohmann::ordered_json;

template <> DeviceIdentity decode<DeviceIdentity>(const JsonReader& reader);
template <> TapEvent decode<TapEvent>(const JsonReader& reader);
/// Refuses a layout that names a key id twice.
template <> MappingSet decode<MappingSet>(const JsonReader& reader);
template <> KeyEvent decode<KeyEvent>(const JsonReader& reader);
template <> DeviceKeyEvent decode<DeviceKeyEvent>(const JsonReader& reader);

namespace cli {

OrderedJson printable(const DeviceIdentity& identity);
OrderedJson printable(const TapEvent& event);
OrderedJson printable(const DeviceKeyEvent& captured);
OrderedJson printable(const TapAction& action);
OrderedJson printable(const MappingTable& table);

template <class List> OrderedJson printableList(const List& items) {
  OrderedJson list = OrderedJson::array();
  for (const auto& item : items)
    list.push_back(printable(item));
  return list;
}

/// The mapping sets of a document {"sets":[…]} or of a record that carries one.
std::vector<MappingSet> decodeSets(const JsonReader& document);

} // namespace cli

} // namespace trellivar
