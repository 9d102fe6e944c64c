#include "core/cg_keycode_map.h"

#include "core/key_table.h"

#include <charconv>
#include <string>
#include <unordered_map>
#include <vector>

namespace trellivar::CGKeycodeMap {

namespace {

template <class Map, class Argument>
auto find(const Map& map, Argument key) -> std::optional<typename Map::mapped_type> {
  const auto found = map.find(key);
  if (found == map.end()) return std::nullopt;
  return found->second;
}

const auto& modifierTable() {
  static const auto table = [] {
    std::unordered_map<std::string_view, ModifierBits> result;
    for (const auto& row : keytable::modifiers)
      result.emplace(row.name, ModifierBits{row.generic, row.device, row.keyCode});
    return result;
  }();
  return table;
}

} // namespace

std::optional<int> keyCode(std::string_view forName) {
  static const auto table = [] {
    std::unordered_map<std::string_view, int> result;
    for (const auto& row : keytable::keys)
      result.emplace(row.name, row.keyCode);
    for (const auto& row : keytable::modifiers)
      result.emplace(row.name, row.keyCode);
    return result;
  }();
  return find(table, forName);
}

std::optional<KeyName> name(int forKeyCode) {
  static const auto table = [] {
    std::unordered_map<int, KeyName> result;
    for (const auto& row : keytable::keys)
      result.emplace(row.keyCode, KeyName(row.name));
    for (const auto& row : keytable::modifiers)
      result.emplace(row.keyCode, KeyName(row.name));
    return result;
  }();
  return find(table, forKeyCode);
}

std::optional<ModifierBits> modifier(std::string_view forName) {
  return find(modifierTable(), forName);
}

std::optional<int> auxKey(std::string_view forConsumerName) {
  static const auto table = [] {
    std::unordered_map<std::string_view, int> result;
    for (const auto& row : keytable::consumers)
      result.emplace(row.name, row.auxKey);
    return result;
  }();
  return find(table, forConsumerName);
}

std::optional<KeyName> consumerName(int forAuxKey) {
  static const auto table = [] {
    std::unordered_map<int, KeyName> result;
    for (const auto& row : keytable::consumers)
      result.emplace(row.auxKey, KeyName(row.name));
    return result;
  }();
  return find(table, forAuxKey);
}

std::optional<int> buttonNumber(std::string_view forPointingName) {
  constexpr std::string_view prefix = "button";
  if (!forPointingName.starts_with(prefix)) return std::nullopt;
  const std::string_view digits = forPointingName.substr(prefix.size());
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  if (number < 1 || number > keytable::buttonCount) return std::nullopt;
  return number - 1;
}

std::optional<KeyName> pointingName(int forButtonNumber) {
  static const auto names = [] {
    std::vector<KeyName> result;
    for (int button = 1; button <= keytable::buttonCount; ++button)
      result.emplace_back("button" + std::to_string(button));
    return result;
  }();
  if (forButtonNumber < 0 || forButtonNumber >= keytable::buttonCount) return std::nullopt;
  return names[static_cast<std::size_t>(forButtonNumber)];
}

} // namespace trellivar::CGKeycodeMap
