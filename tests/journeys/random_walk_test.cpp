#include "core/mapping_table.h"
#include "engine/orlo3_protocol.h"
#include "tests/journeys/invariants.h"
#include "viewmodels/profile_editing.h"

#include <algorithm>
#include <array>
#include <deque>
#include <random>
#include <string>

/// People do anything in any order. After each thing that they do, everything has to fit together.
namespace trellivar {
namespace {

class Dice {
public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  /// From 0 on.
  int below(int end) { return std::uniform_int_distribution(0, end - 1)(engine_); }
  bool chance(int percent) { return below(100) < percent; }
  template <class Range> const auto& oneOf(const Range& range) {
    return range[static_cast<std::size_t>(below(static_cast<int>(std::size(range))))];
  }

private:
  std::mt19937 engine_;
};

/// Writes into the pad's firmware in no time, or fails at random.
class InstantLink final : public Orlo3Linking {
public:
  InstantLink(desk::Machine& machine, Dice& dice) : machine_(machine), dice_(dice) {}

  std::optional<std::string> discoverPort() override { return std::nullopt; }
  std::optional<Orlo3Reply> query(std::string_view, double) override { return std::nullopt; }
  std::string writeMacros(const std::vector<std::string>& lines) override {
    if (machine_.pad.link() != desk::Pad::Link::usb) throw Orlo3Error(Orlo3Error::NoPort{});
    if (dice_.chance(10)) throw Orlo3Error(Orlo3Error::Dormant{});
    if (dice_.chance(10)) throw Orlo3Error(Orlo3Error::Io{"the port is in use"});
    for (const auto& frames : Orlo3Protocol::numberedFrames(lines)) {
      for (const std::string& frame : frames)
        machine_.firmware.receive(frame);
      if (dice_.chance(5)) throw Orlo3Error(Orlo3Error::HealthCheckFailed{});
    }
    return "1.0.7";
  }

private:
  desk::Machine& machine_;
  Dice& dice_;
};

class Walk {
public:
  explicit Walk(unsigned seed) : dice_(seed) {
    user_.link = std::make_shared<InstantLink>(user_.machine, dice_);
    user_.start();
  }

  /// What is wrong after one more thing that the person did; empty: nothing.
  std::string step() {
    act();
    queue().run();
    say(user_.heard());
    user_.reports.clear();
    if (user_.completed == now_.begun) now_.isMixedUp = false;
    return problem_.empty() ? invariants::broken(user_, now_) : problem_;
  }

  /// Lets everything come to its end; what is wrong then.
  std::string finish() {
    letGoOfEverything();
    closeSheet();
    while (!user_.background.isEmpty())
      user_.background.runNext();
    user_.pass(60);
    if (std::string problem = invariants::broken(user_, now_); !problem.empty()) return problem;
    if (*user_.mapping().isLearning() || *user_.mapping().isRecording()) return "it never ends";
    if (user_.app().capturer->isRunning()) return "a capture never ends";
    if (!user_.app().engine->exempted.empty()) return "a pad stays exempted";
    if (user_.completed != now_.begun) return "not everybody was told of the end";
    if (!user_.held().empty()) return "held down for ever: " + user_.held();
    return "";
  }

  std::string lastActions() const {
    std::string text;
    for (const std::string& each : actions_)
      text += each + "\n";
    return text;
  }

private:
  using Link = User::Link;

  struct Action {
    int weight;
    const char* name;
    void (Walk::*act)();
  };
  static const Action actions[];

  void act() {
    static const int total = [] {
      int sum = 0;
      for (const Action* each = actions; each->act; ++each)
        sum += each->weight;
      return sum;
    }();
    int left = dice_.below(total);
    const Action* chosen = actions;
    for (; left >= chosen->weight; ++chosen)
      left -= chosen->weight;
    actions_.emplace_back(chosen->name);
    if (actions_.size() > 40) actions_.pop_front();
    (this->*chosen->act)();
  }
  void say(std::string_view what) { actions_.back() += " " + std::string(what); }

  desk::ManualQueue& queue() { return user_.machine.desk.queue(); }
  desk::Pad& pad() { return user_.machine.pad; }
  int anyKey() { return 1 + dice_.below(3); }
  std::string_view anyMode() { return dice_.oneOf(std::array<std::string_view, 3>{"P", "M", "R"}); }

