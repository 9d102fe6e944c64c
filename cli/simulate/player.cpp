#include "cli/simulate/player.h"

#include "cli/simulate/application.h"
#include "core/modifier.h"
#include "engine/darwin/event_posting.h"
#include "simulator/desk/key_codes.h"
#include "simulator/machine/machine.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellivar::cli::simulate {

namespace {

using desk::InputEvent;

/// Before it the application does not listen for the key that is to be learned.
constexpr Seconds learnReleaseDelay{0.1};

/// Which modifiers an event says to be down. Without side-specific flags that is the left one.
std::vector<KeyName> modifiersOf(std::uint64_t flags) {
  std::vector<KeyName> names;
  for (const Modifier modifier : Modifier::allCases) {
    const auto& row = modifier.row();
    const std::uint64_t sides = row.device | modifier.oppositeSide().row().device;
    const bool isUnsided = (flags & row.generic) != 0 && (flags & sides) == 0;
    if ((flags & row.device) != 0 || (isUnsided && modifier.isLeft()))
      names.push_back(modifier.keyName());
  }
  return names;
}

class Player {
public:
  Player(const std::optional<std::filesystem::path>& dataFolder, const Listener& listener)
      : listener_(listener), application_(machine_, dataFolder) {
    machine_.desk.events().setRecording(false);
    machine_.desk.events().setReceiver([this](const desk::Received& received) { hear(received); });
    queue().run();
  }

  void play(const Step& step) {
    step_ = &step;
    listener_.began(step);
    std::visit(*this, step.action);
  }

  /// Until nothing is to come but the look at the permissions.
  void finish() {
    while (application_.isCapturing() || machine_.pad.isSending())
      queue().advance(Seconds(1));
    queue().advance(TapEngine::chordWindow + Seconds(0.1));
  }

  void operator()(const Connect& connect) {
    using Link = desk::Pad::Link;
    if (const auto* identity = std::get_if<DeviceIdentity>(&connect.to)) {
      machine_.pad.connectAs(*identity);
    } else {
      const auto to = std::get<Connect::Link>(connect.to);
      machine_.pad.connect(to == Connect::Link::usb         ? Link::usb
                           : to == Connect::Link::bluetooth ? Link::bluetooth
                                                            : Link::away);
    }
    letItBeNoticed();
  }

  void operator()(const SetMode& set) {
    machine_.pad.setMode(set.mode);
    letItBeNoticed();
  }

  void operator()(const Bind& bind) {
    application_.bind(bind.mode, bind.key, bind.output, bind.label);
  }

  void operator()(const Press& press) {
    for (std::size_t i = 0; i < press.keys.size(); ++i) {
      if (i > 0) queue().advance(press.stagger);
      machine_.pad.press(press.keys[i]);
      queue().run();
    }
    queue().advance(press.hold);
    for (const int key : press.keys)
      machine_.pad.release(key);
    queue().advance(Seconds(0.05));
  }

  void operator()(const Type& type) {
    constexpr Seconds betweenKeys{0.03};
    for (const KeyName key : type.keys) {
      machine_.desk.press(machine_.keyboard, key);
      queue().advance(betweenKeys);
    }
    for (auto key = type.keys.rbegin(); key != type.keys.rend(); ++key) {
      machine_.desk.release(machine_.keyboard, *key);
      queue().advance(betweenKeys);
    }
  }

  void operator()(const Learn& learn) {
    application_.learn(learn.key, reporting<KeySignature>());
    queue().advance(learnReleaseDelay);
  }

  void operator()(const Record& record) {
    application_.record(record.key, reporting<Output>());
    queue().run();
  }

  void operator()(const Wait& wait) { queue().advance(wait.duration); }

  /// In real time; on the desk no time passes.
  void operator()(const Write&) {
    application_.root().writeToPad();
    queue().run();
    std::visit([this](const auto& status) { tell(status); },
               application_.root().portableWrite().status()->value);
  }

  void operator()(const SetPermissions& set) {
    for (const Permission permission : set.permissions) {
      if (permission == Permission::accessibility)
        machine_.desk.setTrusted(set.granted);
      else
        machine_.desk.setInputMonitoring(set.granted ? desk::Access::granted
                                                     : desk::Access::denied);
    }
    queue().advance(AppRoot::pollInterval);
  }

  void operator()(const DisableTap& disable) {
    machine_.desk.events().disableTaps(disable.reason == DisableTap::Reason::timeout
                                           ? InputEvent::tapDisabledByTimeout
                                           : InputEvent::tapDisabledByUserInput);
    queue().run();
  }

  void operator()(const Status&) {
    report(Result::State{machine_.engine.status(""), *application_.root().devices().padLink()});
  }

private:
  desk::ManualQueue& queue() { return machine_.desk.queue(); }

  /// Nobody presses a key before the computer has noticed the device.
  void letItBeNoticed() { queue().advance(desk::Machine::hotplugDebounce); }

  template <class Found> std::function<void(const Application::Outcome<Found>&)> reporting() {
    return [this, &step = *step_](const Application::Outcome<Found>& outcome) {
      if (outcome.result)
        listener_.reported(step, {*outcome.result});
      else
        listener_.reported(step, {Result::Error{outcome.error}});
    };
  }

  void tell(const WriteStatus::Done& done) { report(done); }
  void tell(WriteStatus::NeedPad needed) { report(needed); }
  void tell(const WriteStatus::Error& error) { report(Result::Error{error.message}); }
  void tell(WriteStatus::Idle) {}
  void tell(WriteStatus::Writing) {}

  template <class Value> void report(Value value) {
    listener_.reported(*step_, {std::move(value)});
  }

  void hear(const desk::Received& received) {
    const auto named = desk::named(received.event);
    if (!named) return;
    listener_.arrived({received.t, sourceOf(received.event), named->kind, named->name,
                       modifiersOf(received.event.flags)});
  }

  Arrival::Source sourceOf(const InputEvent& event) const {
    using Source = Arrival::Source;
    if (event.field(InputEvent::sourceUserData) == darwin::marker) return Source::engine;
    const auto sender = static_cast<desk::EntryId>(event.field(InputEvent::senderId));
    const auto below = machine_.desk.registry().descendants(machine_.keyboard);
    return std::ranges::find(below, sender) != below.end() ? Source::keyboard : Source::pad;
  }

  const Listener& listener_;
  desk::Machine machine_;
  Application application_;
  const Step* step_ = nullptr;
};

} // namespace

std::string_view rawValue(Arrival::Source source) noexcept {
  constexpr std::array<std::string_view, 3> names{"pad", "keyboard", "engine"};
  return names[static_cast<std::size_t>(source)];
}

void play(const std::vector<Step>& script, const std::optional<std::filesystem::path>& dataFolder,
          const Listener& listener) {
  Player player(dataFolder, listener);
  for (const Step& step : script)
    player.play(step);
  player.finish();
  listener.ended();
}

} // namespace trellivar::cli::simulate
