#include "cli/context.h"
#include "cli/local_machine.h"

#include <string>

namespace trellivar::cli {

namespace {

constexpr std::string_view nothingLive =
    "this system has no live input or remapping for Trellivar, and no permissions for them: "
    "attached devices are not seen; \"trellivarctl simulate\" shows the engine at work";

[[noreturn]] void refuse() { throw Failure(std::string(nothingLive)); }

} // namespace

LocalMachine localMachine() {
  return {.missing = nothingLive,
          .enumerator = std::make_unique<StubDeviceEnumerator>(),
          .engine = std::make_unique<StubRemapEngine>(),
          .monitor = [](const auto&, const auto&) { refuse(); }};
}

} // namespace trellivar::cli
