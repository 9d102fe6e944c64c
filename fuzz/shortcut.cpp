#include "cli/shortcut.h"

#include "cli/context.h"
#include "fuzz/check.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace trellivar;

/// What is understood is printed in a form that is understood as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const Output output = cli::parseShortcut({reinterpret_cast<const char*>(data), size});
    FUZZ_CHECK(cli::parseShortcut(cli::shortcutText(output)) == output);
  } catch (const cli::BadInput& error) {
    FUZZ_CHECK(std::string(error.what()).find('\n') == std::string::npos);
  }
  return 0;
}