  // What is edited

  Key anyOutputKey() {
    static constexpr std::array<std::string_view, 12> names{
        "a",          "b",  "c",         "z",   "1",          "spacebar", "return_or_enter",
        "left_arrow", "f1", "semicolon", "tab", "no_such_key"};
    static constexpr std::array<std::string_view, 3> media{"mute", "volume_increment",
                                                           "play_or_pause"};
    if (dice_.chance(15)) return {KeyName(dice_.oneOf(media)), Key::Kind::consumerKeyCode};
    if (dice_.chance(5)) return {KeyName("button3"), Key::Kind::pointingButton};
    return plainKey(dice_.oneOf(names));
  }
  /// Modifiers that people press on the keyboard, the pad's own left_control among them. Outputs
  /// leave them out, since the end of an output releases its modifiers whoever else holds them.
  static constexpr std::array<std::string_view, 3> ofKeyboard{"right_shift", "right_option",
                                                              "left_control"};
  std::vector<Modifier> someModifiers() {
    std::vector<Modifier> some;
    for (const Modifier modifier : Modifier::allCases) {
      const bool isOfKeyboard =
          std::ranges::find(ofKeyboard, modifier.rawValue()) != ofKeyboard.end();
      if (!isOfKeyboard && dice_.chance(20)) some.push_back(modifier);
    }
    return some;
  }
  Output anyOutput() {
    switch (dice_.below(3)) {
    case 0:
      return {Output::Chord{someModifiers(), anyOutputKey()}};
    case 1: {
      std::vector<Key> keys;
      for (int count = dice_.below(4); count > 0; --count)
        keys.push_back(anyOutputKey());
      return {Output::Sequence{std::move(keys)}};
    }
    default:
      return {Output::Modifiers{someModifiers()}};
    }
  }

  void select() {
    if (dice_.chance(10))
      user_.mapping().select(std::nullopt);
    else
      user_.select(anyKey());
  }
  void assign() {
    if (dice_.chance(70)) user_.select(anyKey());
    user_.mapping().assign(anyOutput());
  }
  void rename() {
    static constexpr std::array<std::string_view, 4> labels{"Copy", "  ", " 粘贴\n", "\"\\"};
    user_.mapping().rename(anyKey(), dice_.oneOf(labels));
  }
  void show() { user_.show(anyMode()); }
  void edit() {
    Profile profile = *user_.profiles().profile(anyMode());
    if (dice_.chance(30))
      unbindKey(profile, anyKey());
    else
      bindKey(profile, anyKey(), anyOutput());
    user_.root().edit(profile);
  }
  void set() {
    SettingsStore& settings = *user_.app().settings;
    settings.setLanguage(dice_.oneOf(AppLanguage::allCases));
    settings.setAppearance(dice_.oneOf(allAppearances));
    settings.setStartAtLogin(dice_.chance(50));
  }

  // What goes on for a while

