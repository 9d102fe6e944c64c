#include "tests/cli/profiles_fixture.h"
#include "tests/engine/darwin/computer.h"

#include <algorithm>
#include <csignal>
#include <functional>
#include <sstream>
#include <streambuf>
#include <utility>

namespace trellivar::cli {
namespace {

constexpr auto padPort = "/dev/cu.usbmodem1101";

int ownInterruptions = 0;
void countOwn(int) { ++ownInterruptions; }

/// The commands as they are on macOS, whose interfaces act on a simulated computer with an ordinary
/// keyboard, 4660:1, and a pad that is away.
class DeviceCommands : public ProfilesTest {
protected:
  DeviceCommands() {
    computer_.pad.setCalloutPath([] { return padPort; });
    discoverPort_ = discoverPort;
  }

  Json devices(const Arguments& further = {}) const {
    Arguments command{"devices", "--json"};
    command.insert(command.end(), further.begin(), further.end());
    return json(command);
  }
  static Json listed(const std::string& name, DeviceIdentity identity, const Json& modeId,
                     bool isUSB) {
    return {{"name", name},
            {"vendorId", identity.vendorId},
            {"productId", identity.productId},
            {"modeId", modeId},
            {"isUSB", isUSB}};
  }

  Computer computer_;
};

const Json ordinaryKeyboard{{"name", "Keyboard"},
                            {"vendorId", 4660},
                            {"productId", 1},
                            {"modeId", nullptr},
                            {"isUSB", false}};

TEST_F(DeviceCommands, anOrdinaryKeyboardIsListedOnRequestOnly) {
  EXPECT_EQ(run({"devices", "--json"}),
            printed(R"({"devices":[],"padLink":"disconnected","port":null})"
                    "\n"));
  EXPECT_EQ(run({"devices", "--json", "--all"}),
            printed(R"({"devices":[{"name":"Keyboard","vendorId":4660,"productId":1,)"
                    R"("modeId":null,"isUSB":false}],"padLink":"disconnected","port":null})"
                    "\n"));
}

TEST_F(DeviceCommands, thePadOnTheCableIsListedWithItsModeAndPort) {
  computer_.pad.connect(desk::Pad::Link::usb);
  EXPECT_EQ(run({"devices", "--json"}),
            printed(R"({"devices":[{"name":"Orlo3","vendorId":19530,"productId":16725,)"
                    R"("modeId":"P","isUSB":true}],"padLink":"usb",)"
                    R"("port":"/dev/cu.usbmodem1101"})"
                    "\n"));
  EXPECT_EQ(devices({"--all"})["devices"],
            Json({ordinaryKeyboard, listed("Orlo3", {19530, 16725}, "P", true)}));
}

TEST_F(DeviceCommands, thePadOverBluetoothHasNoPort) {
  computer_.pad.connect(desk::Pad::Link::bluetooth);
  EXPECT_EQ(devices(), (Json{{"devices", {listed("Orlo3", {1256, 28705}, "P", false)}},
                             {"padLink", "wireless"},
                             {"port", nullptr}}));
  computer_.pad.setMode("M");
  EXPECT_EQ(devices()["devices"], Json::array({listed("Orlo3", {1452, 544}, "M", false)}));
}

TEST_F(DeviceCommands, aModeWithoutAnIdentityIsKnownByItsName) {
  computer_.pad.setMode("R");
  computer_.pad.connect(desk::Pad::Link::bluetooth);
  const Json report = devices();
  ASSERT_EQ(report["devices"].size(), 1U);
  EXPECT_EQ(report["devices"][0]["name"], "Orlo3-R");
  EXPECT_EQ(report["devices"][0]["modeId"], "R");
}

TEST_F(DeviceCommands, onePadUnderTwoIdentitiesIsListedOnceUnlessAllAreAsked) {
  computer_.attach({19530, 16725});
  computer_.attach({1256, 28705});
  EXPECT_EQ(devices()["devices"].size(), 1U);
  EXPECT_EQ(devices()["padLink"], "usb");
  EXPECT_EQ(devices({"--all"})["devices"].size(), 3U);
}

TEST_F(DeviceCommands, devicesTellsInWords) {
  EXPECT_EQ(run({"devices"}), printed("no devices\npad link: disconnected\nserial port: none\n"));
  computer_.pad.connect(desk::Pad::Link::usb);
  EXPECT_EQ(run({"devices", "--all"}), printed("Keyboard  4660:1\n"
                                               "Orlo3  19530:16725  mode P, cable\n"
                                               "pad link: usb\n"
                                               "serial port: /dev/cu.usbmodem1101\n"));
  computer_.pad.connect(desk::Pad::Link::bluetooth);
  EXPECT_EQ(run({"devices"}), printed("Orlo3  1256:28705  mode P, Bluetooth\n"
                                      "pad link: wireless\n"
                                      "serial port: none\n"));
}

TEST_F(DeviceCommands, aNameThatIsNoTextIsMendedInJson) {
  computer_.desk.attach({.product = "Bad \xFF name",
                         .identity = {7, 9},
                         .interfaces = {{DeviceDescription::keyboard}}});
  const Json all = devices({"--all"})["devices"];
  ASSERT_EQ(all.size(), 2U);
  EXPECT_TRUE(all[0]["name"].get<std::string>().starts_with("Bad ")) << all;
}

// status

class StatusCommand : public DeviceCommands {
protected:
  Json status() const {
    const Answer answer = on("data", {"status", "--json"});
    EXPECT_EQ(answer.code, 0) << answer.err;
    EXPECT_EQ(answer.err, "");
    return Json::parse(answer.out);
  }
};

TEST_F(StatusCommand, tellsThePermissionsAndWhereThingsAre) {
  EXPECT_EQ(on("data", {"status", "--json"}),
            printed(R"({"accessibilityGranted":true,"inputMonitoringGranted":true,)"
                    R"("trellivarGrabbed":false,"dataDir":")" +
                    path("data") +
                    R"(","log":"/tmp/trellivar.log"})"
                    "\n"));
  computer_.desk.setTrusted(false);
  EXPECT_EQ(status()["accessibilityGranted"], false);
  EXPECT_EQ(status()["inputMonitoringGranted"], true);
  computer_.desk.setTrusted(true);
  for (const auto access : {desk::Access::denied, desk::Access::unknown}) {
    computer_.desk.setInputMonitoring(access);
    EXPECT_EQ(status()["accessibilityGranted"], true);
    EXPECT_EQ(status()["inputMonitoringGranted"], false);
  }
}

