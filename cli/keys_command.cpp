#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "cli/key_names.h"
#include "core/cg_keycode_map.h"
#include "engine/keycode_map.h"

#include <iomanip>
#include <memory>
#include <sstream>

namespace trellivar::cli {

namespace {

OrderedJson describeKey(const std::string& name) {
  OrderedJson key{{"name", name}};
  if (const auto keyCode = CGKeycodeMap::keyCode(name)) key["keyCode"] = *keyCode;
  if (const auto bits = CGKeycodeMap::modifier(name)) {
    key["generic"] = bits->generic;
    key["device"] = bits->device;
  }
  if (const auto auxKey = CGKeycodeMap::auxKey(name)) key["auxKey"] = *auxKey;
  if (const auto button = CGKeycodeMap::buttonNumber(name)) key["button"] = *button;
  if (const auto firmware = KeycodeMap::firmwareKey({KeyName(name)}))
    key["firmware"] = {{"name", firmware->name}, {"code", firmware->code}};
  return key;
}

/// A line such as "left_shift              keyCode 56  generic 131072  device 2".
std::string lineOf(const OrderedJson& key) {
  std::ostringstream line;
  line << std::left << std::setw(24) << key["name"].get<std::string>();
  for (const auto& [member, value] : key.items()) {
    if (member == "name") continue;
    if (member == "firmware")
      line << "  firmware " << value["name"].get<std::string>() << ' ' << value["code"];
    else
      line << "  " << member << ' ' << value;
  }
  return line.str() + '\n';
}

} // namespace

void addKeys(CLI::App& app, Context& context) {
  auto json = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("keys", "Print every key name and what it maps to");
  command->add_flag("--json", *json, "Print JSON");
  command->callback([&context, json] {
    OrderedJson keys = OrderedJson::array();
    for (const std::string& name : allKeyNames())
      keys.push_back(describeKey(name));
    if (*json) {
      context.out = keys.dump() + '\n';
      return;
    }
    for (const OrderedJson& key : keys)
      context.out += lineOf(key);
  });
}

} // namespace trellivar::cli
