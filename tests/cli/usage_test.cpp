#include "engine/version.h"
#include "tests/cli/cli_fixture.h"

#include <algorithm>

namespace trellivar::cli {
namespace {

const std::vector<std::string> commands{
    "compile", "replay",  "classify", "signature", "recorded-output", "expand",  "macro",
    "frame",   "resolve", "strings",  "keys",      "profiles",        "devices", "write",
    "query",   "monitor", "status",   "simulate"};
const std::vector<std::string> profilesCommands{"list",  "show",   "bind",  "unbind",
                                                "label", "export", "import"};

/// Whether the text has a line for the command, as the list in a help text has.
bool lists(const std::string& help, const std::string& command) {
  return help.find("\n  " + command + " ") != std::string::npos;
}

class Usage : public CliTest {
protected:
  Answer runInData(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--data-dir", path("data")});
    return run(arguments);
  }
  void expectUsageError(const Arguments& arguments) const {
    const Answer answer = runInData(arguments);
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.out, "");
    EXPECT_TRUE(answer.err.starts_with("trellivarctl: ")) << answer.err;
    EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1) << answer.err;
    EXPECT_TRUE(tree().empty()) << testing::PrintToString(arguments);
  }
};

TEST_F(Usage, helpNamesEveryCommand) {
  for (const char* flag : {"--help", "-h"}) {
    const Answer answer = run({flag});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.err, "");
    for (const std::string& command : commands)
      EXPECT_TRUE(lists(answer.out, command)) << command;
  }
  const Answer answer = run({"profiles", "--help"});
  EXPECT_EQ(answer.code, 0);
  for (const std::string& command : profilesCommands)
    EXPECT_TRUE(lists(answer.out, command)) << command;
}

