#include "tests/cli/cli_fixture.h"

namespace trellivar::cli {
namespace {

class FrameCommand : public CliTest {
protected:
  Answer frame(const std::string& line, const std::string& seq = "7") const {
    return run({"frame", "--seq", seq}, line);
  }
};

std::string digits(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i)
    text += static_cast<char>('0' + i % 10);
  return text;
}

TEST_F(FrameCommand, leavesACommandOf63BytesWhole) {
  EXPECT_EQ(frame(digits(63)), printed(digits(63) + "\n"));
}

TEST_F(FrameCommand, cutsACommandOf64BytesInTwo) {
  const std::string line = digits(64);
  EXPECT_EQ(frame(line),
            printed("S7[1/2]" + line.substr(0, 55) + "\nS7[2/2]" + line.substr(55) + "\n"));
}

TEST_F(FrameCommand, oneNewlineAtTheEndIsNoPartOfTheCommand) {
  EXPECT_EQ(frame(digits(63) + "\n"), printed(digits(63) + "\n"));
  EXPECT_EQ(frame("a\r\n"), printed("a\r\n"));
}

TEST_F(FrameCommand, takesSequenceNumbersFrom1To9) {
  const std::string line = digits(64);
  for (int seq = 1; seq <= 9; ++seq) {
    const std::string expected = "S" + std::to_string(seq) + "[1/2]";
    EXPECT_TRUE(frame(line, std::to_string(seq)).out.starts_with(expected));
    EXPECT_TRUE(frame(line, "0x" + std::to_string(seq)).out.starts_with(expected));
  }
  for (const char* seq : {"0", "10", "-1", "0xA"})
    EXPECT_EQ(frame(line, seq), badInput("--seq: expected a number from 1 to 9"));
  EXPECT_EQ(frame(line, "one").code, 2);
}

TEST_F(FrameCommand, replacesACharacterThatIsCut) {
  const std::string line = digits(54) + "é" + digits(20);
  EXPECT_EQ(frame(line), printed("S7[1/2]" + digits(54) + "\xEF\xBF\xBD\nS7[2/2]\xEF\xBF\xBD" +
                                 digits(20) + "\n"));
}

TEST_F(FrameCommand, refusesMoreThanOneLine) {
  for (const char* lines : {"a\nb", "a\nb\n", "a\n\n", "\n\n"})
    EXPECT_EQ(frame(lines), badInput("-:2: expected one command line"));
}

TEST_F(FrameCommand, refusesInvalidUtf8) {
  for (const char* bytes : {"a\xff", "\xc3\n", "\xed\xa0\x80"})
    EXPECT_EQ(frame(bytes), badInput("-:1: the command is not valid UTF-8"));
}

} // namespace
} // namespace trellivar::cli
