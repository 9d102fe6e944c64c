#include "tests/engine/darwin/computer.h"
#include "tests/support/effort.h"

#include <array>
#include <map>
#include <random>
#include <set>

namespace trellivar {

namespace {

/// A person with a keyboard and pads, who presses, holds and lets go at random, while pads come and
/// go, are paused, and the system disables the tap.
class RandomPerson {
public:
  explicit RandomPerson(unsigned seed) : random_(seed) {
    computer_.desk.events().setRecording(false);
    computer_.desk.events().setReceiver([this](const desk::Received& r) { receive(r.event); });
    computer_.startEngine();
    watching_ = computer_.engine->onPadKeysChanged([this](auto down) {
      told_ = {down.begin(), down.end()};
    });
    applyTable();
    for (std::size_t i = 0; i < pads_.size(); ++i)
      pads_[i] = computer_.attach(identityOf(i));
    computer_.pass(1);
  }

  void act() {
    const int chance = below(300);
    if (chance < 1) {
      replug(below(2));
    } else if (chance < 4) {
      pause(below(2), below(2) == 0);
    } else if (chance < 6) {
      computer_.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
      wasDisabled_ = true;
    } else if (chance < 14) {
      computer_.pass(below(700) / 1000.0);
    } else if (chance < 22) {
      with(below(5), [&](auto device, KeyName key) { computer_.desk.repeat(device, key); });
    } else {
      with(below(5), [&](auto device, KeyName key) { pressOrRelease(device, key); });
    }
    if (below(3) == 0) return;
    computer_.desk.queue().run();
    if (!wasDisabled_ && mistold_.empty()) mistold_ = difference();
  }

  void replaceTable() { applyTable(); }

  /// Lets everything go and waits.
  void rest() {
    for (const auto device : {computer_.keyboard, pads_[0], pads_[1]}) {
      for (const KeyName key : std::set(computer_.desk.pressed(device)))
        computer_.desk.release(device, key);
    }
    computer_.pass(2);
    wasDisabled_ = false;
    if (mistold_.empty()) mistold_ = difference();
  }

  int events() const { return events_; }
  /// What applications believe to be down, in words: by flags and by the events of each key.
  std::string down() const {
    std::string text = sidesText(computer_.desk.events().sessionFlags());
    for (const KeyName name : down_)
      text += " " + name.text();
    return text;
  }
  /// What the engine told of the keys of pads when other keys were down, in words.
  const std::string& mistold() const { return mistold_; }
  std::size_t references() const { return computer_.platform.liveReferences().size(); }
  std::size_t timers() const { return computer_.platform.scheduledTimers(); }

private:
  static DeviceIdentity identityOf(std::size_t pad) {
    return {customIdentity.vendorId, customIdentity.productId + static_cast<int>(pad)};
  }

  std::string difference() const {
    std::set<std::string> told;
    for (const DeviceKey& key : told_)
      told.insert(std::to_string(key.device.productId) + key.name.text());
    std::set<std::string> held;
    for (std::size_t i = 0; i < pads_.size(); ++i) {
      for (const KeyName key : computer_.desk.pressed(pads_[i]))
        held.insert(std::to_string(identityOf(i).productId) + key.text());
    }
    if (told == held) return "";
    std::string text = "told:";
    for (const std::string& key : told)
      text += " " + key;
    text += ", held:";
    for (const std::string& key : held)
      text += " " + key;
    return text;
  }

  int below(int n) { return std::uniform_int_distribution(0, n - 1)(random_); }

  /// Does something with a random key of the keyboard (0) or of a pad.
  template <class Action> void with(int which, const Action& action) {
    // Each has modifiers of its own, since flags do not tell which keyboard they come from.
    static constexpr std::array<std::array<std::string_view, 10>, 3> keys{{
        {"a", "b", "c", "f", "x", "mute", "volume_increment", "button3", "right_shift",
         "left_command"},
        {"a", "b", "c", "f", "x", "mute", "volume_increment", "button3", "left_control",
         "left_option"},
        {"a", "b", "c", "f", "x", "mute", "button3", "left_shift", "right_option", "right_command"},
    }};
    const std::size_t device = which == 0 ? 0 : 1 + static_cast<std::size_t>(which % 2);
    const auto key = static_cast<std::size_t>(below(10));
    action(device == 0 ? computer_.keyboard : pads_[device - 1], KeyName(keys[device][key]));
  }

