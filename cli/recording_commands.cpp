#include "cli/commands.h"
#include "cli/diagnostics_json.h"
#include "cli/input.h"
#include "core/recording_classifier.h"
#include "engine/capture_interpreter.h"

#include <functional>
#include <memory>
#include <optional>

namespace trellivar::cli {

namespace {

struct RecordingOptions {
  std::string file;
  std::string vendor;
  std::string product;

  DeviceIdentity identity() const {
    return {parseInteger("--vendor", vendor), parseInteger("--product", product)};
  }
};

std::string jsonLine(const std::optional<Output>& output) {
  return (output ? trellivar::encode(*output) : Json()).dump() + '\n';
}

using OnOptions = std::function<void(const RecordingOptions&)>;

CLI::App* addRecordingCommand(CLI::App& app, const std::string& name, const std::string& help,
                              const std::shared_ptr<RecordingOptions>& options,
                              const OnOptions& run) {
  CLI::App* command = app.add_subcommand(name, help);
  command->add_option("EVENTS", options->file, "Recorded events, JSON Lines")->required();
  command->callback([options, run] { run(*options); });
  return command;
}

void addDeviceCommand(CLI::App& app, const std::string& name, const std::string& help,
                      const OnOptions& run) {
  auto options = std::make_shared<RecordingOptions>();
  CLI::App* command = addRecordingCommand(app, name, help, options, run);
  command->add_option("--vendor", options->vendor, "The pad's vendor id")->required();
  command->add_option("--product", options->product, "The pad's product id")->required();
}

} // namespace

void addRecordings(CLI::App& app, Context& context) {
  addRecordingCommand(app, "classify", "Print the output that recorded key events amount to",
                      std::make_shared<RecordingOptions>(),
                      [&context](const RecordingOptions& options) {
                        const auto events = readRecords<KeyEvent>(context, options.file);
                        context.out = jsonLine(RecordingClassifier::classify(events));
                      });
  addDeviceCommand(app, "signature", "Print the signature of the pad key that was recorded",
                   [&context](const RecordingOptions& options) {
                     const auto [vendor, product] = options.identity();
                     const auto events = readRecords<DeviceKeyEvent>(context, options.file);
                     const auto signature = CaptureInterpreter::signature(events, vendor, product);
                     context.out = trellivar::encode(signature).dump() + '\n';
                   });
  addDeviceCommand(app, "recorded-output",
                   "Print the output recorded on other devices than the given pad",
                   [&context](const RecordingOptions& options) {
                     const auto [vendor, product] = options.identity();
                     const auto events = readRecords<DeviceKeyEvent>(context, options.file);
                     context.out = jsonLine(CaptureInterpreter::output(events, vendor, product));
                   });
}

} // namespace trellivar::cli
