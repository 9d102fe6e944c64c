#include "tests/cli/profiles_fixture.h"

#include <set>

namespace trellivar::cli {
namespace {

using ProfilesEdit = ProfilesTest;

const std::string a = R"({"sequence":{"keys":[{"keyCode":"a"},{"keyCode":"a"}]}})";

TEST_F(ProfilesEdit, everyCommandStartsAFreshFolder) {
  const std::vector<std::pair<Arguments, int>> commands{
      {{"profiles", "list"}, 0},
      {{"profiles", "show"}, 0},
      {{"profiles", "show", "M", "--json"}, 0},
      {{"profiles", "bind", "R", "2", "a"}, 0},
      {{"profiles", "unbind", "P", "1"}, 1},
      {{"profiles", "label", "P", "1", "x"}, 1},
      {{"profiles", "export", "-"}, 0},
      {{"profiles", "import", file("list", oddList)}, 0},
      {{"write", "--dry-run"}, 1}};
  int number = 0;
  for (const auto& [command, code] : commands) {
    const std::string folder = "fresh" + std::to_string(number++);
    EXPECT_EQ(on(folder, command, "").code, code) << testing::PrintToString(command);
    EXPECT_EQ(contentOf(path(folder) + "/profiles-legacy-backup.json"), "[]\n");
    const Json list = Json::parse(contentOf(path(folder) + "/profiles.json"));
    EXPECT_EQ(list.size(), command[1] == "import" ? 4u : 3u);
  }
}

TEST_F(ProfilesEdit, aFreshFolderHoldsThreeEmptyProfiles) {
  EXPECT_EQ(profiles({"list"}), printed("P  no bindings\nM  no bindings\nR  no bindings\n"));
  std::set<std::string> ids;
  std::string names;
  for (const Json& profile : stored()) {
    names += profile["name"];
    ids.insert(profile["id"]);
    EXPECT_EQ(profile["mappings"], Json::array());
  }
  EXPECT_EQ(names, "PMR");
  EXPECT_EQ(ids.size(), 3u);
  const auto before = tree();
  profiles({"list"});
  EXPECT_EQ(tree(), before);
}

TEST_F(ProfilesEdit, listCountsBindingsInTheOrderOfTheFile) {
  store(oddList);
  EXPECT_EQ(profiles({"list"}),
            printed("R  no bindings\nGames  1 binding\nP  2 bindings\nM  no bindings\n"));
  EXPECT_EQ(contentOf(profilesFile()), oddList);
}

TEST_F(ProfilesEdit, showPrintsBindingsByKeyWithTheirLabels) {
  store(oddList);
  const std::string p = "P\n  1  cmd+c                     Copy\n  3  x\n";
  EXPECT_EQ(profiles({"show", "P"}), printed(p));
  EXPECT_EQ(profiles({"show"}),
            printed("R\n  no bindings\nGames\n  9  w                         Walk\n" + p +
                    "M\n  no bindings\n"));
}

TEST_F(ProfilesEdit, showJsonPrintsThePersistedShape) {
  store(oddList);
  const std::string p = R"({
  "id": "00000000-0000-4000-8000-00000000000C",
  "mappings": [
    {
      "fromKeyId": 3,
      "output": {
        "sequence": {
          "keys": [
            {
              "keyCode": "x"
            }
          ]
        }
      }
    },
    {
      "fromKeyId": 1,
      "label": "Copy",
      "output": {
        "chord": {
          "key": {
            "keyCode": "c"
          },
          "modifiers": [
            "left_command"
          ]
        }
      }
    }
  ],
  "name": "P"
}
)";
  EXPECT_EQ(profiles({"show", "P", "--json"}), printed(p));
  EXPECT_EQ(profiles({"show", "--json", "P"}), printed(p));
  const Answer all = profiles({"show", "--json"});
  EXPECT_EQ(all.code, 0);
  const Json list = Json::parse(all.out);
  ASSERT_EQ(list.size(), 4u);
  EXPECT_EQ(list[1]["name"], "Games");
  EXPECT_EQ(list[2], Json::parse(p));
  EXPECT_EQ(list[0]["id"], "00000000-0000-4000-8000-00000000000A");
}

