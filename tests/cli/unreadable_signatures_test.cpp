#include "tests/cli/profiles_fixture.h"

#include <algorithm>
#include <utility>

namespace trellivar::cli {
namespace {

/// Learned keys that cannot be read are neither ignored nor overwritten.
class UnreadableSignatures : public ProfilesTest {
protected:
  std::string signaturesFile() const { return path("data") + "/signatures.json"; }
  void storeSignatures(std::string_view content) const {
    std::filesystem::create_directories(path("data"));
    put(signaturesFile(), content);
  }

  /// Both with a pad to work with and before anything is done.
  const std::vector<std::pair<Arguments, std::string>> commands{
      {{"status"}, ""},
      {{"status", "--json"}, ""},
      {{"simulate", "-"}, R"({"connect":"usb"})"},
      {{"simulate", "--json", "-"}, R"({"learn":1})"},
  };

  void expectRefusal(std::string_view where) const {
    const auto before = tree();
    for (const auto& [command, script] : commands) {
      const Answer answer = on("data", command, script);
      EXPECT_EQ(answer.code, 2) << testing::PrintToString(command);
      EXPECT_EQ(answer.out, "");
      EXPECT_TRUE(answer.err.starts_with("trellivarctl: " + signaturesFile() + ":" +
                                         std::string(where) + ": "))
          << answer.err;
      EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1) << answer.err;
      EXPECT_EQ(tree(), before) << testing::PrintToString(command);
    }
  }
};

TEST_F(UnreadableSignatures, areRefusedWithTheLineOfTheMistakeAndLeftAlone) {
  storeSignatures("[\n  1,\n]");
  expectRefusal("3");
  EXPECT_FALSE(std::filesystem::exists(profilesFile())) << "not even the first profiles are made";
}

TEST_F(UnreadableSignatures, areRefusedWithTheMemberThatIsWrong) {
  storeSignatures(R"([{"vendorId":1,"productId":2,"keySignatures":{}}])");
  expectRefusal("[0].keySignatures");
}

TEST_F(UnreadableSignatures, leaveTheProfilesBesideThemAsTheyAre) {
  store(R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"Old","mappings":[]}])");
  storeSignatures("");
  expectRefusal("1");
}

TEST_F(UnreadableSignatures, doNotMatterToASimulationOnNoData) {
  storeSignatures("[");
  EXPECT_EQ(run({"simulate", "-"}, R"({"connect":"usb"})").code, 0);
}

TEST_F(UnreadableSignatures, doNotMatterToTheProfiles) {
  storeSignatures("[");
  EXPECT_EQ(profiles({"list"}).code, 0);
  EXPECT_EQ(contentOf(signaturesFile()), "[");
}

} // namespace
} // namespace trellivar::cli
