#include "core/bound_layouts.h"
#include "tests/journeys/walk/actions.h"

#include <algorithm>

namespace trellivar::walk {

namespace {

using Link = User::Link;

void settleMostly(Walker& walker) {
  if (walker.dice.chance(70)) walker.user.letItBeNoticed();
}

void connectAsAnother(Walker& walker) {
  letGoOfEverything(walker);
  walker.pad().connectAs(walker.dice.oneOf(
      std::array<DeviceIdentity, 3>{{{0x05AC, 0x022C}, {0x7777, 0x0042}, {0x05AC, 0x0220}}}));
  settleMostly(walker);
}

void turn(Walker& walker) {
  letGoOfEverything(walker);
  walker.pad().setMode(walker.anyMode());
  settleMostly(walker);
}

void selectDevice(Walker& walker) {
  DeviceListViewModel& list = walker.user.root().devices();
  if (!list.devices()->empty()) list.select(walker.dice.oneOf(*list.devices()));
}

void refresh(Walker& walker) { walker.user.root().devices().refresh(); }

void hold(Walker& walker) { walker.user.hold(walker.anyKey()); }
void letGo(Walker& walker) { walker.user.letGo(walker.anyKey()); }

void type(Walker& walker) {
  if (walker.dice.chance(50))
    walker.user.type({walker.dice.oneOf(keyboardModifiers), "x"});
  else
    walker.user.type({"y"});
}

KeyName anyHeldOnKeyboard(Dice& dice) {
  return KeyName(dice.oneOf(std::array<std::string_view, 3>{"x", "right_shift", "left_control"}));
}
void holdKeyboard(Walker& walker) {
  const desk::Machine& machine = walker.user.machine;
  walker.user.machine.desk.press(machine.keyboard, anyHeldOnKeyboard(walker.dice));
}
void letGoKeyboard(Walker& walker) {
  const desk::Machine& machine = walker.user.machine;
  walker.user.machine.desk.release(machine.keyboard, anyHeldOnKeyboard(walker.dice));
}

void permit(Walker& walker) {
  desk::Desk& desk = walker.user.machine.desk;
  desk.setTrusted(walker.dice.chance(70));
  desk.setInputMonitoring(walker.dice.chance(70) ? desk::Access::granted : desk::Access::denied);
  if (walker.dice.chance(50)) walker.user.pass(AppRoot::pollInterval.count());
}

void permitAll(Walker& walker) { walker.user.permit(true, true); }

void disableTap(Walker& walker) {
  walker.user.machine.desk.events().disableTaps(walker.dice.chance(50)
                                                    ? InputEvent::tapDisabledByTimeout
                                                    : InputEvent::tapDisabledByUserInput);
}

/// Nobody touches anything for a moment.
void rest(Walker& walker) {
  letGoOfEverything(walker);
  walker.user.pass(1);
  walker.see(invariants::nothingIsDown(walker.user));
}

void passALittle(Walker& walker) { walker.user.pass(0.6); }
void passMuch(Walker& walker) { walker.user.pass(13); }

/// While the key is held, one of these or nothing happens.
constexpr std::array meanwhile{
    Action{1, "show", show},
    Action{1, "learn", learn},
    Action{1, "disable tap", disableTap},
    Action{1, "pass", passALittle},
};

/// Its keys, bound or not, come up when it goes; those of other devices stay down on a desk.
bool isOfTheSets(Walker& walker, DeviceIdentity pad) {
  for (const MappingSet& set : walker.user.app().engine->applied) {
    const auto bound = boundLayouts(set.device);
    if (std::ranges::find(bound, pad, &BoundLayout::identity) != bound.end()) return true;
  }
  return false;
}

void unplugWithAKeyHeld(Walker& walker) {
  desk::Pad& pad = walker.pad();
  if (pad.link() == Link::away) connect(walker);
  rest(walker);
  walker.user.permit(true, true);
  if (pad.link() == Link::away || !isOfTheSets(walker, *pad.identity())) return walker.say("not");
  hold(walker);
  walker.say(walker.user.held());
  const auto chosen = static_cast<std::size_t>(walker.dice.below(meanwhile.size() + 1));
  if (chosen < meanwhile.size()) {
    walker.say(meanwhile[chosen].name);
    meanwhile[chosen].act(walker);
  }
  if (walker.dice.chance(50))
    pad.connect(Link::away);
  else
    pad.setMode(pad.mode() == "P" ? "M" : "P");
  walker.user.pass(1);
  walker.see(invariants::nothingIsDown(walker.user));
}

constexpr std::array deskEventTable{
    Action{4, "connect", connect},
    Action{1, "connect as another", connectAsAnother},
    Action{3, "turn", turn},
    Action{1, "select device", selectDevice},
    Action{1, "refresh", refresh},
    Action{8, "press", press},
    Action{4, "hold", hold},
    Action{4, "let go", letGo},
    Action{5, "type", type},
    Action{2, "hold keyboard", holdKeyboard},
    Action{2, "let go keyboard", letGoKeyboard},
    Action{2, "permit", permit},
    Action{3, "permit all", permitAll},
    Action{1, "disable tap", disableTap},
    Action{2, "rest", rest},
    Action{2, "unplug with a key held", unplugWithAKeyHeld},
    Action{6, "pass a little", passALittle},
    Action{2, "pass much", passMuch},
};

} // namespace

std::span<const Action> deskEvents() { return deskEventTable; }

void connect(Walker& walker) {
  letGoOfEverything(walker);
  walker.pad().connect(walker.dice.oneOf(
      std::array{Link::away, Link::usb, Link::usb, Link::bluetooth, Link::bluetooth}));
  settleMostly(walker);
}

void press(Walker& walker) { walker.user.press(walker.anyKey()); }

void letGoOfEverything(Walker& walker) {
  for (const int key : desk::Pad::keyIds)
    walker.user.letGo(key);
  desk::Machine& machine = walker.user.machine;
  const auto keys = machine.desk.pressed(machine.keyboard);
  for (const KeyName key : keys)
    machine.desk.release(machine.keyboard, key);
  while (machine.pad.isSending())
    walker.user.pass(0.1);
}

} // namespace trellivar::walk
