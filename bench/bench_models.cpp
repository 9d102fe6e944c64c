#include "bench/scratch_folder.h"
#include "bench/table_reporter.h"
#include "simulator/machine/machine.h"
#include "viewmodels/app_root.h"
#include "viewmodels/profile_editing.h"

#include <memory>
#include <vector>

// The application's models over the whole engine on the simulated desk, with the pad on the cable.

using namespace trellivar;
using namespace trellivar::bench;

namespace {

/// Never used here: a write takes as long as the pad does.
class NoBackground final : public BackgroundQueue {
public:
  void async(std::function<void()> /*block*/) override {}
};

template <class Service> std::shared_ptr<Service> borrowed(Service& service) {
  return {std::shared_ptr<void>(), &service};
}

Output chord(std::string_view key) {
  return {Output::Chord{{Modifier::command}, Key{KeyName(key), Key::Kind::keyCode}}};
}

/// A computer with an application of which every key in every mode is bound.
class Bench {
public:
  explicit Bench(const std::filesystem::path& folder) : folder_(folder) {
    machine_.pad.connect(desk::Pad::Link::usb);
    machine_.desk.queue().advance(desk::Machine::hotplugDebounce);
    const auto root = application();
    for (Profile profile : std::vector(*root->profiles().profiles())) {
      for (const int key : desk::Pad::keyIds)
        bindKey(profile, key, chord("c"));
      root->edit(profile);
    }
  }

  std::unique_ptr<AppRoot> application() {
    auto root = std::make_unique<AppRoot>(
        AppRoot::Setup{
            .queue = machine_.desk.queue(),
            .background = background_,
            .engine = borrowed(machine_.engine),
            .startTap = [this] { machine_.engine.startTap(); },
            .capturer = borrowed(machine_.capturer),
            .enumerator = borrowed(machine_.enumerator),
            .hotplug = machine_.hotplug,
            .link = std::shared_ptr<Orlo3Linking>(new Orlo3SerialLink(machine_.link(clock_))),
            .signatures = std::make_shared<SignatureStore>(folder_),
            .settings = std::make_shared<SettingsStore>(std::make_shared<MemoryUserDefaults>())},
        std::make_shared<ProfileListViewModel>(ProfileStore(folder_)));
    root->start();
    return root;
  }

private:
  std::filesystem::path folder_;
  desk::Machine machine_;
  SystemLinkClock clock_;
  NoBackground background_;
};

void edit(benchmark::State& state, const ScratchFolder& folder) {
  Bench bench(folder.path());
  const auto root = bench.application();
  root->mapping().select(1);
  const std::array outputs{chord("c"), chord("v")};
  std::size_t edits = 0;
  for (auto _ : state)
    root->mapping().assign(outputs.at(++edits % outputs.size()));
  const bool isBound = root->mapping().mapping(1)->output == outputs.at(edits % outputs.size());
  if (!isBound || root->mapping().lastError()->has_value())
    state.SkipWithError("the key is not bound");
}

void construct(benchmark::State& state) {
  const ScratchFolder folder = ScratchFolder::inMemory();
  Bench bench(folder.path());
  for (auto _ : state)
    bench.application();
}

} // namespace

int main(int argc, char** argv) {
  addRow("an edit: bound, given to the engine, saved in memory", Unit::milliseconds, 2, 1,
         [](benchmark::State& state) { edit(state, ScratchFolder::inMemory()); });
  addRow("the same, saved on disk and flushed", Unit::milliseconds, 0, 1,
         [](benchmark::State& state) { edit(state, ScratchFolder::onDisk()); });
  addRow("all models constructed and started", Unit::milliseconds, 20, 1, construct);
  return runAndPrintTable(argc, argv);
}
