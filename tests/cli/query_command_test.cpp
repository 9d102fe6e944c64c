#include "engine/orlo3_protocol.h"
#include "tests/cli/pad_fixture.h"

namespace trellivar::cli {
namespace {

using firmware::Faults;

class QueryCommand : public PadTest {
protected:
  Answer query(const std::string& line, const Arguments& further = {}) const {
    Arguments arguments{"query", line, "--port", port()};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return run(arguments);
  }
};

const std::string firmwareQuery = R"({"o":"get","t":"firmware"})";
const Answer version = printed("{\"op\":\"get\",\"target\":\"firmware\",\"value\":\"1.0.7\"}\n");

TEST_F(QueryCommand, printsTheReply) {
  EXPECT_EQ(query(firmwareQuery), version);
  EXPECT_EQ(query(firmwareQuery, {"--timeout", "2.5"}), version);
}

TEST_F(QueryCommand, printsNullAndFailsWhenThereIsNoReply) {
  const Answer noReply{1, "null\n", ""};
  EXPECT_EQ(query(R"({"o":"get","t":"weather"})", {"--timeout", "0.05"}), noReply);
  EXPECT_EQ(query(firmwareQuery, {"--timeout", "0"}), noReply);
  connect({.reply = Faults::Reply::withoutOperation});
  EXPECT_EQ(query(firmwareQuery, {"--timeout", "0.05"}), noReply);
}

TEST_F(QueryCommand, sendsTheLineAsItIs) {
  const std::string line = Orlo3Protocol::writeKeyMacro(1, "P", "click", {}, 1);
  for (const std::string& frame : Orlo3Protocol::frame(line, 1))
    query(frame, {"--timeout", "0.05"});
  EXPECT_TRUE(pad().macro("P", 1));
}

TEST_F(QueryCommand, findsThePortUnlessItIsNamed) {
  EXPECT_EQ(run({"query", firmwareQuery}), failure(needPad));
  discoverPort_ = [this] { return std::optional(port()); };
  EXPECT_EQ(run({"query", firmwareQuery}), version);
}

TEST_F(QueryCommand, aPortThatCannotBeOpenedIsNamedWithTheReason) {
  EXPECT_EQ(run({"query", firmwareQuery, "--port", "/dev/none"}),
            failure("open /dev/none: No such file or directory"));
}

TEST_F(QueryCommand, aTimeThatIsNoneIsBadUsage) {
  for (const char* time : {"-1", "inf", "nan"})
    EXPECT_EQ(query(firmwareQuery, {"--timeout", time}),
              badInput("--timeout: expected seconds, 0 or more"))
        << time;
  EXPECT_EQ(pad().counts().commands(), 0);
}

} // namespace
} // namespace trellivar::cli
