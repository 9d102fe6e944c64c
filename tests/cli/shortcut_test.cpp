#include "tests/cli/cli_fixture.h"

namespace trellivar::cli {
namespace {

class Shortcut : public CliTest {
protected:
  Answer bind(const std::string& shortcut) const {
    return run({"--data-dir", path("data"), "profiles", "bind", "P", "1", "--", shortcut});
  }
  /// The output that a shortcut is stored as, in one line.
  std::string stored(const std::string& shortcut) const {
    const Answer answer = bind(shortcut);
    if (answer != printed("")) return answer.err;
    return json({"--data-dir", path("data"), "profiles", "show", "P",
                 "--json"})["mappings"][0]["output"]
        .dump();
  }
};

std::string modifiers(const std::string& list) { return R"({"modifiers":{"_0":[)" + list + "]}}"; }
std::string chordOf(const std::string& key, const std::string& list = "") {
  return R"({"chord":{"key":)" + key + R"(,"modifiers":[)" + list + "]}}";
}

TEST_F(Shortcut, everyShortFormIsAModifier) {
  const std::pair<const char*, const char*> forms[] = {
      {"cmd", "left_command"},    {"shift", "left_shift"},   {"ctrl", "left_control"},
      {"opt", "left_option"},     {"rcmd", "right_command"}, {"rshift", "right_shift"},
      {"rctrl", "right_control"}, {"ropt", "right_option"}};
  for (const auto& [shortForm, name] : forms) {
    const std::string quoted = '"' + std::string(name) + '"';
    EXPECT_EQ(stored(shortForm), modifiers(quoted));
    EXPECT_EQ(stored(name), modifiers(quoted));
    EXPECT_EQ(stored(std::string(shortForm) + "+c"), chordOf(R"({"keyCode":"c"})", quoted));
    EXPECT_EQ(stored(std::string(shortForm) + ",c"),
              R"({"sequence":{"keys":[{"keyCode":)" + quoted + R"(},{"keyCode":"c"}]}})");
  }
}

TEST_F(Shortcut, modifiersKeepTheOrderTyped) {
  EXPECT_EQ(stored("rshift+cmd+c"),
            chordOf(R"({"keyCode":"c"})", R"("right_shift","left_command")"));
  EXPECT_EQ(stored("cmd+rshift+c"),
            chordOf(R"({"keyCode":"c"})", R"("left_command","right_shift")"));
  EXPECT_EQ(stored("c+opt+cmd"), chordOf(R"({"keyCode":"c"})", R"("left_option","left_command")"));
  EXPECT_EQ(stored("opt+cmd"), modifiers(R"("left_option","left_command")"));
}

TEST_F(Shortcut, keysHaveTheKindOfTheirName) {
  EXPECT_EQ(stored("c"), chordOf(R"({"keyCode":"c"})"));
  EXPECT_EQ(stored("play_or_pause"),
            chordOf(R"({"keyCode":"play_or_pause","kind":"consumerKeyCode"})"));
  EXPECT_EQ(stored("button3"), chordOf(R"({"keyCode":"button3","kind":"pointingButton"})"));
  EXPECT_EQ(stored("button32"), chordOf(R"({"keyCode":"button32","kind":"pointingButton"})"));
  EXPECT_EQ(stored("cmd+mute"),
            chordOf(R"({"keyCode":"mute","kind":"consumerKeyCode"})", R"("left_command")"));
}

TEST_F(Shortcut, everyNameOfTheSystemCanBeBound) {
  for (const Json& key : json({"keys", "--json"}))
    EXPECT_NE(stored(key["name"]).find("\"" + key["name"].get<std::string>() + "\""),
              std::string::npos)
        << key;
}

TEST_F(Shortcut, commasMakeASequence) {
  EXPECT_EQ(stored("h,e,l,l,o"), R"({"sequence":{"keys":[{"keyCode":"h"},{"keyCode":"e"},)"
                                 R"({"keyCode":"l"},{"keyCode":"l"},{"keyCode":"o"}]}})");
  EXPECT_EQ(stored("a,mute"), R"({"sequence":{"keys":[{"keyCode":"a"},)"
                              R"({"keyCode":"mute","kind":"consumerKeyCode"}]}})");
}

TEST_F(Shortcut, capitalsAndSpacesDoNotMatter) {
  EXPECT_EQ(stored(" Cmd + Shift+ C "),
            chordOf(R"({"keyCode":"c"})", R"("left_command","left_shift")"));
  EXPECT_EQ(stored("H, i"), R"({"sequence":{"keys":[{"keyCode":"h"},{"keyCode":"i"}]}})");
}

TEST_F(Shortcut, anUnknownNameListsTheNearest) {
  const std::pair<const char*, const char*> typed[] = {{"comand", "left_command"},
                                                       {"command+c", "left_command"},
                                                       {"esc", "escape"},
                                                       {"opt+space", "spacebar"},
                                                       {"enter", "return_or_enter"},
                                                       {"volume", "volume_increment"},
                                                       {"spacebr", "spacebar"},
                                                       {"cmd+escpae", "escape"},
                                                       {"h,vlume_increment", "volume_increment"},
                                                       {"crtl+c", "ctrl"},
                                                       {"buton3", "button3"},
                                                       {"rigth_shift", "right_shift"},
                                                       {"button33", "button3"}};
  for (const auto& [shortcut, meant] : typed) {
    const Answer answer = bind(shortcut);
    EXPECT_EQ(answer.code, 2) << shortcut;
    EXPECT_TRUE(answer.err.starts_with("trellivarctl: unknown key \"")) << answer.err;
    const auto list = answer.err.find("; the nearest names are ");
    ASSERT_NE(list, std::string::npos) << answer.err;
    EXPECT_NE(answer.err.find(meant, list), std::string::npos) << answer.err;
  }
}

TEST_F(Shortcut, wrongOnesSayWhyAndWriteNothing) {
  const std::pair<std::string, std::string> wrong[] = {
      {"", "the shortcut lacks a key name"},
      {" ", "the shortcut lacks a key name"},
      {"+", "the shortcut lacks a key name"},
      {"cmd+", "the shortcut lacks a key name"},
      {"+c", "the shortcut lacks a key name"},
      {",", "the shortcut lacks a key name"},
      {"a,", "the shortcut lacks a key name"},
      {"a,,b", "the shortcut lacks a key name"},
      {"cmd+cmd+c", "the shortcut names cmd twice"},
      {"cmd+left_command", "the shortcut names left_command twice"},
      {"a+b", "a shortcut has one key beside its modifiers; b is another"},
      {"cmd+a+a", "a shortcut has one key beside its modifiers; a is another"},
      {"cmd+c,v", "a sequence consists of single keys; \"cmd+c\" is a combination"},
  };
  for (const auto& [shortcut, reason] : wrong) {
    EXPECT_EQ(bind(shortcut), badInput(reason)) << shortcut;
    EXPECT_TRUE(tree().empty());
  }
}

TEST_F(Shortcut, onlyThePlainSpellingOfAButtonIsAName) {
  for (const char* shortcut : {"button0", "button33", "button03", "button", "button+3"})
    EXPECT_EQ(bind(shortcut).code, 2) << shortcut;
}

TEST_F(Shortcut, longAndInvalidTextsAreErrorsInOneLine) {
  for (const std::string& shortcut : {std::string(100'000, 'x'), std::string("\xff\xfe"),
                                      std::string("c\nd"), std::string("fast_forward_")}) {
    const Answer answer = bind(shortcut);
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.err.find('\n'), answer.err.size() - 1);
    EXPECT_NO_THROW((void)Json(answer.err).dump());
  }
}

TEST_F(Shortcut, showsInTheFormThatIsTyped) {
  for (const char* shortcut : {"cmd+shift+c", "ropt", "play_or_pause", "button3", "h,e,l,l,o",
                               "rcmd+rshift+rctrl+ropt+opt+ctrl+left_arrow"}) {
    ASSERT_EQ(bind(shortcut), printed(""));
    EXPECT_EQ(run({"--data-dir", path("data"), "profiles", "show", "P"}),
              printed("P\n  1  " + std::string(shortcut) + "\n"));
  }
}

} // namespace
} // namespace trellivar::cli
