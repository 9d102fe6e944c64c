#include "bench/table_reporter.h"
#include "core/known_devices.h"
#include "core/l10n.h"
#include "core/mapping_table.h"

#include <optional>
#include <string>
#include <vector>

using namespace trellivar;
using namespace trellivar::bench;

namespace {

Output copy() { return {Output::Chord{{Modifier::command}, {KeyName("c")}}}; }

std::vector<MappingSet> knownPadInThreeModes() {
  std::vector<MappingSet> sets;
  const TrellivarDevice device{"Orlo3", 0x4C4A, 0x4155, *KnownDevices::layout(0x4C4A, 0x4155)};
  for (const char* mode : {"P", "M", "R"}) {
    Profile profile{UUID(), mode, {}};
    for (int key = 1; key <= 3; ++key)
      profile.mappings.push_back({key, copy(), std::nullopt});
    sets.push_back({device, profile, false});
  }
  return sets;
}

std::vector<MappingSet> unknownPad(int mappings) {
  MappingSet set{{"Pad", 1, 2, {}}, {UUID(), "P", {}}, false};
  for (int id = 0; id < mappings; ++id) {
    const KeySignature signature{{{KeyName("key" + std::to_string(id))}}, false};
    set.device.layout.keys.push_back({id, 0, id, signature, {}});
    set.profile.mappings.push_back({id, copy(), std::nullopt});
  }
  return {set};
}

void addCompilation(const std::string& name, Unit unit, double limit,
                    const std::vector<MappingSet>& sets) {
  addRow(name, unit, limit, 1, [sets](benchmark::State& state) {
    for (auto _ : state)
      benchmark::DoNotOptimize(MappingTable::compile(sets));
  });
}

} // namespace

int main(int argc, char** argv) {
  addCompilation("compile three modes of a known pad", Unit::microseconds, 20,
                 knownPadInThreeModes());
  addCompilation("compile an unknown pad of 500 mappings", Unit::milliseconds, 0, unknownPad(500));
  addCompilation("compile an unknown pad of 1,000 mappings", Unit::milliseconds, 2,
                 unknownPad(1000));
  addCompilation("compile an unknown pad of 2,000 mappings", Unit::milliseconds, 0,
                 unknownPad(2000));
  addRow("look up a text", Unit::nanoseconds, 0, 1, [](benchmark::State& state) {
    auto key = L10n::Key::writeHelper;
    for (auto _ : state) {
      benchmark::DoNotOptimize(key);
      benchmark::DoNotOptimize(L10n::t(key));
    }
  });
  addRow("fill a text with two arguments", Unit::nanoseconds, 0, 1, [](benchmark::State& state) {
    for (auto _ : state)
      benchmark::DoNotOptimize(L10n::t(L10n::Key::writtenFmt, "P/M/R", "1.0.4"));
  });
  return runAndPrintTable(argc, argv);
}
