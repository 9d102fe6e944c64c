#include "engine/linux/serial_ports.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace trellivar {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view usbModem = "ttyACM";
constexpr int padVendorId = 0x4C4A;
constexpr int inspectedEntries = 12;

std::vector<std::string> namesOfModems(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (auto entry = fs::directory_iterator(folder, error); !error && entry != fs::end(entry);
       entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (name.starts_with(usbModem)) names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

/// The content of an attribute, four hexadecimal digits; none when the entry has no such attribute.
std::optional<int> idVendor(const fs::path& entry) {
  std::string text;
  std::ifstream(entry / "idVendor") >> text;
  int id = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, id, 16);
  if (parsed.ec != std::errc{} || parsed.ptr != end) return std::nullopt;
  return id;
}

std::optional<int> usbVendorId(fs::path entry, const fs::path& root) {
  for (int inspected = 0; inspected < inspectedEntries; ++inspected) {
    if (const auto id = idVendor(entry)) return id;
    entry = entry.parent_path();
    if (entry == root || entry == entry.root_path()) break;
  }
  return std::nullopt;
}

} // namespace

std::optional<std::string> discoverPadPort(const fs::path& sysfs) {
  std::error_code error;
  const fs::path root = fs::canonical(sysfs, error);
  if (error) return std::nullopt;
  const fs::path ports = root / "class" / "tty";
  for (const std::string& name : namesOfModems(ports)) {
    const fs::path device = fs::canonical(ports / name, error);
    if (!error && usbVendorId(device, root) == padVendorId) return "/dev/" + name;
  }
  return std::nullopt;
}

} // namespace trellivar
