#pragma once

#include "tests/engine/darwin/computer.h"

#include <cstdint>
#include <string>

namespace trellivar {

/// With a custom pad attached that has a single, a two-key chord and a key without a binding.
class TapEngineTest : public testing::Test {
protected:
  TapEngineTest() {
    computer.startEngine();
    computer.engine->apply(bindings());
  }

  static MappingSet bindings() {
    return customSet(
        {{{"a"}, chordOutput({Modifier::command}, "c")}, {{"left_control", "f"}, keyOutput("v")}});
  }

  std::string heard() { return computer.heard(); }

  /// An event of the pad that its keys would not send.
  void send(std::uint32_t type, std::int64_t keyCode, std::uint64_t flags = 0) {
    InputEvent event;
    event.type = type;
    event.flags = flags;
    event.setField(InputEvent::keyCode, keyCode);
    event.setField(InputEvent::senderId,
                   static_cast<std::int64_t>(computer.desk.leafSender(pad, 0x07)));
    computer.desk.events().post(desk::EventStream::Level::hid, event);
    computer.desk.queue().run();
  }

  Computer computer;
  desk::Desk::DeviceId pad = computer.attach(customIdentity);
  desk::Desk::DeviceId keyboard = computer.keyboard;
};

inline constexpr const char* commandC =
    "*left_command+ *c+(left_command) *c-(left_command) *left_command-";

} // namespace trellivar