TEST_F(StatusCommand, aPadCountsAsInterceptedWhenItIsThereAndHasBindings) {
  computer_.pad.connect(desk::Pad::Link::usb);
  EXPECT_EQ(status()["trellivarGrabbed"], false) << "nothing is bound";
  expectDone({"bind", "P", "1", "cmd+d"});
  EXPECT_EQ(status()["trellivarGrabbed"], true);
  computer_.pad.connect(desk::Pad::Link::away);
  EXPECT_EQ(status()["trellivarGrabbed"], false);
}

TEST_F(StatusCommand, asksForNothingAndRemapsNothing) {
  expectDone({"bind", "P", "1", "cmd+d"});
  computer_.desk.setTrusted(false);
  computer_.desk.setInputMonitoring(desk::Access::unknown);
  status();
  EXPECT_TRUE(computer_.platform.prompts().empty());
  computer_.desk.setTrusted(true);
  computer_.pad.connect(desk::Pad::Link::usb);
  status();
  computer_.pressPad(1);
  EXPECT_EQ(computer_.heard(), "left_control+ c+(left_control) c-(left_control) left_control-");
}

TEST_F(StatusCommand, tellsInWords) {
  computer_.desk.setInputMonitoring(desk::Access::denied);
  EXPECT_EQ(on("data", {"status"}), printed("Accessibility:     yes\n"
                                            "Input Monitoring:  no\n"
                                            "pad intercepted:   no\n"
                                            "data folder:       " +
                                            path("data") +
                                            "\n"
                                            "log:               /tmp/trellivar.log\n"));
}

TEST_F(StatusCommand, refusesProfilesThatCannotBeReadAndLeavesThemAlone) {
  const std::string broken = store("[\n{");
  const Answer answer = on("data", {"status"});
  EXPECT_EQ(answer.code, 2);
  EXPECT_EQ(answer.out, "");
  EXPECT_TRUE(answer.err.starts_with("trellivarctl: " + profilesFile() + ":2: ")) << answer.err;
  EXPECT_EQ(contentOf(profilesFile()), broken);
}

// monitor

/// Ctrl-C comes two seconds after the start unless said otherwise.
class MonitorCommand : public DeviceCommands {
protected:
  MonitorCommand() {
    ownInterruptions = 0;
    before_ = std::signal(SIGINT, countOwn);
  }
  ~MonitorCommand() override { std::signal(SIGINT, before_); }

