#include "tests/cli/pad_fixture.h"
#include "tests/support/eventually.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <streambuf>
#include <thread>

namespace trellivar::cli {
namespace {

using firmware::Faults;

constexpr auto interrupted =
    "trellivarctl: interrupted; the pad may hold some of the commands, so write again\n";

int openDescriptorCount() {
  int count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/dev/fd"))
    ++count;
  return count;
}

std::atomic<int> ownInterruptions = 0;
void countOwn(int) { ++ownInterruptions; }

/// Ctrl-C within the test program, whose own handler counts.
class Interruption : public PadTest {
protected:
  Interruption() {
    ownInterruptions = 0;
    before_ = std::signal(SIGINT, countOwn);
  }
  ~Interruption() override { std::signal(SIGINT, before_); }

  Answer write() const { return run({"write", "--port", port(), "--profiles", letters(6)}); }

  void expectInterrupted(const Answer& answer, int descriptorsBefore) const {
    EXPECT_EQ(answer.code, 1);
    EXPECT_EQ(answer.out, "");
    EXPECT_TRUE(answer.err.ends_with(interrupted)) << answer.err;
    EXPECT_EQ(openDescriptorCount(), descriptorsBefore);
    EXPECT_EQ(ownInterruptions, 0) << "it was the command's";
    std::raise(SIGINT);
    EXPECT_EQ(ownInterruptions, 1) << "and now it is ours again";
  }

  /// Presses Ctrl-C as soon as the pad has answered so often.
  Answer interruptedOnceAnswered(int count) const {
    std::thread user([&] {
      EXPECT_TRUE(eventually([&] { return pad().counts().answered >= count; }));
      ::kill(::getpid(), SIGINT);
    });
    const Answer answer = write();
    user.join();
    return answer;
  }

private:
  void (*before_)(int);
};

TEST_F(Interruption, whileThePortIsLookedFor) {
  const int before = openDescriptorCount();
  discoverPort_ = [this] {
    std::raise(SIGINT);
    return std::optional(port());
  };
  expectInterrupted(run({"write", "--profiles", letters(6)}), before);
  EXPECT_EQ(pad().counts().commands(), 0);
}

TEST_F(Interruption, whileTheFirstReplyIsAwaited) {
  connect({.reply = Faults::Reply::garbage});
  const int before = openDescriptorCount();
  expectInterrupted(interruptedOnceAnswered(1), before);
  EXPECT_EQ(pad().counts().stored, 0);
}

TEST_F(Interruption, whileTheLastReplyIsAwaited) {
  connect({.mumblesAfter = 7});
  const int before = openDescriptorCount();
  expectInterrupted(interruptedOnceAnswered(2), before);
  EXPECT_EQ(pad().counts().stored, 6);
}

/// Presses Ctrl-C when it has got a frame's progress so often.
class InterruptingBuffer : public std::stringbuf {
public:
  explicit InterruptingBuffer(int frames) : frames_(frames) {}

protected:
  int sync() override {
    if (--frames_ == 0) std::raise(SIGINT);
    return 0;
  }

private:
  int frames_;
};

TEST_F(Interruption, atAnyFrame) {
  const std::string list = letters(2);
  const int before = openDescriptorCount();
  for (int frame = 1; frame <= 6; ++frame) {
    ownInterruptions = 0;
    InterruptingBuffer buffer(frame);
    std::istringstream in;
    std::ostringstream out;
    std::ostream err(&buffer);
    const std::array<const char*, 6> argv{"trellivarctl", "write",      "--port",
                                          port().c_str(), "--profiles", list.c_str()};
    const int code = cli::run(static_cast<int>(argv.size()), argv.data(),
                              {in, out, err, true, [] { return std::nullopt; }});
    expectInterrupted({code, out.str(), buffer.str()}, before);
  }
}

TEST_F(Interruption, isIgnoredWhereItWasIgnoredBefore) {
  std::signal(SIGINT, SIG_IGN);
  discoverPort_ = [this] {
    std::raise(SIGINT);
    return std::optional(port());
  };
  EXPECT_EQ(run({"write", "--profiles", letters(1)}).code, 0);
}

TEST_F(Interruption, leavesThePadReadyForTheNextWrite) {
  interruptedOnceAnswered(1);
  EXPECT_EQ(write().code, 0);
  EXPECT_EQ(pad().macros().size(), 6U);
}

/// The program itself, with a terminal as its standard error.
class WritingProgram {
public:
  WritingProgram(const std::string& port, const std::string& list)
      : master_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    ::grantpt(master_.get());
    ::unlockpt(master_.get());
    std::array<char, 128> terminal{};
    ::ptsname_r(master_.get(), terminal.data(), terminal.size());
    process_ = ::fork();
    if (process_ == 0) {
      std::signal(SIGINT, SIG_DFL);
      ::dup2(::open(terminal.data(), O_RDWR | O_NOCTTY), STDERR_FILENO);
      ::execl(TRELLIVARCTL, "trellivarctl", "write", "--port", port.c_str(), "--profiles",
              list.c_str(), nullptr);
      ::_exit(98);
    }
  }
  ~WritingProgram() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  WritingProgram(const WritingProgram&) = delete;
  WritingProgram& operator=(const WritingProgram&) = delete;

  void interrupt() const { ::kill(process_, SIGINT); }

  /// Whether it has ended by itself.
  bool isOver() {
    if (process_ > 0 && ::waitpid(process_, &status_, WNOHANG) == process_) process_ = 0;
    return process_ <= 0;
  }
  /// Everything on its terminal until the end, or until nothing has come for long.
  std::string shown() const {
    std::string text;
    std::array<char, 256> chunk{};
    pollfd waited{master_.get(), POLLIN, 0};
    while (::poll(&waited, 1, 10'000) == 1) {
      const ssize_t size = ::read(master_.get(), chunk.data(), chunk.size());
      if (size <= 0) break;
      text.append(chunk.data(), static_cast<std::size_t>(size));
    }
    return text;
  }
  /// None while it runs.
  std::optional<int> exitStatus() const {
    if (process_ > 0) return std::nullopt;
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : -WTERMSIG(status_);
  }

private:
  FileDescriptor master_;
  pid_t process_;
  int status_ = 0;
};

class InterruptedProgram : public PadTest {};

TEST_F(InterruptedProgram, saysWhatThePadMayHoldAndLeavesAPortThatWorks) {
  const std::string list = letters(60); // more than five seconds
  WritingProgram program(port(), list);
  EXPECT_TRUE(eventually([&] { return pad().counts().stored >= 3 || program.isOver(); }));
  ASSERT_EQ(program.exitStatus(), std::nullopt) << program.shown();
  program.interrupt();
  const std::string shown = program.shown();
  EXPECT_TRUE(eventually([&] { return program.isOver(); }));
  EXPECT_EQ(program.exitStatus(), 1);
  EXPECT_NE(shown.find("\r\x1b[KWriting mode P, key 3: frame 3 of 3"), std::string::npos) << shown;
  const std::string end = "\r\x1b[K" + std::string(interrupted);
  EXPECT_TRUE(shown.ends_with(end.substr(0, end.size() - 1) + "\r\n")) << shown;
  EXPECT_GE(pad().counts().stored, 3);
  EXPECT_LT(pad().counts().stored, 60);
  EXPECT_EQ(run({"write", "--port", port(), "--profiles", letters(3)}).code, 0);
}

} // namespace
} // namespace trellivar::cli
