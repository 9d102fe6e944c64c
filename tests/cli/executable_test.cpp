#include "tests/cli/cli_fixture.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>

namespace trellivar::cli {
namespace {

/// The program itself, run by a shell. $T is the program, $D an empty folder and the home.
class Executable : public testing::Test {
protected:
  Executable() {
    ::setenv("T", TRELLIVARCTL, 1);
    ::setenv("D", folder_.path().c_str(), 1);
    ::setenv("HOME", folder_.path().c_str(), 1);
  }

  /// What the script printed, and its exit code.
  Answer shell(const std::string& script) const {
    const std::string command = "{ " + script + "\n} 2>\"$D/err\"";
    FILE* pipe = ::popen(command.c_str(), "r"); // NOLINT(cert-env33-c)
    if (!pipe) throw std::runtime_error("popen failed");
    std::string out;
    std::array<char, 4096> chunk{};
    for (std::size_t size = 0; (size = std::fread(chunk.data(), 1, chunk.size(), pipe)) > 0;)
      out.append(chunk.data(), size);
    const int status = ::pclose(pipe);
    const std::string err = contentOf(folder_ / "err");
    std::filesystem::remove(folder_ / "err");
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out, err};
  }

  const std::filesystem::path& home() const { return folder_.path(); }

private:
  TemporaryFolder folder_;
};

TEST_F(Executable, exitsWith0WhenDone) {
  EXPECT_EQ(shell(R"(echo '{"sets":[]}' | "$T" compile -)"), printed("{\"identities\":[]}\n"));
  EXPECT_EQ(shell(R"("$T" classify - </dev/null)"), printed("null\n"));
  EXPECT_EQ(shell(R"("$T" --help >/dev/null && "$T" --version >/dev/null)"), printed(""));
}

TEST_F(Executable, exitsWith1WhenItFails) {
  EXPECT_EQ(shell(R"("$T" compile "$D/none")"),
            failure(home().string() + "/none: No such file or directory"));
}

TEST_F(Executable, exitsWith2OnBadInputAndUsage) {
  EXPECT_EQ(shell(R"(echo '{"sets":7}' | "$T" compile -)"),
            badInput("-:sets: expected a list, found the number 7"));
  EXPECT_EQ(shell(R"("$T" compile)"), badInput("SETS is required"));
}

TEST_F(Executable, fullOutputIsAFailure) {
  const Answer expected = failure("standard output cannot be written");
  for (const std::string command : {"strings", "keys", "--help", "--version", "profiles list"})
    EXPECT_EQ(shell("\"$T\" " + command + " >/dev/full"), expected) << command;
}

TEST_F(Executable, closedOutputIsAFailure) {
  EXPECT_EQ(shell(R"("$T" keys >&-)"), failure("standard output cannot be written"));
}

TEST_F(Executable, closedPipeIsAFailureNotASignal) {
  // The reader has gone before the program gets its input.
  const Answer answer =
      shell(R"(mkfifo "$D/in" "$D/out"; { "$T" classify "$D/in" >"$D/out"; echo $? >"$D/code"; } &)"
            R"( : <"$D/out"; echo >"$D/in"; wait; cat "$D/code")");
  EXPECT_EQ(answer.out, "1\n");
  EXPECT_EQ(answer.err, "trellivarctl: standard output cannot be written\n");
}

TEST_F(Executable, closedOrUnreadableInputIsAFailureNotAnEmptyFile) {
  for (const std::string command : {"classify -", "frame --seq 1", "compile -"}) {
    EXPECT_EQ(shell("\"$T\" " + command + " <&-"), failure("-: Bad file descriptor"));
    EXPECT_EQ(shell("\"$T\" " + command + " <\"$D\""), failure("-: Is a directory"));
  }
}

TEST_F(Executable, readsNamedPipes) {
  EXPECT_EQ(shell(R"(mkfifo "$D/sets" "$D/events"; echo '{"sets":[]}' >"$D/sets" &)"
                  R"( echo '{"t":1,"sender":4,"kind":"keyUp","name":"a"}' >"$D/events" &)"
                  R"( "$T" replay --sets "$D/sets" "$D/events")"),
            printed("{\"t\":1.0,\"actions\":[\"pass\"]}\n"));
}

TEST_F(Executable, importsFromAPipeAndExportsToOne) {
  EXPECT_EQ(shell(R"("$T" --data-dir "$D/a" profiles bind P 1 cmd+c &&)"
                  R"( "$T" --data-dir "$D/a" profiles export - |)"
                  R"( "$T" --data-dir "$D/b" profiles import - &&)"
                  R"( cmp "$D/a/profiles.json" "$D/b/profiles.json")"),
            printed(""));
  EXPECT_EQ(shell(R"(mkfifo "$D/pipe"; cat "$D/pipe" >"$D/copy" &)"
                  R"( "$T" --data-dir "$D/a" profiles export "$D/pipe"; code=$?; wait;)"
                  R"( cmp "$D/a/profiles.json" "$D/copy" && test -p "$D/pipe" && exit $code)"),
            printed(""));
}

TEST_F(Executable, diagnosticsNeedNoHome) {
  EXPECT_EQ(shell(R"(unset HOME; "$T" classify - </dev/null)"), printed("null\n"));
  EXPECT_EQ(shell(R"(unset HOME; "$T" profiles list)"),
            failure("HOME is not set; name the data folder with --data-dir"));
}

TEST_F(Executable, keepsProfilesInTheHomeFolder) {
  EXPECT_EQ(shell(R"(umask 000; "$T" profiles bind P 1 a && "$T" profiles show P)"),
            printed("P\n  1  a\n"));
  const auto folder = home() / "Library" / "Application Support" / "Trellivar";
  const auto modeOf = [](const std::filesystem::path& name) {
    struct stat status {};
    EXPECT_EQ(::stat(name.c_str(), &status), 0) << name;
    return status.st_mode & 07777;
  };
  EXPECT_EQ(modeOf(folder), 0700u);
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    EXPECT_EQ(modeOf(entry.path()), 0600u) << entry.path();
    ++files;
  }
  EXPECT_EQ(files, 2);
}

TEST_F(Executable, diagnosticsTouchNoDataFolder) {
  EXPECT_EQ(shell(R"("$T" strings >/dev/null; "$T" keys >/dev/null; echo x | "$T" frame --seq 1;)"
                  R"( "$T" profiles --help >/dev/null)"),
            printed("x\n"));
  EXPECT_TRUE(std::filesystem::is_empty(home()));
}

} // namespace
} // namespace trellivar::cli
