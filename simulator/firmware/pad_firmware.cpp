#include "simulator/firmware/pad_firmware.h"

#include "core/json/decoding_error.h"
#include "core/json/quoted.h"

#include <nlohmann/json.hpp>

namespace trellivar::firmware {

namespace {

bool asksForFirmware(const Json& command) {
  return command.is_object() && command.value("o", Json()) == "get" &&
         command.value("t", Json()) == "firmware";
}

} // namespace

std::vector<std::string> PadFirmware::receive(std::string_view bytes) {
  std::vector<std::string> replies;
  const auto commands = reader_.receive(bytes);
  const std::lock_guard lock(mutex_);
  for (const std::string& command : commands) {
    if (auto reply = execute(command)) replies.push_back(std::move(*reply));
  }
  counts_.dropped = refused_ + reader_.dropped();
  return replies;
}

void PadFirmware::lineIsQuiet() {
  reader_.dropUnfinished();
  const std::lock_guard lock(mutex_);
  counts_.dropped = refused_ + reader_.dropped();
}

std::optional<std::string> PadFirmware::execute(const std::string& text) {
  try {
    const Json command = parseJson(text);
    if (asksForFirmware(command)) {
      ++counts_.answered;
      return R"({"o":"get","t":"firmware","v":)" + quotedJson(version_) + "}";
    }
    SetCommand set = readSetCommand(command);
    macros_[{set.mode, set.key}] = std::move(set.macro);
    ++counts_.stored;
  } catch (const DecodingError&) {
    ++refused_;
  }
  return std::nullopt;
}

std::optional<StoredMacro> PadFirmware::macro(std::string_view mode, int key) const {
  const std::lock_guard lock(mutex_);
  const auto found = macros_.find({std::string(mode), key});
  return found == macros_.end() ? std::nullopt : std::optional(found->second);
}

std::map<PadFirmware::Slot, StoredMacro> PadFirmware::macros() const {
  const std::lock_guard lock(mutex_);
  return macros_;
}

PadFirmware::Counts PadFirmware::counts() const {
  const std::lock_guard lock(mutex_);
  return counts_;
}

} // namespace trellivar::firmware
