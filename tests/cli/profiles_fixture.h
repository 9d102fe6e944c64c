#pragma once

#include "tests/cli/cli_fixture.h"

namespace trellivar::cli {

/// Runs commands on a data folder of the test's own.
class ProfilesTest : public CliTest {
protected:
  Answer on(const std::string& folder, const Arguments& command,
            const std::string& input = "") const {
    Arguments arguments{"--data-dir", path(folder)};
    arguments.insert(arguments.end(), command.begin(), command.end());
    return run(arguments, input);
  }
  Answer profiles(const Arguments& command, const std::string& input = "") const {
    Arguments arguments{"profiles"};
    arguments.insert(arguments.end(), command.begin(), command.end());
    return on("data", arguments, input);
  }
  void expectDone(const Arguments& command) const { EXPECT_EQ(profiles(command), printed("")); }

  std::string profilesFile() const { return path("data") + "/profiles.json"; }
  Json stored() const { return Json::parse(contentOf(profilesFile())); }
  /// The mappings of the first profile in the file.
  Json mappings() const { return stored()[0]["mappings"]; }
  /// Stores a list as another program would have.
  std::string store(std::string_view content) const {
    std::filesystem::create_directories(path("data"));
    put(profilesFile(), content);
    return std::string(content);
  }
};

/// A list with a further profile, in an order and a spelling that nothing would write by itself.
inline const std::string oddList =
    R"([{"name":"R","id":"00000000-0000-4000-8000-00000000000a","mappings":[]},)"
    R"({"name":"Games","id":"00000000-0000-4000-8000-00000000000B","mappings":)"
    R"([{"fromKeyId":9,"output":{"sequence":{"keys":[{"keyCode":"w"}]}},"label":"Walk"}]},)"
    R"({"name":"P","id":"00000000-0000-4000-8000-00000000000C","mappings":)"
    R"([{"fromKeyId":3,"output":{"sequence":{"keys":[{"keyCode":"x"}]}}},)"
    R"({"fromKeyId":1,"output":{"chord":{"modifiers":["left_command"],"key":{"keyCode":"c"}}},"label":"Copy"}]},)"
    R"({"name":"M","id":"00000000-0000-4000-8000-00000000000D","mappings":[]}])";

} // namespace trellivar::cli
