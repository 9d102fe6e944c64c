#pragma once

#include <iosfwd>

namespace trellivar::cli {

/// The whole of `trellivarctl`. Returns the exit code: 0 done, 1 the operation failed, 2 bad usage
/// or bad input. Messages are one line each, on `err`.
int run(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace trellivar::cli
