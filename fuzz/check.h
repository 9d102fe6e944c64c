#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the run with a crash, which the fuzzer keeps as a finding, unless the condition holds.
#define FUZZ_CHECK(condition)                                                                      \
  do {                                                                                             \
    if (!(condition)) {                                                                            \
      std::fprintf(stderr, "%s:%d: %s does not hold\n", __FILE__, __LINE__, #condition);           \
      std::abort();                                                                                \
    }                                                                                              \
  } while (false)