  void at(double seconds, std::function<void()> block) {
    computer_.desk.queue().asyncAfter(Seconds(seconds), std::move(block)).detach();
  }
  void pressAt(double seconds, desk::Desk::DeviceId device, const std::string& key) {
    at(seconds, [this, device, key] { computer_.desk.press(device, KeyName(key)); });
  }
  void releaseAt(double seconds, desk::Desk::DeviceId device, const std::string& key) {
    at(seconds, [this, device, key] { computer_.desk.release(device, KeyName(key)); });
  }
  void padAt(double seconds, int key) {
    at(seconds, [this, key] { computer_.pad.press(key); });
    at(seconds + 0.05, [this, key] { computer_.pad.release(key); });
  }
  void interruptAt(double seconds) {
    at(seconds, [] { std::raise(SIGINT); });
  }

  Answer monitor(const Arguments& further = {}) {
    interruptAt(2);
    return monitorUntilInterrupted(further);
  }
  Answer monitorUntilInterrupted(const Arguments& further = {}) {
    Arguments command{"trellivarctl", "monitor"};
    command.insert(command.end(), further.begin(), further.end());
    std::vector<const char*> argv;
    for (const std::string& argument : command)
      argv.push_back(argument.c_str());
    std::istringstream in;
    std::ostringstream err;
    const int code =
        cli::run(static_cast<int>(argv.size()), argv.data(), {.in = in, .out = out_, .err = err});
    return {code, out_.str(), err.str()};
  }

  desk::Desk::DeviceId keyboard() const { return computer_.keyboard; }

  std::ostringstream out_;

private:
  void (*before_)(int) = nullptr;
};

TEST_F(MonitorCommand, tellsEveryPressAndReleaseAsARecording) {
  pressAt(0.5, keyboard(), "left_command");
  pressAt(0.625, keyboard(), "c");
  releaseAt(0.75, keyboard(), "c");
  releaseAt(1, keyboard(), "left_command");
  const Answer answer = monitor();
  EXPECT_EQ(answer, printed(R"({"key":{"keyCode":"left_command"},"phase":"down","timestamp":0.0,)"
                            R"("isModifier":true,"vendorId":4660,"productId":1})"
                            "\n"
                            R"({"key":{"keyCode":"c"},"phase":"down","timestamp":0.125,)"
                            R"("isModifier":false,"vendorId":4660,"productId":1})"
                            "\n"
                            R"({"key":{"keyCode":"c"},"phase":"up","timestamp":0.25,)"
                            R"("isModifier":false,"vendorId":4660,"productId":1})"
                            "\n"
                            R"({"key":{"keyCode":"left_command"},"phase":"up","timestamp":0.5,)"
                            R"("isModifier":true,"vendorId":4660,"productId":1})"
                            "\n"));
  EXPECT_EQ(json({"classify", "-"}, answer.out),
            Json::parse(R"({"chord":{"key":{"keyCode":"c"},"modifiers":["left_command"]}})"));
}

TEST_F(MonitorCommand, whatItTellsOfThePadIsItsSignature) {
  computer_.pad.connect(desk::Pad::Link::usb);
  pressAt(0.1, keyboard(), "q");
  padAt(0.5, 2);
  releaseAt(1, keyboard(), "q");
  const Answer answer = monitor();
  EXPECT_EQ(
      json({"signature", "--vendor", "19530", "--product", "16725", "-"}, answer.out),
      Json::parse(R"({"codes":[{"keyCode":"left_control"},{"keyCode":"v"}],"isChord":true})"));
  EXPECT_EQ(json({"recorded-output", "--vendor", "19530", "--product", "16725", "-"}, answer.out),
            Json::parse(R"({"sequence":{"keys":[{"keyCode":"q"}]}})"));
}

TEST_F(MonitorCommand, tellsOfMediaKeysAndButtonsAndIgnoresWhatCapturesDoNotKnow) {
  for (const std::string key : {"mute", "button3", "f1"}) {
    pressAt(0.1, keyboard(), key);
    releaseAt(0.2, keyboard(), key);
  }
  std::map<std::string, int> kinds;
  std::istringstream lines(monitor().out);
  for (std::string line; std::getline(lines, line);) {
    const Json key = Json::parse(line)["key"];
    ++kinds[key["keyCode"].get<std::string>() + " " + key.value("kind", "keyCode")];
  }
  EXPECT_EQ(kinds, (std::map<std::string, int>{{"mute consumerKeyCode", 2},
                                               {"button3 pointingButton", 2}}));
}

