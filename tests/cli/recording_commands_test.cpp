#include "tests/cli/cli_fixture.h"
#include "tests/cli/documents.h"

namespace trellivar::cli {
namespace {

using namespace documents;

constexpr auto pad = R"("vendorId":7,"productId":9)";
constexpr auto keyboard = R"("vendorId":7,"productId":10)";

using RecordingCommands = CliTest;

TEST_F(RecordingCommands, classifyPrintsAChord) {
  const std::string events =
      recorded("right_shift", "down", "0", true) + recorded("left_command", "down", "0.125", true) +
      "\n" + recorded("k", "down", "0.25") + recorded("k", "up", "0.5") +
      recorded("left_command", "up", "0.75", true) + recorded("right_shift", "up", "0.75", true);
  EXPECT_EQ(
      run({"classify", file("events", events)}),
      printed(R"({"chord":{"key":{"keyCode":"k"},"modifiers":["left_command","right_shift"]}})"
              "\n"));
}

TEST_F(RecordingCommands, classifyPrintsASequenceAndLoneModifiers) {
  EXPECT_EQ(run({"classify", "-"},
                recorded("a", "down", "0") + recorded("a", "up", "1") + recorded("b", "down", "2")),
            printed(R"({"sequence":{"keys":[{"keyCode":"a"},{"keyCode":"b"}]}})"
                    "\n"));
  EXPECT_EQ(run({"classify", "-"}, recorded("left_option", "down", "0", true)),
            printed("{\"modifiers\":{\"_0\":[\"left_option\"]}}\n"));
}

TEST_F(RecordingCommands, classifyOrdersByTimestamp) {
  EXPECT_EQ(run({"classify", "-"},
                recorded("b", "down", "2") + recorded("a", "down", "0") + recorded("a", "up", "1")),
            printed(R"({"sequence":{"keys":[{"keyCode":"a"},{"keyCode":"b"}]}})"
                    "\n"));
}

TEST_F(RecordingCommands, classifyKeepsTheKindOfKeys) {
  EXPECT_EQ(run({"classify", "-"},
                R"({"key":{"keyCode":"mute","kind":"consumerKeyCode"},"phase":"down",)"
                R"("timestamp":0,"isModifier":false,"vendorId":1,"productId":2,"more":[]})"),
            printed(R"({"sequence":{"keys":[{"keyCode":"mute","kind":"consumerKeyCode"}]}})"
                    "\n"));
}

TEST_F(RecordingCommands, classifyOfNothingIsNullAndDone) {
  EXPECT_EQ(run({"classify", "-"}), printed("null\n"));
  EXPECT_EQ(run({"classify", "-"}, recorded("a", "up", "1")), printed("null\n"));
}

TEST_F(RecordingCommands, signatureTakesTheKeysOfTheDeviceInTheOrderRecorded) {
  const std::string events =
      recordedOn(keyboard, "q", "down", "0") + recordedOn(pad, "left_control", "down", "1", true) +
      recordedOn(pad, "c", "down", "1.125") + recordedOn(pad, "c", "up", "2") +
      recordedOn(pad, "left_control", "up", "2", true);
  const auto expected =
      printed(R"({"codes":[{"keyCode":"left_control"},{"keyCode":"c"}],"isChord":true})"
              "\n");
  EXPECT_EQ(run({"signature", "--vendor", "7", "--product", "9", file("events", events)}),
            expected);
  EXPECT_EQ(run({"signature", "--vendor", "0x7", "--product", "0X9", "-"}, events), expected);
}

TEST_F(RecordingCommands, signatureOfAnotherDeviceIsEmpty) {
  for (const Arguments& ids : {Arguments{"8", "9"}, Arguments{"7", "8"}})
    EXPECT_EQ(run({"signature", "--vendor", ids[0], "--product", ids[1], "-"},
                  recordedOn(pad, "c", "down", "1")),
              printed("{\"codes\":[],\"isChord\":false}\n"));
}

TEST_F(RecordingCommands, recordedOutputLeavesTheDeviceOut) {
  const std::string events = recordedOn(pad, "c", "down", "0") +
                             recordedOn(keyboard, "q", "down", "0.5") +
                             recordedOn(pad, "c", "up", "1");
  EXPECT_EQ(run({"recorded-output", "--vendor", "7", "--product", "9", file("events", events)}),
            printed("{\"sequence\":{\"keys\":[{\"keyCode\":\"q\"}]}}\n"));
  EXPECT_EQ(run({"recorded-output", "--vendor", "7", "--product", "9", "-"},
                recordedOn(pad, "c", "down", "0")),
            printed("null\n"));
}

TEST_F(RecordingCommands, octalLookingIdsAreDecimal) {
  const std::string events = recordedOn(R"("vendorId":10,"productId":16)", "c", "down", "1");
  EXPECT_EQ(run({"signature", "--vendor", "010", "--product", "0x10", "-"}, events),
            printed("{\"codes\":[{\"keyCode\":\"c\"}],\"isChord\":false}\n"));
}

TEST_F(RecordingCommands, refuseRecordsOfAnotherShape) {
  struct Case {
    std::string record, reason;
  };
  const Case cases[] = {
      {"7", "expected an object, found the number 7"},
      {R"({"phase":"down","timestamp":0,"isModifier":false,"vendorId":1,"productId":2})",
       "key: missing"},
      {R"({"key":{"keyCode":"a","kind":"x"},"phase":"down","timestamp":0,"isModifier":false})",
       R"(key.kind: unknown kind of key "x")"},
      {R"({"key":{"keyCode":"a"},"phase":"Down","timestamp":0,"isModifier":false})",
       R"(phase: expected "down" or "up", found "Down")"},
      {R"({"key":{"keyCode":"a"},"phase":"down","timestamp":false,"isModifier":false})",
       "timestamp: expected a number, found false"},
      {R"({"key":{"keyCode":"a"},"phase":"down","timestamp":0,"isModifier":0})",
       "isModifier: expected true or false, found the number 0"},
      {R"({"key":{"keyCode":"a"},"phase":"down","timestamp":0})", "isModifier: missing"},
  };
  for (const auto& [record, reason] : cases) {
    const std::string events = file("events", recordedOn(pad, "a", "down", "0") + "\r\n" + record);
    EXPECT_EQ(run({"classify", events}), badInput(events + ":3: " + reason));
    for (const char* command : {"signature", "recorded-output"})
      EXPECT_EQ(run({command, "--vendor", "1", "--product", "2", events}),
                badInput(events + ":3: " + reason));
  }
}

TEST_F(RecordingCommands, onlyTheDeviceCommandsNeedIds) {
  const std::string events = file("events", recorded("a", "down", "0"));
  EXPECT_EQ(run({"classify", events}).code, 0);
  for (const char* command : {"signature", "recorded-output"})
    EXPECT_EQ(run({command, "--vendor", "1", "--product", "2", events}),
              badInput(events + ":1: vendorId: missing"));
}

TEST_F(RecordingCommands, refuseIdsThatAreNoIntegers) {
  for (const std::string id : {"x", "", "7x", "0x", "0xg", "7.0", "2147483648", "-2147483649",
                               "0x80000000", "0x-7", "-0x7", "+7", "0o7"}) {
    for (const char* command : {"signature", "recorded-output"}) {
      const std::string expectation =
          ": expected an integer from -2147483648 to 2147483647, found \"" + id + "\"";
      EXPECT_EQ(run({command, "--vendor", id, "--product", "9", "-"}),
                badInput("--vendor" + expectation));
      EXPECT_EQ(run({command, "--vendor", "9", "--product", id, "-"}),
                badInput("--product" + expectation));
    }
  }
}

TEST_F(RecordingCommands, takeTheLargestAndNegativeIds) {
  const std::string events =
      recordedOn(R"("vendorId":2147483647,"productId":-5)", "c", "down", "1");
  EXPECT_EQ(run({"signature", "--vendor", "0x7fffFFFF", "--product", "-5", "-"}, events),
            printed("{\"codes\":[{\"keyCode\":\"c\"}],\"isChord\":false}\n"));
}

} // namespace
} // namespace trellivar::cli