  void pressOrRelease(desk::Desk::DeviceId device, KeyName key) {
    ++events_;
    if (computer_.desk.pressed(device).contains(key))
      computer_.desk.release(device, key);
    else
      computer_.desk.press(device, key);
  }

  void replug(int pad) {
    // Of what is pressed while the tap is disabled the engine cannot know.
    if (wasDisabled_) return;
    computer_.desk.queue().run();
    auto& device = pads_[static_cast<std::size_t>(pad)];
    computer_.desk.detach(device);
    if (below(2) == 0) computer_.pass(below(600) / 1000.0);
    device = computer_.attach(identityOf(static_cast<std::size_t>(pad)));
    // A person does not press keys before the pad is noticed and pull it again at once.
    computer_.pass(Computer::debounce.count() + 0.01);
  }

  void pause(int pad, bool paused) {
    const DeviceIdentity identity = identityOf(static_cast<std::size_t>(pad));
    computer_.engine->setDeviceIgnored(paused, identity.vendorId, identity.productId);
  }

  /// Singles, chords of modifiers and keys, chords of keys, and a modifier that is rewritten.
  void applyTable() {
    const bool isFirst = below(2) == 0;
    const auto table = [](bool first, std::string_view modifier, std::string_view other) {
      if (first)
        return std::vector<CustomKey>{
            {{"a"}, chordOutput({Modifier::command, Modifier::shift}, "z")},
            {{modifier, "f"}, keyOutput("v")},
            {{modifier, other, "c"}, keyOutput("f5")}};
      return std::vector<CustomKey>{
          {{"b"}, keyOutput("a")}, {{"f", "c"}, keyOutput("w")}, {{"x"}, keyOutput("up_arrow")}};
    };
    MappingSet portable = customSet({{{}, chordOutput({Modifier::command}, "c")}}, identityOf(1));
    portable.portable = true;
    const std::vector sets{customSet(table(isFirst, "left_control", "left_option"), identityOf(0)),
                           customSet(table(!isFirst, "left_shift", "right_option"), identityOf(1)),
                           portable};
    computer_.engine->applyAll(sets);
  }

  void receive(const InputEvent& event) {
    const auto named = desk::named(event);
    if (!named) return;
    if (isDown(named->kind))
      down_.insert(named->name);
    else
      down_.erase(named->name);
  }

  std::mt19937 random_;
  Computer computer_;
  std::array<desk::Desk::DeviceId, 2> pads_{};
  std::set<KeyName, KeyName::ByText> down_;
  std::shared_ptr<void> watching_;
  std::vector<DeviceKey> told_; ///< that pads hold down
  std::string mistold_;
  int events_ = 0;
  bool wasDisabled_ = false; ///< since the last rest
};

/// One tenth of a million events, if that is not too much to ask.
class RandomEventsTest : public testing::TestWithParam<unsigned> {};

TEST_P(RandomEventsTest, leaveNoKeyDownAndNoReferenceBehind) {
  RandomPerson person(GetParam());
  const std::size_t references = person.references();
  while (person.events() < effort(100'000)) {
    for (int i = 0; i < 500; ++i)
      person.act();
    person.rest();
    ASSERT_EQ(person.down(), "") << "after " << person.events() << " events";
    ASSERT_EQ(person.mistold(), "") << "before " << person.events() << " events";
    ASSERT_EQ(person.references(), references);
    ASSERT_EQ(person.timers(), 0U);
  }
}

INSTANTIATE_TEST_SUITE_P(OfAMillion, RandomEventsTest, testing::Range(1U, 11U));

TEST(RandomBindingsTest, changedInTheMiddleLeaveNothingDownEither) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomPerson person(seed);
    for (int round = 0; round < effort(100); ++round) {
      for (int i = 0; i < 40; ++i)
        person.act();
      person.replaceTable();
      for (int i = 0; i < 40; ++i)
        person.act();
      person.rest();
      ASSERT_EQ(person.down(), "") << "seed " << seed << ", round " << round;
      ASSERT_EQ(person.mistold(), "") << "seed " << seed << ", round " << round;
    }
  }
}

} // namespace

} // namespace trellivar
