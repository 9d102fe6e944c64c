#include "tests/cli/cli_fixture.h"
#include "tests/cli/documents.h"

namespace trellivar::cli {
namespace {

using namespace documents;

using CompileCommand = CliTest;

TEST_F(CompileCommand, printsChordsAndSinglesOfAnUnknownPad) {
  EXPECT_EQ(run({"compile", file("sets", sets(otherPadSet()))}),
            printed(R"({"identities":[{"vendorId":7,"productId":9,)"
                    R"("chords":[{"members":["f","left_control"],)"
                    R"("output":{"sequence":{"keys":[{"keyCode":"x"}]}}}],)"
                    R"("singles":{"g":{"fire":{"sequence":{"keys":[{"keyCode":"y"}]}}}},)"
                    R"("normalization":{}}]})"
                    "\n"));
}

TEST_F(CompileCommand, printsAnEmptyTable) {
  EXPECT_EQ(run({"compile", "-"}, R"({"sets":[]})"), printed("{\"identities\":[]}\n"));
}

TEST_F(CompileCommand, sortsIdentitiesByVendorThenProduct) {
  std::string list;
  for (const char* ids : {R"("vendorId":300,"productId":1)", R"("vendorId":20,"productId":30)",
                          R"("vendorId":20,"productId":4)", R"("vendorId":-1,"productId":9)"})
    list += (list.empty() ? "" : ",") + otherPadSet(ids);
  std::vector<std::pair<int, int>> identities;
  const Json table = json({"compile", "-"}, sets(list));
  for (const Json& identity : table["identities"])
    identities.emplace_back(identity["vendorId"], identity["productId"]);
  EXPECT_EQ(identities, (std::vector<std::pair<int, int>>{{-1, 9}, {20, 4}, {20, 30}, {300, 1}}));
}

TEST_F(CompileCommand, listsChordsInTriggerOrderWithMembersSorted) {
  const std::string layout =
      device(R"("vendorId":7,"productId":9)",
             physicalKey(1, key("z") + "," + key("y"), true) + "," +
                 physicalKey(2, key("d") + "," + key("a") + "," + key("c"), true) + "," +
                 physicalKey(3, key("m") + "," + key("k"), true));
  const std::string bindings =
      profile("P", mapping(3, tap("1")) + "," + mapping(1, tap("2")) + "," + mapping(2, tap("3")));
  const Json table = json({"compile", "-"}, sets(mappingSet(layout, bindings)));
  Json members = Json::array();
  for (const Json& trigger : table["identities"][0]["chords"])
    members.push_back(trigger["members"]);
  EXPECT_EQ(members.dump(), R"([["k","m"],["y","z"],["a","c","d"]])");
}

TEST_F(CompileCommand, swallowsTheFurtherKeysOfASignatureThatIsNoChord) {
  const std::string layout =
      device(R"("vendorId":7,"productId":9)", physicalKey(1, key("a") + "," + key("b"), false));
  EXPECT_EQ(json({"compile", "-"},
                 sets(mappingSet(layout,
                                 profile("P", mapping(1, tap("x"))))))["identities"][0]["singles"],
            Json::parse(R"({"a":{"fire":{"sequence":{"keys":[{"keyCode":"x"}]}}},"b":"swallow"})"));
}

TEST_F(CompileCommand, printsNormalizationOfPortableSetsOnly) {
  const auto compiled = [&](const std::string& portable) {
    return json({"compile", "-"},
                sets(mappingSet(device(R"("vendorId":7,"productId":9)", ""),
                                profile("P", mapping(1, chord("left_shift", "a"))), portable)))
        .dump();
  };
  EXPECT_EQ(compiled(R"(,"portable":true)"),
            R"({"identities":[{"vendorId":7,"productId":9,"chords":[],"singles":{},)"
            R"("normalization":{"right_shift":"left_shift"}}]})");
  EXPECT_EQ(compiled(R"(,"portable":false)"), R"({"identities":[]})");
  EXPECT_EQ(compiled(""), R"({"identities":[]})");
}

TEST_F(CompileCommand, bindsEveryTransportOfAKnownPad) {
  const std::string pad = device(R"("vendorId":1256,"productId":28705)", "");
  const Json table =
      json({"compile", "-"}, sets(mappingSet(pad, profile("P", mapping(1, tap("x"))))));
  ASSERT_EQ(table["identities"].size(), 3u);
  EXPECT_EQ(table["identities"][0]["vendorId"], 1256);
  EXPECT_EQ(table["identities"][1]["vendorId"], 1452);
  EXPECT_EQ(table["identities"][2]["vendorId"], 19530);
  EXPECT_EQ(table["identities"][2]["chords"][0]["members"].dump(), R"(["c","left_control"])");
  EXPECT_TRUE(table["identities"][0]["singles"].contains("spacebar"));
}

TEST_F(CompileCommand, refusesALayoutThatNamesAKeyTwiceOfKnownPadsToo) {
  for (const char* ids :
       {R"("vendorId":7,"productId":9)", R"("vendorId":1256,"productId":28705)"}) {
    const std::string repeated =
        mappingSet(device(ids, physicalKey(4, "", false) + "," + physicalKey(5, "", false) + "," +
                                   physicalKey(4, "", false)),
                   profile("P", ""));
    EXPECT_EQ(run({"compile", file("sets", sets(otherPadSet() + "," + repeated))}),
              badInput(path("sets") + ":sets[1].device.layout.keys[2].id: key 4 is there twice"));
  }
}

TEST_F(CompileCommand, refusesARepeatedKeyInAPortableSetToo) {
  const std::string repeated =
      mappingSet(device(R"("vendorId":7,"productId":9)",
                        physicalKey(1, "", false) + "," + physicalKey(1, "", false)),
                 profile("P", ""), R"(,"portable":true)");
  EXPECT_EQ(run({"compile", "-"}, sets(repeated)),
            badInput("-:sets[0].device.layout.keys[1].id: key 1 is there twice"));
}

} // namespace
} // namespace trellivar::cli