  bool isBusy() {
    return *user_.mapping().isLearning() || *user_.mapping().isRecording() ||
           (now_.sheet && *now_.sheet->isCapturing());
  }
  std::function<void()> beginning() {
    now_.isMixedUp = now_.isMixedUp || isBusy();
    ++now_.begun;
    return [this] { ++user_.completed; };
  }
  void cancel() {
    user_.mapping().endActiveCapture();
    closeSheet();
  }
  /// Mostly people end one thing before they begin another.
  void cancelMostly() {
    if ((isBusy() || now_.sheet) && dice_.chance(90)) cancel();
  }
  void learn() {
    cancelMostly();
    user_.select(anyKey());
    now_.isMixedUp = now_.isMixedUp || now_.sheet;
    user_.mapping().learnKey(beginning());
    user_.pass(dice_.oneOf(std::array{0.0, 0.15}));
  }
  void record() {
    cancelMostly();
    user_.select(anyKey());
    user_.mapping().record(beginning());
  }
  /// All of it, from the beginning to the end.
  void teach() {
    cancel();
    learn();
    user_.pass(0.15);
    press();
    user_.pass(0.6);
  }
  void openSheet() {
    cancelMostly();
    closeSheet();
    now_.sheet = user_.root().discover(std::string(dice_.chance(60) ? pad().mode() : anyMode()));
    now_.sheet->checkPresence();
  }
  void checkAgain() {
    if (now_.sheet) now_.sheet->checkPresence();
  }
  /// The pad turns out to be another one, in the middle of it.
  void checkAnother() {
    openSheet();
    capture();
    connect();
    checkAgain();
    capture();
  }
  /// The key that is asked for.
  void capture() {
    if (!now_.sheet || !*now_.sheet->deviceIdentity()) return say("not");
    const auto* asked = std::get_if<DiscoveryViewModel::Step::PressKey>(&now_.sheet->step()->value);
    if (!asked) return say("not");
    now_.identityOfCapture = **now_.sheet->deviceIdentity();
    now_.captureOfSheet = user_.app().capturer->begun + 1;
    now_.sheet->captureKey(asked->keyId, beginning());
  }
  /// From the first key to the last, as far as the pad is heard.
  void discover() {
    cancel();
    openSheet();
    for (const int key : now_.sheet->keyIds()) {
      capture();
      user_.press(key);
      user_.pass(0.6);
    }
    save();
  }
  void save() {
    if (!now_.sheet) return say("not");
    if (!std::holds_alternative<DiscoveryViewModel::Step::Review>(now_.sheet->step()->value))
      return say("not");
    now_.sheet->save();
    closeSheet();
  }
  void closeSheet() {
    now_.sheet.reset();
    now_.captureOfSheet = 0;
  }
  void write() { user_.root().writeToPad(); }
  void writeTwice() {
    write();
    write();
    while (!user_.background.isEmpty())
      user_.background.runNext();
  }
  void runInBackground() {
    if (!user_.background.isEmpty()) user_.background.runNext();
  }

  // What happens on the desk

  void letGoOfEverything() {
    for (const int key : desk::Pad::keyIds)
      user_.letGo(key);
    const auto keys = user_.machine.desk.pressed(user_.machine.keyboard);
    for (const KeyName key : keys)
      user_.machine.desk.release(user_.machine.keyboard, key);
    while (pad().isSending())
      user_.pass(0.1);
  }
  void connect() {
    letGoOfEverything();
    pad().connect(dice_.oneOf(
        std::array{Link::away, Link::usb, Link::usb, Link::bluetooth, Link::bluetooth}));
    settleMostly();
  }
  void connectAsAnother() {
    letGoOfEverything();
    pad().connectAs(dice_.oneOf(
        std::array<DeviceIdentity, 3>{{{0x05AC, 0x022C}, {0x7777, 0x0042}, {0x05AC, 0x0220}}}));
    settleMostly();
  }
  void turn() {
    letGoOfEverything();
    pad().setMode(anyMode());
    settleMostly();
  }
  void settleMostly() {
    if (dice_.chance(70)) user_.letItBeNoticed();
  }
  void selectDevice() {
    const auto& devices = *user_.root().devices().devices();
    if (!devices.empty()) user_.root().devices().select(dice_.oneOf(devices));
  }
  void refresh() { user_.root().devices().refresh(); }

  void press() { user_.press(anyKey()); }
  void hold() { user_.hold(anyKey()); }
  void letGo() { user_.letGo(anyKey()); }
  void type() {
    if (dice_.chance(50))
      user_.type({dice_.oneOf(ofKeyboard), "x"});
    else
      user_.type({"y"});
  }
  std::string_view heldOnKeyboard() {
    return dice_.oneOf(std::array<std::string_view, 3>{"x", "right_shift", "left_control"});
  }
  void holdKeyboard() {
    user_.machine.desk.press(user_.machine.keyboard, KeyName(heldOnKeyboard()));
  }
  void letGoKeyboard() {
    user_.machine.desk.release(user_.machine.keyboard, KeyName(heldOnKeyboard()));
  }
  void permit() {
    user_.machine.desk.setTrusted(dice_.chance(70));
    user_.machine.desk.setInputMonitoring(dice_.chance(70) ? desk::Access::granted
                                                           : desk::Access::denied);
    if (dice_.chance(50)) user_.pass(AppRoot::pollInterval.count());
  }
  void permitAll() { user_.permit(true, true); }
  void disableTap() {
    user_.machine.desk.events().disableTaps(dice_.chance(50) ? InputEvent::tapDisabledByTimeout
                                                             : InputEvent::tapDisabledByUserInput);
  }
  /// Nobody touches anything for a moment.
  void rest() {
    letGoOfEverything();
    user_.pass(1);
    expectNothingDown();
  }
  void expectNothingDown() {
    if (!user_.held().empty()) problem_ = "held down by nobody: " + user_.held();
  }
  /// A key of a pad that the engine minds; what nobody minds stays down on a desk.
  void unplugWithAKeyHeld() {
    if (pad().link() == Link::away) connect();
    rest();
    user_.permit(true, true);
    const auto table = MappingTable::compile(user_.app().engine->applied);
    if (pad().link() == Link::away || !table.identities.contains(*pad().identity()))
      return say("not");
    user_.hold(anyKey());
    say(user_.held());
    switch (dice_.below(5)) {
    case 0:
      say("show");
      show();
      break;
    case 1:
      say("learn");
      learn();
      break;
    case 2:
      say("disable tap");
      disableTap();
      break;
    case 3:
      say("pass");
      user_.pass(0.6);
      break;
    default:
      break;
    }
    if (dice_.chance(50))
      pad().connect(Link::away);
    else
      pad().setMode(pad().mode() == "P" ? "M" : "P");
    user_.pass(1);
    expectNothingDown();
  }
  void passALittle() { user_.pass(0.6); }
  void passMuch() { user_.pass(13); }

