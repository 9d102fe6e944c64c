#include "tests/cli/cli_fixture.h"

namespace trellivar::cli {
namespace {

class ResolveCommand : public CliTest {
protected:
  Json resolve(const std::string& vendor, const std::string& product,
               const Arguments& further = {}) const {
    Arguments arguments{"resolve", "--vendor", vendor, "--product", product};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return json(arguments);
  }
};

constexpr auto emptyKeys = R"([{"col":0,"id":1,"row":0,"signature":{"codes":[],"isChord":false}},)"
                           R"({"col":1,"id":2,"row":0,"signature":{"codes":[],"isChord":false}},)"
                           R"({"col":2,"id":3,"row":0,"signature":{"codes":[],"isChord":false}}])";

TEST_F(ResolveCommand, describesAnIdentityOfThePrimaryMode) {
  const Json answer = resolve("0x4C4A", "0x4155");
  EXPECT_EQ(answer["resolve"].dump(), R"({"device":"Orlo3","modeId":"P"})");
  EXPECT_EQ(answer["known"], "Orlo3");
  EXPECT_EQ(answer["knownAcrossModes"], "Orlo3");
  EXPECT_EQ(answer["isKnown"], true);
  EXPECT_EQ(answer["identities"].dump(),
            R"([{"vendorId":19530,"productId":16725},{"vendorId":1256,"productId":28705},)"
            R"({"vendorId":1452,"productId":556}])");
  EXPECT_EQ(answer["layout"]["keys"][1]["signature"].dump(),
            R"({"codes":[{"keyCode":"v"},{"keyCode":"left_control"}],"isChord":true})");
  EXPECT_EQ(resolve("19530", "16725"), answer);
}

TEST_F(ResolveCommand, printsExactlyTheseMembersInThisOrder) {
  EXPECT_EQ(run({"resolve", "--vendor", "1", "--product", "2"}),
            printed(R"({"resolve":null,"known":null,"knownAcrossModes":null,"isKnown":false,)"
                    R"("identities":[],"layout":null})"
                    "\n"));
}

TEST_F(ResolveCommand, anIdentityOfAnotherModeIsKnownAcrossModesOnly) {
  const Json answer = resolve("0x05AC", "0x0220");
  EXPECT_EQ(answer["resolve"].dump(), R"({"device":"Orlo3","modeId":"M"})");
  EXPECT_EQ(answer["known"], nullptr);
  EXPECT_EQ(answer["knownAcrossModes"], "Orlo3");
  EXPECT_EQ(answer["isKnown"], false);
  EXPECT_EQ(answer["identities"], Json::array());
  EXPECT_EQ(answer["layout"], nullptr);
}

TEST_F(ResolveCommand, aNameEvenAnEmptyOneAsksForTheLayoutOfAnyMode) {
  for (const char* name : {"", "Anything"})
    EXPECT_EQ(resolve("0x05AC", "0x0220", {"--name", name})["layout"]["keys"].dump(), emptyKeys)
        << name;
}

TEST_F(ResolveCommand, aNameTellsTheModeWhateverItsCase) {
  const Json r = resolve("1", "2", {"--name", "oRLO3-r"});
  EXPECT_EQ(r["resolve"].dump(), R"({"device":"Orlo3","modeId":"R"})");
  EXPECT_EQ(r["layout"], nullptr);
  EXPECT_EQ(r["knownAcrossModes"], nullptr);
  const Json p = resolve("1", "2", {"--name", "Orlo3-P"});
  EXPECT_EQ(p["resolve"].dump(), R"({"device":"Orlo3","modeId":"P"})");
  EXPECT_TRUE(p["layout"].is_object());
  EXPECT_EQ(p["isKnown"], false);
}

TEST_F(ResolveCommand, anotherNameTellsNothing) {
  for (const char* name : {"Orlo3", "Orlo3-X", "Orlo3-P ", "xOrlo3-P"})
    EXPECT_EQ(resolve("1", "2", {"--name", name})["resolve"], nullptr) << name;
}

TEST_F(ResolveCommand, refusesIdsThatAreNoIntegers) {
  EXPECT_EQ(run({"resolve", "--vendor", "0xFFFFFFFF", "--product", "2"}),
            badInput("--vendor: expected an integer from -2147483648 to 2147483647, found "
                     "\"0xFFFFFFFF\""));
  EXPECT_EQ(run({"resolve", "--vendor", "1", "--product", "two"}),
            badInput("--product: expected an integer from -2147483648 to 2147483647, found "
                     "\"two\""));
}

TEST_F(ResolveCommand, takesNegativeAndOctalLookingIds) {
  EXPECT_EQ(resolve("-5", "2")["isKnown"], false);
  EXPECT_EQ(resolve("019530", "0016725")["isKnown"], true);
}

} // namespace
} // namespace trellivar::cli
