#pragma once

#include "core/l10n.h"
#include "files/durable_file.h"
#include "simulator/desk/key_codes.h"
#include "tests/engine/darwin/computer.h"
#include "tests/journeys/application.h"
#include "tests/support/held_background.h"
#include "tests/support/hurried_clock.h"
#include "tests/support/printing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <initializer_list>
#include <iterator>

namespace trellivar {

/// The pad's identities, by what connects it and the mode of its switch.
inline constexpr DeviceIdentity cableP{0x4C4A, 0x4155};
inline constexpr DeviceIdentity cableM{0x4C4A, 0x414D};
inline constexpr DeviceIdentity bluetoothM{0x05AC, 0x0220};

/// A person at a simulated computer with the application, which is not started yet. When the person
/// leaves, everything has to be as if the application had never been there.
class User {
  // Before what may still be writing at the end.
  std::mutex portMutex_;
  std::optional<std::string> port_; ///< of the pad, while it is on the cable

public:
  using Link = desk::Pad::Link;

  desk::Machine machine;
  TemporaryFolder folder{quickFolder()};
  std::shared_ptr<MemoryUserDefaults> defaults =
      std::make_shared<MemoryUserDefaults>(std::vector<std::string>{"en"});
  HeldBackground background;
  HurriedClock clock{std::chrono::milliseconds(5)};
  std::shared_ptr<Orlo3Linking> link =
      std::make_shared<Orlo3SerialLink>([this] { return padPort(); }, clock);
  std::vector<std::string> reports; ///< what the application reported to its log
  std::vector<bool> loginItem;      ///< each registration and its end
  int completed = 0;                ///< activities that have told of their end

  User() {
    machine.desk.events().setRecording(false);
    machine.desk.events().setReceiver([this](const desk::Received& received) { hear(received); });
    machine.desk.queue().run();
    letItBeNoticed();
    leftByTheMachine_ = machine.platform.liveReferences();
  }
  ~User() {
    quit();
    pass(1);
    EXPECT_EQ(machine.platform.liveReferences(), leftByTheMachine_);
    EXPECT_EQ(machine.platform.taps(), 0U);
    EXPECT_EQ(machine.platform.scheduledTimers(), 0U);
    EXPECT_EQ(held(), "");
  }

  // The application

  void start() {
    application_.emplace(Application::Surroundings{
        machine, background, folder.path(), link, defaults,
        [this](std::string_view message) { reports.emplace_back(message); }});
    app().settings->onStartAtLoginChanged([this](bool isOn) { loginItem.push_back(isOn); });
    root().start();
    letItBeNoticed();
  }
  /// The process ends, whatever it was doing.
  void quit() { application_.reset(); }
  void restart() {
    quit();
    start();
  }
  /// The window and its models go; the process goes on.
  void closeForGood() { app().root.reset(); }

  Application& app() { return *application_; }
  AppRoot& root() { return *app().root; }
  MappingViewModel& mapping() { return root().mapping(); }
  ProfileListViewModel& profiles() { return root().profiles(); }
  std::string error() { return mapping().lastError()->value_or(""); }

  /// Shows the profile of a mode.
  void show(std::string_view mode) { profiles().setActive(profiles().profile(mode)->id); }
  void select(int key) { mapping().select(key); }
  void learn(int key) {
    select(key);
    mapping().learnKey([this] { ++completed; });
    pass(0.15);
  }
  void record(int key) {
    select(key);
    mapping().record([this] { ++completed; });
    machine.desk.queue().run();
  }
  void assign(int key, const Output& output) {
    select(key);
    mapping().assign(output);
  }
  /// Learns a key, from beginning to end.
  void teach(int key) {
    learn(key);
    press(key);
    pass(0.6);
  }
  void write() {
    root().writeToPad();
    background.run();
    machine.desk.queue().run();
  }

  // The desk