TEST_F(ProfilesEdit, showNamesAnOutputOfNothing) {
  store(R"([{"id":"00000000-0000-4000-8000-00000000000A","name":"P","mappings":)"
        R"([{"fromKeyId":1,"output":{"modifiers":{"_0":[]}}}]},)"
        R"({"id":"00000000-0000-4000-8000-00000000000B","name":"M","mappings":[]},)"
        R"({"id":"00000000-0000-4000-8000-00000000000C","name":"R","mappings":[]}])");
  EXPECT_EQ(profiles({"show", "P"}), printed("P\n  1  nothing\n"));
}

TEST_F(ProfilesEdit, bindStoresInTheProfileOfTheModeOnly) {
  store(oddList);
  expectDone({"bind", "M", "2", "a,a", "--label", "Twice"});
  Json expected = Json::parse(oddList);
  expected[0]["id"] = "00000000-0000-4000-8000-00000000000A";
  expected[3]["mappings"] =
      Json::array({{{"fromKeyId", 2}, {"label", "Twice"}, {"output", Json::parse(a)}}});
  const auto sorted = [](const Json& json) { return nlohmann::json::parse(json.dump()); };
  EXPECT_EQ(sorted(stored()), sorted(expected));
}

TEST_F(ProfilesEdit, theFileKeepsItsFormOfPrettyPrintingAndSortedKeys) {
  expectDone({"bind", "P", "2", "a", "--label", "é"});
  const std::string content = contentOf(profilesFile());
  EXPECT_EQ(content, nlohmann::json::parse(content).dump(2) + "\n");
}

TEST_F(ProfilesEdit, bindingAgainMovesToTheEndAndKeepsTheLabel) {
  expectDone({"bind", "P", "1", "b", "--label", "One"});
  expectDone({"bind", "P", "2", "c"});
  expectDone({"bind", "P", "1", "a,a"});
  ASSERT_EQ(mappings().size(), 2u);
  EXPECT_EQ(mappings()[0]["fromKeyId"], 2);
  EXPECT_FALSE(mappings()[0].contains("label"));
  EXPECT_EQ(mappings()[1].dump(), R"({"fromKeyId":1,"label":"One","output":)" + a + "}");
}

TEST_F(ProfilesEdit, bindReplacesOrClearsTheLabel) {
  expectDone({"bind", "P", "1", "a", "--label", "One"});
  expectDone({"bind", "P", "1", "a", "--label", " \t Two words\n "});
  EXPECT_EQ(mappings()[0]["label"], "Two words");
  for (const char* nothing : {"", "  \n\t"}) {
    expectDone({"bind", "P", "1", "a", "--label", "One"});
    expectDone({"bind", "P", "1", "a", "--label", nothing});
    EXPECT_FALSE(mappings()[0].contains("label"));
  }
}

TEST_F(ProfilesEdit, labelIsTrimmedAndEmptyRemovesIt) {
  expectDone({"bind", "P", "1", "a"});
  expectDone({"bind", "P", "2", "b"});
  expectDone({"label", "P", "1", "  Copy it  "});
  EXPECT_EQ(mappings()[0]["label"], "Copy it");
  EXPECT_FALSE(mappings()[1].contains("label"));
  for (const char* nothing : {"", "   "}) {
    expectDone({"label", "P", "1", "x"});
    expectDone({"label", "P", "1", nothing});
    EXPECT_FALSE(mappings()[0].contains("label"));
  }
  EXPECT_EQ(mappings()[0]["fromKeyId"], 1);
}

