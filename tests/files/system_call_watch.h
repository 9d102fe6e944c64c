#pragma once

#include <cstddef>
#include <functional>
#include <limits>

namespace trellivar {

enum class SystemCall { open, makeFolder, changeMode, read, write, flush, close };

/// Stands between the code of this test program and the system's C library for as long as it lives,
/// in the thread that made it. One at a time.
///
///     const SystemCallWatch watch([](SystemCall call, int) { return call == SystemCall::flush ?
///     EIO : 0; }); replaceFile(path, content); // every flush fails
class SystemCallWatch {
public:
  /// Asked before each call (with -1 where there is no descriptor yet): the `errno` with which the
  /// call is to fail, or 0 to let it happen. A failing close closes all the same, as on Linux.
  /// Calls that the decision makes itself are not watched.
  using Decision = std::function<int(SystemCall call, int descriptor)>;

  explicit SystemCallWatch(Decision decision,
                           std::size_t mostBytesAtOnce = std::numeric_limits<std::size_t>::max());
  SystemCallWatch(const SystemCallWatch&) = delete;
  SystemCallWatch& operator=(const SystemCallWatch&) = delete;
  ~SystemCallWatch();

  int decide(SystemCall call, int descriptor) const;
  std::size_t mostBytesAtOnce() const noexcept { return mostBytesAtOnce_; }

private:
  Decision decision_;
  std::size_t mostBytesAtOnce_;
};

} // namespace trellivar