  // The application

  void restart() {
    closeSheet();
    user_.restart();
    now_.begun = user_.completed = 0; // what the process was waiting for went with it
    now_.isMixedUp = false;
  }
  void showWindowAgain() {
    user_.root().stop();
    user_.root().start();
  }

  Dice dice_;
  User user_;
  invariants::Activities now_;
  std::deque<std::string> actions_;
  std::string problem_; ///< that an action saw
};

const Walk::Action Walk::actions[] = {
    {6, "select", &Walk::select},
    {12, "assign", &Walk::assign},
    {4, "rename", &Walk::rename},
    {4, "show", &Walk::show},
    {3, "edit", &Walk::edit},
    {1, "set", &Walk::set},
    {6, "learn", &Walk::learn},
    {6, "record", &Walk::record},
    {4, "cancel", &Walk::cancel},
    {4, "teach", &Walk::teach},
    {3, "open sheet", &Walk::openSheet},
    {1, "check again", &Walk::checkAgain},
    {1, "check another", &Walk::checkAnother},
    {5, "capture", &Walk::capture},
    {2, "discover", &Walk::discover},
    {1, "save", &Walk::save},
    {2, "close sheet", &Walk::closeSheet},
    {2, "write", &Walk::write},
    {1, "write twice", &Walk::writeTwice},
    {3, "run in background", &Walk::runInBackground},
    {4, "connect", &Walk::connect},
    {1, "connect as another", &Walk::connectAsAnother},
    {3, "turn", &Walk::turn},
    {1, "select device", &Walk::selectDevice},
    {1, "refresh", &Walk::refresh},
    {8, "press", &Walk::press},
    {4, "hold", &Walk::hold},
    {4, "let go", &Walk::letGo},
    {5, "type", &Walk::type},
    {2, "hold keyboard", &Walk::holdKeyboard},
    {2, "let go keyboard", &Walk::letGoKeyboard},
    {2, "permit", &Walk::permit},
    {3, "permit all", &Walk::permitAll},
    {1, "disable tap", &Walk::disableTap},
    {2, "rest", &Walk::rest},
    {2, "unplug with a key held", &Walk::unplugWithAKeyHeld},
    {6, "pass a little", &Walk::passALittle},
    {2, "pass much", &Walk::passMuch},
    {1, "restart", &Walk::restart},
    {1, "show window again", &Walk::showWindowAgain},
    {0, "", nullptr},
};

class RandomWalk : public testing::TestWithParam<unsigned> {};

TEST_P(RandomWalk, everythingFitsTogetherAfterEachStep) {
  constexpr int steps = TRELLIVAR_WALK_STEPS;
  Walk walk(GetParam());
  for (int i = 1; i <= steps; ++i) {
    const std::string problem = i == steps ? walk.finish() : walk.step();
    ASSERT_EQ(problem, "") << "seed " << GetParam() << ", step " << i << " after\n"
                           << walk.lastActions();
  }
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomWalk, testing::Range(1U, 21U));

} // namespace
} // namespace trellivar