TEST_F(MonitorCommand, tellsEachEventWhenItHappens) {
  pressAt(0.5, keyboard(), "a");
  std::string toldSoFar;
  at(0.501, [&] { toldSoFar = out_.str(); });
  const Answer answer = monitor();
  EXPECT_EQ(answer.out, toldSoFar);
  EXPECT_NE(toldSoFar, "");
}

TEST_F(MonitorCommand, hearsDevicesThatCameLater) {
  at(0.5, [this] { computer_.pad.connect(desk::Pad::Link::usb); });
  padAt(1, 1);
  const Answer answer = monitor();
  EXPECT_EQ(std::ranges::count(answer.out, '\n'), 4) << answer.out;
}

TEST_F(MonitorCommand, oneDeviceIsChosenByItsIdentity) {
  computer_.pad.connect(desk::Pad::Link::usb);
  for (const std::string device : {"4660:1", "0x1234:0x1", "4660:0x01"}) {
    out_.str("");
    padAt(0.25, 1);
    pressAt(0.5, keyboard(), "a");
    releaseAt(0.75, keyboard(), "a");
    const Answer answer = monitor({"--device", device});
    EXPECT_EQ(answer.code, 0);
    std::istringstream lines(answer.out);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
      EXPECT_EQ(Json::parse(line)["vendorId"], 4660) << device;
    EXPECT_EQ(count, 2) << device;
  }
  out_.str("");
  padAt(0.25, 1);
  EXPECT_EQ(monitor({"--device", "4660:2"}), printed("")) << "both numbers count";
}

TEST_F(MonitorCommand, refusesWhatIsNoIdentity) {
  EXPECT_EQ(monitor({"--device", "4660"}),
            badInput(R"(--device: expected VENDOR:PRODUCT, found "4660")"));
  for (const std::string device : {"", ":", "1:", ":1", "a:1", "1:b", "1:2:3", "1:2 ", "1.0:2"}) {
    const Answer answer = monitor({"--device", device});
    EXPECT_EQ(answer.code, 2) << device;
    EXPECT_EQ(answer.out, "");
    EXPECT_TRUE(answer.err.starts_with("trellivarctl: --device: ")) << answer.err;
  }
}

TEST_F(MonitorCommand, withoutPermissionItSaysWhatToPermit) {
  for (const auto access : {desk::Access::denied, desk::Access::unknown}) {
    computer_.desk.setInputMonitoring(access);
    const Answer answer = monitor();
    EXPECT_EQ(answer.code, 1);
    EXPECT_EQ(answer.out, "");
    EXPECT_NE(answer.err.find("permit Input Monitoring"), std::string::npos) << answer.err;
    EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1);
  }
}

TEST_F(MonitorCommand, goesOnUntilItIsInterruptedAndGivesTheSignalBack) {
  pressAt(3600, keyboard(), "a");
  releaseAt(3601, keyboard(), "a");
  pressAt(3603, keyboard(), "b");
  interruptAt(3602);
  const Answer answer = monitorUntilInterrupted();
  EXPECT_EQ(answer.code, 0);
  EXPECT_EQ(answer.err, "");
  EXPECT_EQ(std::ranges::count(answer.out, '\n'), 2) << answer.out;
  EXPECT_EQ(ownInterruptions, 0) << "it was the command's";
  std::raise(SIGINT);
  EXPECT_EQ(ownInterruptions, 1) << "and now it is ours again";
}

TEST_F(MonitorCommand, letsEveryEventThroughToTheApplications) {
  pressAt(0.5, keyboard(), "a");
  releaseAt(0.6, keyboard(), "a");
  monitor();
  EXPECT_EQ(computer_.heard(), "a+ a-");
}

TEST_F(MonitorCommand, endsWhenNobodyReadsAnyMore) {
  pressAt(0.5, keyboard(), "a");
  at(0.4, [this] { out_.setstate(std::ios::badbit); });
  const Answer answer = monitor();
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.err, "trellivarctl: standard output cannot be written\n");
  EXPECT_LT(computer_.desk.queue().now(), Instant(Seconds(1))) << "before the interruption";
  computer_.pass(2); // the interruption is ours
  EXPECT_EQ(ownInterruptions, 1);
}

} // namespace
} // namespace trellivar::cli
