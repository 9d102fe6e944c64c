#include "cli/simulate/application.h"

#include "cli/data_folder.h"
#include "core/known_devices.h"
#include "core/l10n.h"
#include "viewmodels/profile_editing.h"

#include <algorithm>
#include <utility>

namespace trellivar::cli::simulate {

namespace {

/// The machine outlives everything here.
template <class Service> std::shared_ptr<Service> borrowed(Service& service) {
  return {std::shared_ptr<void>(), &service};
}

std::shared_ptr<SignaturePersisting>
signaturesIn(const std::optional<std::filesystem::path>& folder) {
  if (!folder) return std::make_shared<MemorySignatures>();
  return std::make_shared<SignatureStore>(*folder, debugLog);
}

/// Throws BadInput if either file cannot be read.
std::shared_ptr<ProfileListViewModel>
profilesIn(const std::optional<std::filesystem::path>& folder) {
  if (!folder) return std::make_shared<ProfileListViewModel>(std::nullopt, std::vector<Profile>());
  loadSignatures(SignatureStore(*folder)); // before a start writes anything
  const ProfileStore store(*folder);
  return std::make_shared<ProfileListViewModel>(store, loadProfiles(store));
}

} // namespace

Application::Application(desk::Machine& machine,
                         const std::optional<std::filesystem::path>& dataFolder)
    : machine_(machine), root_(setup(dataFolder), profilesIn(dataFolder)) {
  deviceChange_ = root_.mapping().device().willChange([this](const TrellivarDevice& next) {
    const TrellivarDevice& current = *root_.mapping().device();
    if (next.identity() != current.identity() || next.name != current.name) activity_.advance();
  });
  root_.start();
}

AppRoot::Setup Application::setup(const std::optional<std::filesystem::path>& dataFolder) {
  return {.queue = machine_.desk.queue(),
          .background = background_,
          .engine = borrowed(machine_.engine),
          .startTap = [this] { machine_.engine.startTap(); },
          .capturer = borrowed(machine_.capturer),
          .enumerator = borrowed(machine_.enumerator),
          .hotplug = machine_.hotplug,
          .link = std::shared_ptr<Orlo3Linking>(new Orlo3SerialLink(machine_.link(clock_))),
          .signatures = signaturesIn(dataFolder),
          .settings = std::make_shared<SettingsStore>(std::make_shared<MemoryUserDefaults>())};
}

std::string Application::mode() const {
  const TrellivarDevice& device = *root_.mapping().device();
  const auto found = KnownDevices::resolve(device.vendorId, device.productId, device.name);
  return found ? found->modeId : machine_.pad.mode();
}

void Application::bind(std::string_view mode, int key, const Output& output,
                       const std::optional<std::string>& label) {
  Profile profile = *root_.profiles().profile(mode);
  bindKey(profile, key, output);
  if (label) labelKey(profile, key, *label);
  if (profile.id == root_.mapping().profile()->id) activity_.advance();
  root_.edit(profile);
}

void Application::begin(int key) {
  activity_.advance();
  root_.mapping().endActiveCapture();
  root_.profiles().setActive(root_.profiles().profile(mode())->id);
  root_.mapping().select(key);
}

template <class Result, class Found>
MappingViewModel::Completion
Application::ending(Found found, std::function<void(const Outcome<Result>&)> completion,
                    L10n::Key nothing) {
  ++awaited_;
  return [this, found, completion = std::move(completion), token = activity_.value(), nothing] {
    --awaited_;
    if (!activity_.isCurrent(token))
      return completion({std::nullopt, std::string(L10n::t(nothing))});
    if (const auto& error = *root_.mapping().lastError()) return completion({std::nullopt, *error});
    completion({found(), {}});
  };
}

void Application::learn(int key, std::function<void(const Outcome<KeySignature>&)> completion) {
  begin(key);
  const auto signature = [this, key] {
    const auto& keys = root_.mapping().device()->layout.keys;
    return std::ranges::find(keys, key, &PhysicalKey::id)->signature;
  };
  root_.mapping().learnKey(
      ending<KeySignature>(signature, std::move(completion), L10n::Key::errNoCatchKey));
}

void Application::record(int key, std::function<void(const Outcome<Output>&)> completion) {
  begin(key);
  const auto output = [this, key] { return root_.mapping().mapping(key)->output; };
  root_.mapping().record(
      ending<Output>(output, std::move(completion), L10n::Key::errNoCatchShortcut));
}

} // namespace trellivar::cli::simulate
