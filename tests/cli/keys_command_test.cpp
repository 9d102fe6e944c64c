#include "tests/cli/cli_fixture.h"

#include <set>

namespace trellivar::cli {
namespace {

class KeysCommand : public CliTest {
protected:
  Json keys() const { return json({"keys", "--json"}); }
  std::string key(const std::string& name) const {
    for (const Json& each : keys())
      if (each["name"] == name) return each.dump();
    return "absent";
  }
};

TEST_F(KeysCommand, listsEveryNameOnce) {
  std::set<std::string> names;
  for (const Json& each : keys())
    EXPECT_TRUE(names.insert(each["name"]).second) << each;
  EXPECT_EQ(names.size(), 68u + 8 + 6 + 32);
}

TEST_F(KeysCommand, leavesOutMembersThatDoNotApply) {
  EXPECT_EQ(key("a"), R"({"name":"a","keyCode":0,"firmware":{"name":"A","code":65}})");
  EXPECT_EQ(key("f1"), R"({"name":"f1","keyCode":122})");
  EXPECT_EQ(key("right_command"),
            R"({"name":"right_command","keyCode":54,"generic":1048576,"device":16})");
  EXPECT_EQ(key("volume_increment"), R"({"name":"volume_increment","auxKey":0})");
  EXPECT_EQ(key("fastforward"), R"({"name":"fastforward","auxKey":19})");
  EXPECT_EQ(key("fast_forward"), "absent");
  EXPECT_EQ(key("button1"), R"({"name":"button1","button":0})");
  EXPECT_EQ(key("button32"), R"({"name":"button32","button":31})");
}

TEST_F(KeysCommand, counts45FirmwareKeys) {
  int count = 0;
  for (const Json& each : keys())
    count += each.contains("firmware");
  EXPECT_EQ(count, 45);
}

TEST_F(KeysCommand, printsOneReadableLineAKey) {
  std::istringstream lines(run({"keys"}).out);
  std::string line;
  for (const Json& each : keys()) {
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line.substr(0, line.find(' ')), each["name"].get<std::string>());
    if (!each.contains("keyCode")) continue;
    EXPECT_NE((line + " ").find("keyCode " + each["keyCode"].dump() + " "), std::string::npos);
  }
  EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(KeysCommand, showsTheWholeKeyOnItsLine) {
  EXPECT_NE(
      run({"keys"}).out.find("left_shift                keyCode 56  generic 131072  device 2\n"),
      std::string::npos);
  EXPECT_NE(run({"keys"}).out.find("spacebar                  keyCode 49  firmware Space 32\n"),
            std::string::npos);
}

} // namespace
} // namespace trellivar::cli