  void pass(double seconds) {
    machine.desk.queue().advance(Seconds(seconds));
    const bool isOnCable = machine.pad.link() == Link::usb && machine.port;
    const std::lock_guard lock(portMutex_);
    port_ = isOnCable ? std::optional(machine.port->path()) : std::nullopt;
  }
  void letItBeNoticed() { pass(0.35); }
  void connect(Link by) {
    machine.pad.connect(by);
    letItBeNoticed();
  }
  void unplug() { connect(Link::away); }
  void turnTo(std::string_view mode) {
    machine.pad.setMode(mode);
    letItBeNoticed();
  }
  void hold(int key) {
    machine.pad.press(key);
    pass(0.05);
  }
  void letGo(int key) {
    machine.pad.release(key);
    pass(0.05);
  }
  void press(int key) {
    hold(key);
    letGo(key);
  }
  /// On the ordinary keyboard: all down, then all up in reverse.
  void type(std::initializer_list<std::string_view> keys) {
    for (const std::string_view key : keys) {
      machine.desk.press(machine.keyboard, KeyName(key));
      pass(0.02);
    }
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) {
      machine.desk.release(machine.keyboard, KeyName(*key));
      pass(0.02);
    }
  }
  /// Until the application has looked at its permissions again.
  void permit(bool accessibility, bool inputMonitoring) {
    machine.desk.setTrusted(accessibility);
    machine.desk.setInputMonitoring(inputMonitoring ? desk::Access::granted : desk::Access::denied);
    pass(AppRoot::pollInterval.count());
  }

  // What applications see

  /// Since the last call: "c+" for a press and "c-" for a release, with "*" in front if the engine
  /// made it, and the modifiers that it says to be down in brackets, other than its own key's.
  std::string heard() { return std::exchange(heard_, ""); }
  /// The keys that are down.
  std::string held() const {
    std::string text;
    for (const KeyName key : down_)
      text += (text.empty() ? "" : " ") + key.text();
    return text;
  }
  /// What a press of a pad key makes them hear.
  std::string heardOf(int key) {
    heard();
    press(key);
    pass(0.6); // a chord may wait for its second key
    return heard();
  }

  // Files

  std::filesystem::path file(std::string_view name) const { return folder / name; }
  /// Empty without such a file.
  std::string content(std::string_view name) const { return readFile(file(name)).value_or(""); }
  const std::vector<Profile>& storedProfiles() {
    return profilesOnDisk_.decoded(content("profiles.json"),
                                   [this] { return ProfileStore(folder.path()).load(); });
  }
  const std::vector<StoredDeviceSignatures>& storedSignatures() {
    return signaturesOnDisk_.decoded(content("signatures.json"),
                                     [this] { return SignatureStore(folder.path()).load(); });
  }
  std::vector<KeyMapping> storedMappings(std::string_view mode) {
    for (const Profile& profile : storedProfiles()) {
      if (profile.name == mode) return profile.mappings;
    }
    return {};
  }

private:
  /// Decodes a file anew when its bytes have changed.
  template <class T> class OnDisk {
  public:
    template <class Load> const std::vector<T>& decoded(std::string bytes, const Load& load) {
      if (bytes_ != bytes) {
        value_ = load();
        bytes_ = std::move(bytes);
      }
      return value_;
    }

  private:
    std::string bytes_;
    std::vector<T> value_;
  };

  void hear(const desk::Received& received) {
    const auto named = desk::named(received.event);
    if (!named) return;
    if (isDown(named->kind))
      down_.insert(named->name);
    else
      down_.erase(named->name);
    if (!heard_.empty()) heard_ += " ";
    if (received.event.field(InputEvent::sourceUserData) == darwin::marker) heard_ += "*";
    heard_ += named->name.text() + (isDown(named->kind) ? "+" : "-");
    std::uint64_t flags = received.event.flags;
    if (const auto codes = desk::keyCodes(named->name);
        codes && codes->family == desk::KeyCodes::Family::modifier)
      flags &= ~codes->flags;
    const std::string sides = sidesText(flags);
    if (!sides.empty()) heard_ += "(" + sides + ")";
  }

  /// A write asks on its own thread, where the desk must not be touched.
  std::optional<std::string> padPort() {
    const std::lock_guard lock(portMutex_);
    return port_;
  }

  std::string heard_;
  std::set<KeyName, KeyName::ByText> down_;
  std::vector<std::string> leftByTheMachine_;
  OnDisk<Profile> profilesOnDisk_;
  OnDisk<StoredDeviceSignatures> signaturesOnDisk_;
  std::optional<Application> application_;
};

inline std::string text(L10n::Key key) { return std::string(L10n::t(key)); }

/// The keys of a pad, as far as they are learned.
inline KeySignature single(std::string_view name) { return {{plainKey(name)}, false}; }
inline KeySignature chord(std::initializer_list<std::string_view> names) {
  KeySignature signature{{}, true};
  for (const std::string_view name : names)
    signature.codes.push_back(plainKey(name));
  return signature;
}

} // namespace trellivar
