#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <system_error>
#include <utility>

namespace trellivar {

/// A copy of the test program that runs one function and ends. Killed, if it still runs, when the
/// object goes.
class ChildProcess {
public:
  static constexpr int kThrew = 99;

  /// The child's exit status is what `body` returns, or `kThrew`.
  template <typename Body> explicit ChildProcess(const Body& body) : process_(::fork()) {
    if (process_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (process_ == 0) ::_exit(run(body));
  }
  ChildProcess(ChildProcess&& other) noexcept : process_(std::exchange(other.process_, 0)) {}
  ChildProcess& operator=(ChildProcess&&) = delete;
  ~ChildProcess() {
    if (process_ > 0) kill();
  }

  pid_t id() const noexcept { return process_; }

  /// Waits for the end. The exit status, or minus the number of the signal that ended it.
  int wait() {
    int status = 0;
    while (::waitpid(process_, &status, 0) == -1 && errno == EINTR) {
    }
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  int kill() {
    ::kill(process_, SIGKILL);
    return wait();
  }

private:
  template <typename Body> static int run(const Body& body) {
    try {
      return body();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "child process: %s\n", error.what());
    } catch (...) {
      std::fprintf(stderr, "child process: threw something else\n");
    }
    return kThrew;
  }

  pid_t process_;
};

/// What `body` returns in a process of its own, where it may change limits, users or signals.
template <typename Body> int exitStatusOf(const Body& body) { return ChildProcess(body).wait(); }

} // namespace trellivar
