#include "cli/commands.h"
#include "cli/data_folder.h"
#include "cli/diagnostics_json.h"
#include "cli/input.h"
#include "cli/interruption.h"
#include "cli/link_name.h"
#include "cli/local_machine.h"
#include "core/json/quoted.h"
#include "core/known_devices.h"
#include "core/mode_sets.h"
#include "core/signature_store.h"
#include "engine/log.h"
#include "viewmodels/device_list_view_model.h"
#include "viewmodels/mapping_view_model.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::cli {

namespace {

/// Not an error: the command does what can be done.
void noteWhatIsMissing(Context& context, const LocalMachine& machine) {
  if (!machine.missing.empty()) context.err << "trellivarctl: " << machine.missing << '\n';
}

std::optional<std::string> modeOf(const ConnectedDevice& device) {
  const auto found = KnownDevices::resolve(device.vendorId, device.productId, device.name);
  if (!found) return std::nullopt;
  return found->modeId;
}

struct DevicesOptions {
  bool json = false;
  bool all = false;
};

/// What the devices command tells.
struct DeviceReport {
  std::vector<ConnectedDevice> devices;
  PadLink link;
  std::optional<std::string> port;
};

OrderedJson orNull(const std::optional<std::string>& text) {
  return text ? OrderedJson(*text) : OrderedJson();
}

std::string jsonText(const DeviceReport& report) {
  OrderedJson devices = OrderedJson::array();
  for (const ConnectedDevice& device : report.devices) {
    devices.push_back({{"name", device.name},
                       {"vendorId", device.vendorId},
                       {"productId", device.productId},
                       {"modeId", orNull(modeOf(device))},
                       {"isUSB", DeviceListViewModel::isOnCable(device)}});
  }
  const OrderedJson document{
      {"devices", devices}, {"padLink", linkName(report.link)}, {"port", orNull(report.port)}};
  return document.dump(-1, ' ', false, OrderedJson::error_handler_t::replace) + '\n';
}

std::string wordedText(const DeviceReport& report) {
  std::string text;
  for (const ConnectedDevice& device : report.devices) {
    text += device.name + "  " + std::to_string(device.vendorId) + ":" +
            std::to_string(device.productId);
    if (const auto mode = modeOf(device))
      text +=
          "  mode " + *mode + (DeviceListViewModel::isOnCable(device) ? ", cable" : ", Bluetooth");
    text += '\n';
  }
  if (report.devices.empty()) text = "no devices\n";
  text += "pad link: " + std::string(linkName(report.link)) + '\n';
  return text + "serial port: " + report.port.value_or("none") + '\n';
}

void runDevices(Context& context, const DevicesOptions& options) {
  const LocalMachine machine = context.machine();
  noteWhatIsMissing(context, machine);
  const auto keyboards = machine.enumerator->connectedKeyboards();
  const DeviceReport report{options.all ? keyboards : DeviceListViewModel::collapse(keyboards),
                            DeviceListViewModel::link(keyboards), context.discoverPort()};
  context.out = options.json ? jsonText(report) : wordedText(report);
}

/// The engine knows of a pad only what it is to remap, which is the stored profiles. Nothing is
/// written: what a start would make of them is enough.
EngineStatus statusWith(const std::shared_ptr<RemapEngine>& engine,
                        const std::filesystem::path& folder) {
  loadSignatures(SignatureStore(folder));
  const auto profiles = ProfileListViewModel::migrated(loadProfiles(ProfileStore(folder)));
  StubMainQueue queue;
  const auto mapping = MappingViewModel::make({
      .queue = queue,
      .device = initialDevice(),
      .profile = profiles.front(),
      .engine = engine,
      .capturer = std::make_shared<StubKeyCapturer>(),
      .signatures = std::make_shared<SignatureStore>(folder),
      .allProfiles = [&profiles] { return std::vector(profiles); },
      .report = [](std::string_view what) { throw Failure(std::string(what)); },
  });
  mapping->reapply();
  return engine->status(mapping->device()->name);
}

std::string yesOrNo(bool value) { return value ? "yes" : "no"; }

void runStatus(Context& context, bool asJson) {
  const auto folder = dataFolder(context);
  const LocalMachine machine = context.machine();
  const EngineStatus status = statusWith(machine.engine, folder);
  noteWhatIsMissing(context, machine);
  if (asJson) {
    const OrderedJson document{{"accessibilityGranted", status.accessibilityGranted},
                               {"inputMonitoringGranted", status.inputMonitoringGranted},
                               {"trellivarGrabbed", status.trellivarGrabbed},
                               {"dataDir", folder.string()},
                               {"log", logPath}};
    context.out = document.dump(-1, ' ', false, OrderedJson::error_handler_t::replace) + '\n';
    return;
  }
  context.out = "Accessibility:     " + yesOrNo(status.accessibilityGranted) +
                "\nInput Monitoring:  " + yesOrNo(status.inputMonitoringGranted) +
                "\npad intercepted:   " + yesOrNo(status.trellivarGrabbed) +
                "\ndata folder:       " + folder.string() +
                "\nlog:               " + std::string(logPath) + '\n';
}

/// "V:P", each as other numbers on the command line.
DeviceIdentity parseIdentity(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos)
    throw BadInput("--device: expected VENDOR:PRODUCT, found " + quotedJson(text));
  return {parseInteger("--device", std::string_view(text).substr(0, colon)),
          parseInteger("--device", std::string_view(text).substr(colon + 1))};
}

void runMonitor(Context& context, const std::optional<std::string>& deviceText) {
  const auto device = deviceText ? std::optional(parseIdentity(*deviceText)) : std::nullopt;
  const LocalMachine machine = context.machine();
  InterruptibleClock clock;
  try {
    machine.monitor(
        [&](const DeviceKeyEvent& event) {
          if (device && event.identity() != *device) return;
          context.live << printable(event).dump() + '\n' << std::flush;
        },
        [&] {
          if (!context.live) throw Failure("standard output cannot be written");
          clock.sleep(Seconds::zero());
        });
  } catch (const Interrupted&) { // NOLINT(bugprone-empty-catch): the way to end it
  }
}

} // namespace

void addDevices(CLI::App& app, Context& context) {
  auto options = std::make_shared<DevicesOptions>();
  CLI::App* command = app.add_subcommand("devices", "List the attached pads");
  command->add_flag("--json", options->json, "Report as JSON");
  command->add_flag("--all", options->all, "List every keyboard");
  command->callback([&context, options] { runDevices(context, *options); });
}

void addStatus(CLI::App& app, Context& context) {
  auto asJson = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("status", "Tell what is permitted and where data lives");
  command->add_flag("--json", *asJson, "Report as JSON");
  command->callback([&context, asJson] { runStatus(context, *asJson); });
}

void addMonitor(CLI::App& app, Context& context) {
  auto device = std::make_shared<std::optional<std::string>>();
  CLI::App* command =
      app.add_subcommand("monitor", "Print live key events as JSON Lines, until interrupted");
  command->add_option("--device", *device, "Only those of VENDOR:PRODUCT");
  command->callback([&context, device] { runMonitor(context, *device); });
}

} // namespace trellivar::cli
