#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "cli/input.h"
#include "core/known_devices.h"

#include <memory>
#include <optional>

namespace trellivar::cli {

namespace {

struct ResolveOptions {
  std::string vendor;
  std::string product;
  std::optional<std::string> name;
};

OrderedJson nameOrNull(const KnownDevice* device) {
  return device ? OrderedJson(device->name) : OrderedJson();
}

OrderedJson printable(const std::optional<KnownDevices::Resolution>& resolution) {
  if (!resolution) return nullptr;
  return {{"device", resolution->device->name}, {"modeId", resolution->modeId}};
}

OrderedJson describe(int vendor, int product, const std::optional<std::string>& name) {
  const auto layout =
      name ? KnownDevices::layout(vendor, product, *name) : KnownDevices::layout(vendor, product);
  return {
      {"resolve", printable(KnownDevices::resolve(vendor, product, name.value_or("")))},
      {"known", nameOrNull(KnownDevices::known(vendor, product))},
      {"knownAcrossModes", nameOrNull(KnownDevices::knownAcrossModes(vendor, product))},
      {"isKnown", KnownDevices::isKnown(vendor, product)},
      {"identities", printableList(KnownDevices::identities(vendor, product))},
      {"layout", layout ? trellivar::encode(*layout) : Json()},
  };
}

} // namespace

void addResolve(CLI::App& app, Context& context) {
  auto options = std::make_shared<ResolveOptions>();
  CLI::App* command = app.add_subcommand("resolve", "Print what the registry knows of a device");
  command->add_option("--vendor", options->vendor, "Vendor id")->required();
  command->add_option("--product", options->product, "Product id")->required();
  command->add_option("--name", options->name, "The name that the device gives itself");
  command->callback([&context, options] {
    const int vendor = parseInteger("--vendor", options->vendor);
    const int product = parseInteger("--product", options->product);
    context.out = describe(vendor, product, options->name).dump() + '\n';
  });
}

} // namespace trellivar::cli
