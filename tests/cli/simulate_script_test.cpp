#include "tests/cli/simulation_fixture.h"

namespace trellivar::cli {
namespace {

/// Scripts that are not carried out.
class SimulateScript : public SimulationTest {
protected:
  /// The second step is wrong: one line says so, nothing is told of the first, and nothing is
  /// written, not even the data folder.
  void expectBad(const std::string& step, const std::string& message) const {
    const std::string script = bind("P", 1, commandD) + "\n\n" + step;
    const std::string name = file("script", script);
    const auto before = tree();
    for (const Arguments& further : {Arguments{}, {"--json"}}) {
      Arguments command{"simulate"};
      command.insert(command.end(), further.begin(), further.end());
      command.push_back(name);
      EXPECT_EQ(on("data", command), badInput(name + ":3: " + message));
      command.back() = "-";
      EXPECT_EQ(on("data", command, script), badInput("-:3: " + message));
    }
    EXPECT_EQ(tree(), before);
  }
};

struct Wrong {
  std::string step;
  std::string message;
};

TEST_F(SimulateScript, aStepIsAnObjectOfAKnownKind) {
  for (const Wrong& wrong : std::vector<Wrong>{
           {R"({"dance":1})", "there is no such step"},
           {R"({})", "there is no such step"},
           {R"({"Press":1})", "there is no such step"},
           {R"({"hold":1})", "there is no such step"},
           {R"({"press":1,"wait":3})", "a step does one thing, not press and wait"},
           {R"([{"press":1}])", "expected an object, found a list"},
           {R"("press")", "expected an object, found a text"},
           {R"(null)", "expected an object, found null"},
       })
    expectBad(wrong.step, wrong.message);
}

TEST_F(SimulateScript, aStepSaysWhatItNeeds) {
  for (const Wrong& wrong : std::vector<Wrong>{
           {R"({"connect":"wifi"})",
            R"(connect: expected one of none, usb, bluetooth, found "wifi")"},
           {R"({"connect":true})", "connect: expected a text, found true"},
           {R"({"connect":{"vendorId":1}})", "connect.productId: missing"},
           {R"({"mode":"X"})", R"(mode: expected P, M or R, found "X")"},
           {R"({"mode":"p"})", R"(mode: expected P, M or R, found "p")"},
           {R"({"mode":1})", "mode: expected a text, found the number 1"},
           {R"({"press":4})", "press: the pad has keys 1 to 3"},
           {R"({"press":0})", "press: the pad has keys 1 to 3"},
           {R"({"press":[1,4]})", "press[1]: the pad has keys 1 to 3"},
           {R"({"press":1.5})",
            "press: expected an integer from -2147483648 to 2147483647, found the number 1.5"},
           {R"({"press":"1"})",
            "press: expected an integer from -2147483648 to 2147483647, found a text"},
           {R"({"press":1,"hold":-0.1})", "hold: expected seconds from 0 to a week"},
           {R"({"press":1,"hold":"long"})", "hold: expected a number, found a text"},
           {R"({"press":1,"stagger":604801})", "stagger: expected seconds from 0 to a week"},
           {R"({"type":"a"})", "type: expected a list, found a text"},
           {R"({"type":["a","any"]})", R"(type[1]: the keyboard has no key "any")"},
           {R"({"type":[1]})", "type[0]: expected a text, found the number 1"},
           {R"({"learn":4})", "learn: the pad has keys 1 to 3"},
           {R"({"learn":true})",
            "learn: expected an integer from -2147483648 to 2147483647, found true"},
           {R"({"record":-1})", "record: the pad has keys 1 to 3"},
           {R"({"wait":-1})", "wait: expected seconds from 0 to a week"},
           {R"({"wait":604800.5})", "wait: expected seconds from 0 to a week"},
           {R"({"wait":null})", "wait: expected a number, found null"},
           {R"({"write":false})", "write: expected true"},
           {R"({"write":1})", "write: expected true or false, found the number 1"},
           {R"({"status":false})", "status: expected true"},
           {R"({"grant":"accessibility"})", "grant: expected a list, found a text"},
           {R"({"grant":["camera"]})",
            R"(grant[0]: expected one of accessibility, inputMonitoring, found "camera")"},
           {R"({"revoke":["accessibility",1]})", "revoke[1]: expected a text, found the number 1"},
           {R"({"disableTap":"now"})",
            R"(disableTap: expected one of timeout, userInput, found "now")"},
           {R"({"disableTap":true})", "disableTap: expected a text, found true"},
       })
    expectBad(wrong.step, wrong.message);
}

TEST_F(SimulateScript, aBindingIsReadWhole) {
  for (const Wrong& wrong : std::vector<Wrong>{
           {R"({"bind":{}})", "bind.mode: missing"},
           {R"({"bind":{"mode":"P","key":1}})", "bind.output: missing"},
           {bind("X", 1, commandD), R"(bind.mode: expected P, M or R, found "X")"},
           {bind("P", 4, commandD), "bind.key: the pad has keys 1 to 3"},
           {bind("P", 1, commandD, R"(,"label":7)"),
            "bind.label: expected a text, found the number 7"},
           {bind("P", 1, "3"), "bind.output: expected an object, found the number 3"},
       })
    expectBad(wrong.step, wrong.message);
}

TEST_F(SimulateScript, whatIsNoJsonIsReportedWithItsLine) {
  for (const std::string step : {"press 1", R"({"press":1)", R"({"press":1}})", "{", "\xFF"}) {
    const std::string script = askStatus + "\n" + step;
    const Answer answer = run({"simulate", "-"}, script);
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.out, "");
    EXPECT_TRUE(answer.err.starts_with("trellivarctl: -:2: ")) << answer.err;
    EXPECT_EQ(answer.err.find('\n'), answer.err.size() - 1);
  }
}

TEST_F(SimulateScript, limitsThemselvesAreAllowed) {
  const Answer answer =
      run({"simulate", "--json", "-"},
          text({R"({"wait":604800})", R"({"wait":0})", R"({"press":3,"hold":0,"stagger":0})",
                R"({"press":[]})", R"({"type":[]})", R"({"grant":[]})"}));
  EXPECT_EQ(answer, printed(""));
}

TEST_F(SimulateScript, profilesThatCannotBeReadAreLeftAloneBeforeAnythingHappens) {
  const std::string before = store(R"([{"name":"P"}])");
  for (const Arguments& command : {Arguments{"simulate", "-"}, {"simulate"}}) {
    const Answer answer = on("data", command, bind("P", 1, commandD));
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.out, "");
    EXPECT_TRUE(answer.err.starts_with("trellivarctl: " + profilesFile() + ":")) << answer.err;
    EXPECT_EQ(contentOf(profilesFile()), before);
    EXPECT_EQ(treeOf(path("data")).size(), 1U);
  }
}

} // namespace
} // namespace trellivar::cli