TEST_F(ProfilesEdit, labelsAreTakenAsTheyAre) {
  for (const std::string label :
       {"{}", "[a,b]", "%%", "\"quoted\"", "复制", "0x1", "list", "a\nb"}) {
    expectDone({"bind", "P", "1", "a", "--label", label});
    EXPECT_EQ(mappings()[0]["label"], label);
    expectDone({"label", "P", "1", "other"});
    expectDone({"label", "P", "1", label});
    EXPECT_EQ(mappings()[0]["label"], label);
  }
  expectDone({"label", "P", "1", "--", "-x"});
  EXPECT_EQ(mappings()[0]["label"], "-x");
  expectDone({"bind", "P", "1", "a", "--label", "--json"});
  EXPECT_EQ(mappings()[0]["label"], "--json");
}

TEST_F(ProfilesEdit, labelsThatAreNoTextAreRefused) {
  store(oddList);
  for (const Arguments& command : std::vector<Arguments>{{"bind", "P", "1", "a", "--label", "\xff"},
                                                         {"label", "P", "1", "a\xc3"}})
    EXPECT_EQ(profiles(command), badInput("the label is not valid UTF-8"));
  EXPECT_EQ(contentOf(profilesFile()), oddList);
}

TEST_F(ProfilesEdit, unbindRemovesEveryBindingOfTheKey) {
  store(R"([{"id":"00000000-0000-4000-8000-00000000000A","name":"P","mappings":)"
        R"([{"fromKeyId":1,"output":{"modifiers":{"_0":[]}}},)"
        R"({"fromKeyId":2,"output":{"modifiers":{"_0":[]}}},)"
        R"({"fromKeyId":1,"output":{"modifiers":{"_0":["left_shift"]}}}]},)"
        R"({"id":"00000000-0000-4000-8000-00000000000B","name":"M","mappings":)"
        R"([{"fromKeyId":1,"output":{"modifiers":{"_0":[]}}}]},)"
        R"({"id":"00000000-0000-4000-8000-00000000000C","name":"R","mappings":[]}])");
  expectDone({"unbind", "P", "1"});
  ASSERT_EQ(mappings().size(), 1u);
  EXPECT_EQ(mappings()[0]["fromKeyId"], 2);
  EXPECT_EQ(stored()[1]["mappings"].size(), 1u);
}

TEST_F(ProfilesEdit, unbindAndLabelOfAnUnboundKeyFailAndWriteNothing) {
  store(oddList);
  EXPECT_EQ(profiles({"unbind", "P", "2"}), failure("key 2 of mode P has no binding"));
  EXPECT_EQ(profiles({"label", "M", "1", "x"}), failure("key 1 of mode M has no binding"));
  EXPECT_EQ(contentOf(profilesFile()), oddList);
}

TEST_F(ProfilesEdit, modeIsExactlyPMOrR) {
  for (const std::string mode : {"p", "m", "r", "", "PM", " P", "X", "Games"})
    for (const Arguments& command : std::vector<Arguments>{{"show", mode},
                                                           {"show", "--json", mode},
                                                           {"bind", mode, "1", "a"},
                                                           {"unbind", mode, "1"},
                                                           {"label", mode, "1", "x"}})
      EXPECT_EQ(profiles(command), badInput("MODE: expected P, M or R, found \"" + mode + "\""));
  EXPECT_TRUE(tree().empty());
}

TEST_F(ProfilesEdit, keyIsAKeyOfThePad) {
  for (const std::string key : {"0", "4", "-1", "100"})
    for (const Arguments& command : std::vector<Arguments>{
             {"bind", "P", key, "a"}, {"unbind", "P", key}, {"label", "P", key, "x"}})
      EXPECT_EQ(profiles(command), badInput("KEY: the pad has no key " + key));
  for (const std::string key : {"one", "", "1.0", "99999999999"})
    EXPECT_EQ(
        profiles({"bind", "P", key, "a"}),
        badInput("KEY: expected an integer from -2147483648 to 2147483647, found \"" + key + "\""));
  EXPECT_TRUE(tree().empty());
  for (const char* key : {"1", "2", "3", "0x3"})
    expectDone({"bind", "P", key, "a"});
  EXPECT_EQ(mappings().size(), 3u);
}

} // namespace
} // namespace trellivar::cli