TEST_F(Usage, everyCommandHasHelpAndDoesNothingElse) {
  std::vector<Arguments> each;
  for (const std::string& command : commands)
    each.push_back({command, "--help"});
  for (const std::string& command : profilesCommands)
    each.push_back({"profiles", command, "--help"});
  each.push_back({"profiles", "bind", "P", "1", "a", "--help"});
  for (const Arguments& arguments : each) {
    const Answer answer = runInData(arguments);
    EXPECT_EQ(answer.code, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(answer.err, "");
    EXPECT_NE(answer.out.find("Usage: trellivarctl"), std::string::npos);
    EXPECT_TRUE(tree().empty());
  }
}

TEST_F(Usage, helpNamesTheFlagsOfACommand) {
  const std::string replay = run({"replay", "--help"}).out;
  for (const char* flag : {"--sets", "--chord-window", "--manual-flush", "EVENTS"})
    EXPECT_NE(replay.find(flag), std::string::npos) << flag;
  EXPECT_NE(run({"profiles", "bind", "--help"}).out.find("--label"), std::string::npos);
}

TEST_F(Usage, versionIsThatOfTheEngine) {
  EXPECT_EQ(run({"--version"}),
            printed("trellivarctl " + std::string(TrellivarEngine::version) + "\n"));
}

TEST_F(Usage, aMissingOrUnknownCommandNamesTheCommands) {
  std::string list;
  for (const std::string& command : commands)
    list += (list.empty() ? "" : ", ") + command;
  EXPECT_EQ(run({}), badInput("a command is missing; the commands of trellivarctl are " + list));
  EXPECT_EQ(run({"complie"}),
            badInput("unknown command \"complie\"; the commands of trellivarctl are " + list));
  EXPECT_EQ(run({"--bar"}),
            badInput("unknown option \"--bar\"; the commands of trellivarctl are " + list));
  EXPECT_EQ(runInData({"profiles", "lisst"}),
            badInput("unknown command \"lisst\"; the commands of profiles are list, show, bind, "
                     "unbind, label, export, import"));
}

TEST_F(Usage, missingArgumentsAreUsageErrors) {
  for (const Arguments& arguments :
       std::vector<Arguments>{{"compile"},
                              {"replay", "x"},
                              {"replay", "--sets", "x"},
                              {"classify"},
                              {"signature", "--vendor", "1", "x"},
                              {"recorded-output", "--product", "1", "x"},
                              {"expand"},
                              {"macro"},
                              {"frame"},
                              {"frame", "--seq"},
                              {"resolve", "--vendor", "1"},
                              {"profiles"},
                              {"profiles", "bind", "P", "1"},
                              {"profiles", "unbind", "P"},
                              {"profiles", "label", "P", "1"},
                              {"profiles", "export"},
                              {"profiles", "import"}})
    expectUsageError(arguments);
}

TEST_F(Usage, furtherArgumentsAreUsageErrorsAndNothingIsDone) {
  for (const Arguments& arguments :
       std::vector<Arguments>{{"compile", "x", "y"},
                              {"strings", "en"},
                              {"keys", "--yaml"},
                              {"keys", "strings"},
                              {"profiles", "list", "P"},
                              {"profiles", "show", "P", "M"},
                              {"profiles", "bind", "P", "1", "a", "b"},
                              {"profiles", "bind", "P", "1", "a", "--labl", "x"},
                              {"profiles", "unbind", "P", "1", "2"},
                              {"profiles", "list", "show"},
                              {"profiles", "export", "-", "-"},
                              {"frame", "--seq", "1", "--seq", "2"},
                              {"query"},
                              {"query", "{}", "{}"},
                              {"query", "{}", "--timeout"},
                              {"query", "{}", "--timeout", "soon"},
                              {"query", "{}", "--timeout", "-1"},
                              {"query", "{}", "--timeout", "nan"},
                              {"write", "P"},
                              {"write", "--port"}})
    expectUsageError(arguments);
}

TEST_F(Usage, dataFolderMayBeNamedAnywhere) {
  for (const Arguments& arguments :
       std::vector<Arguments>{{"--data-dir", path("a"), "profiles", "list"},
                              {"profiles", "--data-dir", path("b"), "list"},
                              {"profiles", "list", "--data-dir", path("c")},
                              {"profiles", "list", "--data-dir=" + path("d")}})
    EXPECT_EQ(run(arguments).code, 0);
  for (const char* name : {"a", "b", "c", "d"})
    EXPECT_TRUE(std::filesystem::exists(path(name) + "/profiles.json")) << name;
  EXPECT_FALSE(std::filesystem::exists(path("home")));
}

TEST_F(Usage, anEmptyDataFolderIsNotTheApplicationsOwn) {
  for (const Arguments& arguments :
       std::vector<Arguments>{{"--data-dir", "", "profiles", "list"},
                              {"--data-dir=", "profiles", "bind", "P", "1", "a"},
                              {"--data-dir", "", "write", "--dry-run"}})
    EXPECT_EQ(run(arguments).code, 2);
  EXPECT_EQ(run({"--data-dir", "", "profiles", "list"}),
            badInput("--data-dir: expected a folder, found \"\""));
  EXPECT_TRUE(tree().empty());
}

TEST_F(Usage, diagnosticsNeedNoHome) {
  ::unsetenv("HOME");
  for (const Arguments& arguments :
       std::vector<Arguments>{{"compile", file("sets", R"({"sets":[]})")},
                              {"strings"},
                              {"keys"},
                              {"resolve", "--vendor", "1", "--product", "2"},
                              {"classify", "-"},
                              {"--data-dir", path("data"), "profiles", "list"}})
    EXPECT_EQ(run(arguments).code, 0);
  for (const Arguments& arguments :
       std::vector<Arguments>{{"profiles", "list"}, {"write", "--dry-run"}})
    EXPECT_EQ(run(arguments), failure("HOME is not set; name the data folder with --data-dir"));
  ::setenv("HOME", "", 1);
  EXPECT_EQ(run({"profiles", "list"}),
            failure("HOME is not set; name the data folder with --data-dir"));
}

TEST_F(Usage, aFileMayBeCalledLikeACommand) {
  const auto old = std::filesystem::current_path();
  file("keys", R"({"sets":[]})");
  std::filesystem::current_path(path("."));
  const Answer answer = run({"compile", "keys"});
  std::filesystem::current_path(old);
  EXPECT_EQ(answer, printed("{\"identities\":[]}\n"));
}

} // namespace
} // namespace trellivar::cli
