#include "tests/cli/cli_fixture.h"

namespace trellivar::cli {
namespace {

constexpr auto redo =
    R"({"chord":{"modifiers":["right_command","left_shift"],"key":{"keyCode":"z"}}})";
constexpr auto mute = R"({"sequence":{"keys":[{"keyCode":"mute","kind":"consumerKeyCode"}]}})";

using OutputCommands = CliTest;

TEST_F(OutputCommands, expandPrintsTheEventsOfTheEngine) {
  EXPECT_EQ(run({"expand", file("output", redo)}),
            printed(R"([{"sender":0,"kind":"keyDown","name":"right_command"},)"
                    R"({"sender":0,"kind":"keyDown","name":"left_shift"},)"
                    R"({"sender":0,"kind":"keyDown","name":"z"},)"
                    R"({"sender":0,"kind":"keyUp","name":"z"},)"
                    R"({"sender":0,"kind":"keyUp","name":"left_shift"},)"
                    R"({"sender":0,"kind":"keyUp","name":"right_command"}])"
                    "\n"));
}

TEST_F(OutputCommands, expandLosesTheKindOfAKey) {
  EXPECT_EQ(run({"expand", "-"}, mute), printed(R"([{"sender":0,"kind":"keyDown","name":"mute"},)"
                                                R"({"sender":0,"kind":"keyUp","name":"mute"}])"
                                                "\n"));
}

TEST_F(OutputCommands, expandOfNothingIsAnEmptyList) {
  EXPECT_EQ(run({"expand", "-"}, R"({"modifiers":{"_0":[]}})"), printed("[]\n"));
}

TEST_F(OutputCommands, macroPrintsTheStepsInThePadsOwnText) {
  EXPECT_EQ(run({"macro", file("output", redo)}),
            printed(R"([{"t":"down","k":"Meta","c":91},{"t":"wait","ms":30},)"
                    R"({"t":"down","k":"Shift","c":16},{"t":"wait","ms":30},)"
                    R"({"t":"down","k":"Z","c":90},{"t":"wait","ms":30},)"
                    R"({"t":"up","k":"Z","c":90},{"t":"wait","ms":30},)"
                    R"({"t":"up","k":"Shift","c":16},{"t":"wait","ms":30},)"
                    R"({"t":"up","k":"Meta","c":91}])"
                    "\n"));
}

TEST_F(OutputCommands, macroOfALoneModifierKeepsItsSide) {
  EXPECT_EQ(run({"macro", "-"}, R"({"modifiers":{"_0":["right_shift"]}})"),
            printed(R"([{"t":"down","k":"ShiftRight","c":161},{"t":"wait","ms":30},)"
                    R"({"t":"up","k":"ShiftRight","c":161}])"
                    "\n"));
}

TEST_F(OutputCommands, macroIsNullWithoutFirmwareEquivalentAndEmptyForNothing) {
  EXPECT_EQ(run({"macro", "-"}, mute), printed("null\n"));
  EXPECT_EQ(run({"macro", "-"}, R"({"sequence":{"keys":[{"keyCode":"a"},{"keyCode":"f1"}]}})"),
            printed("null\n"));
  EXPECT_EQ(run({"macro", "-"}, R"({"sequence":{"keys":[]}})"), printed("[]\n"));
}

TEST_F(OutputCommands, refuseOutputsOfAnotherShape) {
  struct Case {
    std::string output, where;
  };
  const Case cases[] = {
      {"[]", "1: expected an object, found a list"},
      {"{}", "1: Invalid number of keys found, expected one."},
      {R"({"sequence":{"keys":[]},"modifiers":{"_0":[]}})",
       "1: Invalid number of keys found, expected one."},
      {R"({"sequence":{}})", "sequence.keys: missing"},
      {R"({"sequence":{"keys":[{"keyCode":"a"},{"keyCode":7}]}})",
       "sequence.keys[1].keyCode: expected a text, found the number 7"},
      {R"({"chord":{"modifiers":["command"],"key":{"keyCode":"a"}}})",
       R"(chord.modifiers[0]: unknown modifier "command")"},
      {R"({"chord":{"modifiers":[]}})", "chord.key: missing"},
      {R"({"modifiers":[]})", "modifiers: expected an object, found a list"},
      {R"({"modifiers":{"_0":null}})", "modifiers._0: expected a list, found null"},
  };
  for (const char* command : {"expand", "macro"})
    for (const auto& [output, where] : cases)
      EXPECT_EQ(run({command, file("output", output)}), badInput(path("output") + ":" + where));
}

} // namespace
} // namespace trellivar::cli
