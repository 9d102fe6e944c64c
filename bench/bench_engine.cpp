#include "bench/table_reporter.h"
#include "engine/darwin/event_posting.h"
#include "engine/darwin/event_translation.h"
#include "engine/darwin/iokit_device_enumerator.h"
#include "engine/darwin/iokit_sender_resolver.h"
#include "engine/darwin/tap_engine.h"
#include "simulator/darwin/platform.h"
#include "simulator/desk/desk.h"

#include <memory>
#include <string>
#include <vector>

// The macOS engine on the simulated desk. What the desk itself costs stands beside each row of the
// engine; on a Mac the system's own cost takes its place.

using namespace trellivar;
using namespace trellivar::bench;

namespace {

constexpr DeviceIdentity padIdentity{0x7777, 0x0042};

MappingSet singleBinding() {
  const Key a{KeyName("a"), Key::Kind::keyCode};
  const Key v{KeyName("v"), Key::Kind::keyCode};
  MappingSet set{{"Pad", padIdentity.vendorId, padIdentity.productId, {}}, {}, false};
  set.device.layout.keys = {{.id = 1, .row = 0, .col = 0, .signature = {{a}, false}}};
  set.profile = {UUID::random(), "P", {{1, {Output::Chord{{}, v}}, std::nullopt}}};
  return set;
}

/// The engine with one binding, and an event of each kind.
struct Bench {
  Bench() {
    desk.events().setRecording(false);
    const auto pad = desk.attach({.product = "Pad",
                                  .identity = padIdentity,
                                  .interfaces = {{desk::DeviceDescription::keyboard}}});
    engine = std::make_unique<TapEngine>(
        desk.queue(), std::make_shared<IOKitSenderResolver>(), nullptr, [] { return true; },
        [] { return true; });
    engine->startTap();
    engine->apply(singleBinding());
    down = event(true, static_cast<std::int64_t>(desk.leafSender(pad, 0x07)));
    up = event(false, static_cast<std::int64_t>(desk.leafSender(pad, 0x07)));
    foreign = event(true, 1);
  }

  static darwin::CFRef<CGEventRef> event(bool isDown, std::int64_t sender) {
    constexpr CGKeyCode a = 0;
    auto event = darwin::CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(nullptr, a, isDown));
    CGEventSetIntegerValueField(event.get(), static_cast<CGEventField>(87), sender);
    return event;
  }

  desk::Desk desk;
  darwin_double::Platform platform{desk};
  std::unique_ptr<TapEngine> engine;
  darwin::CFRef<CGEventRef> down;
  darwin::CFRef<CGEventRef> up;
  darwin::CFRef<CGEventRef> foreign;
};

/// Everything that a foreign event makes the engine ask.
void askWhatTheEngineAsks(benchmark::State& state) {
  const Bench bench;
  for (auto _ : state) {
    benchmark::DoNotOptimize(darwin::isOwn(bench.foreign.get()));
    benchmark::DoNotOptimize(darwin::senderOf(bench.foreign.get()));
  }
}

void handleForeign(benchmark::State& state) {
  const Bench bench;
  for (auto _ : state)
    benchmark::DoNotOptimize(bench.engine->handle(kCGEventKeyDown, bench.foreign.get()));
}

/// The two events that the binding posts, and their way to the applications.
void postWhatTheEnginePosts(benchmark::State& state) {
  Bench bench;
  for (auto _ : state) {
    for (const bool isDown : {true, false}) {
      const auto event =
          darwin::CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(nullptr, 9, isDown));
      CGEventSetFlags(event.get(), CGEventGetFlags(event.get()));
      CGEventSetIntegerValueField(event.get(), kCGEventSourceUserData, darwin::marker);
      CGEventPost(kCGHIDEventTap, event.get());
    }
    bench.desk.queue().run();
  }
}

void handleSingle(benchmark::State& state) {
  Bench bench;
  for (auto _ : state) {
    benchmark::DoNotOptimize(bench.engine->handle(kCGEventKeyDown, bench.down.get()));
    benchmark::DoNotOptimize(bench.engine->handle(kCGEventKeyUp, bench.up.get()));
    bench.desk.queue().run();
  }
}

void enumerate(benchmark::State& state) {
  desk::Desk desk;
  const darwin_double::Platform platform(desk);
  for (int i = 0; i < 64; ++i)
    desk.attach({.product = "Keyboard " + std::to_string(i),
                 .identity = {1, i},
                 .interfaces = {{desk::DeviceDescription::keyboard}}});
  IOKitDeviceEnumerator enumerator;
  for (auto _ : state)
    benchmark::DoNotOptimize(enumerator.connectedKeyboards());
}

} // namespace

int main(int argc, char** argv) {
  addRow("the desk's part of a foreign event", Unit::nanoseconds, 0, 1, askWhatTheEngineAsks);
  addRow("foreign event, the desk's part included", Unit::nanoseconds, 60, 1, handleForeign);
  addRow("the desk's part of a remapped single", Unit::nanoseconds, 0, 1, postWhatTheEnginePosts);
  addRow("remapped single, press and release, all included", Unit::nanoseconds, 1500, 1,
         handleSingle);
  addRow("enumeration of 64 HID services, with its log line", Unit::microseconds, 200, 1,
         enumerate);
  return runAndPrintTable(argc, argv);
}
