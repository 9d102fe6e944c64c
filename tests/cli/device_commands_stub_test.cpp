#include "tests/cli/profiles_fixture.h"

#include <algorithm>

namespace trellivar::cli {
namespace {

/// On a system without live input.
class DeviceCommandsWithoutInput : public ProfilesTest {
protected:
  static constexpr std::string_view note =
      "trellivarctl: this system has no live input or remapping for Trellivar, and no permissions "
      "for them: attached devices are not seen; \"trellivarctl simulate\" shows the engine at "
      "work\n";
};

TEST_F(DeviceCommandsWithoutInput, devicesListsNothingAndSaysWhy) {
  for (const Arguments& command : {Arguments{"devices", "--json"}, {"devices", "--json", "--all"}})
    EXPECT_EQ(run(command), (Answer{0,
                                    R"({"devices":[],"padLink":"disconnected","port":null})"
                                    "\n",
                                    std::string(note)}));
  EXPECT_EQ(run({"devices"}), (Answer{0,
                                      "no devices\n"
                                      "pad link: disconnected\n"
                                      "serial port: none\n",
                                      std::string(note)}));
}

TEST_F(DeviceCommandsWithoutInput, devicesTellsThePortAllTheSame) {
  discoverPort_ = [] { return "/dev/ttyACM0"; };
  EXPECT_EQ(run({"devices", "--json"}).out,
            R"({"devices":[],"padLink":"disconnected","port":"/dev/ttyACM0"})"
            "\n");
  EXPECT_TRUE(run({"devices"}).out.ends_with("serial port: /dev/ttyACM0\n"));
}

TEST_F(DeviceCommandsWithoutInput, statusCountsAsPermittedAndTellsWhereDataLives) {
  EXPECT_EQ(on("data", {"status", "--json"}),
            (Answer{0,
                    R"({"accessibilityGranted":true,"inputMonitoringGranted":true,)"
                    R"("trellivarGrabbed":false,"dataDir":")" +
                        path("data") +
                        R"(","log":"/tmp/trellivar.log"})"
                        "\n",
                    std::string(note)}));
  EXPECT_EQ(on("data", {"status"}).out, "Accessibility:     yes\n"
                                        "Input Monitoring:  yes\n"
                                        "pad intercepted:   no\n"
                                        "data folder:       " +
                                            path("data") +
                                            "\n"
                                            "log:               /tmp/trellivar.log\n");
}

TEST_F(DeviceCommandsWithoutInput, statusTellsTheApplicationsOwnFolderByDefault) {
  const std::string out = run({"status", "--json"}).out;
  EXPECT_EQ(Json::parse(out)["dataDir"], path("home") + "/Library/Application Support/Trellivar");
}

TEST_F(DeviceCommandsWithoutInput, statusWritesNothing) {
  const auto before = tree();
  on("data", {"status"});
  EXPECT_EQ(tree(), before);
}

TEST_F(DeviceCommandsWithoutInput, statusRefusesProfilesThatCannotBeReadAndLeavesThemAlone) {
  const std::string broken = store(R"([{"name":"P","id":7,"mappings":[]}])");
  for (const Arguments& command : {Arguments{"status"}, {"status", "--json"}}) {
    const Answer answer = on("data", command);
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.out, "");
    EXPECT_TRUE(answer.err.starts_with("trellivarctl: " + profilesFile() + ":[0].id: "))
        << answer.err;
    EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1) << answer.err;
    EXPECT_EQ(contentOf(profilesFile()), broken);
    EXPECT_EQ(treeOf(path("data")).size(), 1U);
  }
}

TEST_F(DeviceCommandsWithoutInput, monitorHearsNothingAndSaysWhy) {
  EXPECT_EQ(run({"monitor"}), (Answer{1, "", std::string(note)}));
  EXPECT_EQ(run({"monitor", "--device", "1:2"}), (Answer{1, "", std::string(note)}));
}

TEST_F(DeviceCommandsWithoutInput, monitorRefusesWhatIsNoIdentity) {
  EXPECT_EQ(run({"monitor", "--device", "12"}),
            badInput(R"(--device: expected VENDOR:PRODUCT, found "12")"));
}

} // namespace
} // namespace trellivar::cli
