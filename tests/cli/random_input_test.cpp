#include "tests/cli/cli_fixture.h"

#include <rapidcheck/gtest.h>

#include <algorithm>

namespace trellivar::cli {
namespace {

/// Pieces of which random texts come closer to what the commands read than random bytes do.
const std::vector<std::string> pieces{
    "{",
    "}",
    "[",
    "]",
    ",",
    ":",
    "\n",
    "\r\n",
    " ",
    "null",
    "true",
    "0",
    "1",
    "-1",
    "0.5",
    "1e999",
    "99999999999999999999",
    "\"\"",
    "\"t\"",
    "\"sets\"",
    "\"device\"",
    "\"profile\"",
    "\"senders\"",
    "\"42\"",
    "\"paused\"",
    "\"flush\"",
    "\"kind\"",
    "\"keyDown\"",
    "\"name\"",
    "\"sender\"",
    "\"key\"",
    "\"keyCode\"",
    "\"a\"",
    "\"chord\"",
    "\"sequence\"",
    "\"keys\"",
    "\"modifiers\"",
    "\"_0\"",
    "\"left_shift\"",
    "\"id\"",
    "\"mappings\"",
    "\"\\ud800\"",
    "\xff",
    "\"",
    "\\",
    "{\"t\":0,\"flush\":true}\n",
    "{\"sequence\":{\"keys\":[]}}",
    "{\"sets\":[]}",
    "{\"t\":1,\"sender\":42,\"kind\":\"keyDown\",\"name\":\"a\"}\n"};

const std::vector<std::vector<std::string>> commands{
    {"compile", "-"},
    {"replay", "--sets", "-", "/dev/null"},
    {"replay", "--sets", TRELLIVAR_SAMPLES "/chord.sets.json", "-"},
    {"classify", "-"},
    {"signature", "--vendor", "1", "--product", "2", "-"},
    {"recorded-output", "--vendor", "1", "--product", "2", "-"},
    {"expand", "-"},
    {"macro", "-"},
    {"frame", "--seq", "1"},
    {"profiles", "import", "-"},
    {"write", "--dry-run", "--profiles", "-"}};

class RandomInput : public CliTest {
protected:
  /// Whatever the input, it is used or it is bad; a message takes one line.
  void check(const std::string& input) const {
    for (const Arguments& command : commands) {
      Arguments arguments{"--data-dir", path("data")};
      arguments.insert(arguments.end(), command.begin(), command.end());
      const Answer answer = run(arguments, input);
      const bool isNothingToWrite = command[0] == "write" && answer.code == 1 &&
                                    answer.err.find("Nothing to write") != std::string::npos;
      RC_ASSERT(answer.code == 0 || answer.code == 2 || isNothingToWrite);
      RC_ASSERT(std::ranges::count(answer.err, '\n') == (answer.code == 0 ? 0 : 1));
      RC_ASSERT(answer.code == 0 || answer.out.empty());
      RC_ASSERT(answer.code != 2 || answer.err.starts_with("trellivarctl: -:"));
    }
  }
};

RC_GTEST_FIXTURE_PROP(RandomInput, ofBytesIsUsedOrBad, ()) {
  const auto bytes = *rc::gen::container<std::string>(rc::gen::arbitrary<char>());
  check(bytes);
}

RC_GTEST_FIXTURE_PROP(RandomInput, ofPiecesIsUsedOrBad, ()) {
  const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces));
  std::string text;
  for (const std::string& part : parts)
    text += part;
  check(text);
}

RC_GTEST_FIXTURE_PROP(RandomInput, ofADamagedSampleIsUsedOrBad, ()) {
  std::string text = contentOf(TRELLIVAR_SAMPLES "/pause.events.jsonl");
  const auto changes = *rc::gen::inRange<std::size_t>(1, 4);
  for (std::size_t i = 0; i < changes; ++i)
    text[*rc::gen::inRange<std::size_t>(0, text.size())] = *rc::gen::arbitrary<char>();
  text.resize(*rc::gen::inRange<std::size_t>(0, text.size()));
  check(text);
}

} // namespace
} // namespace trellivar::cli
