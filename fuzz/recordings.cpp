#include "cli/input.h"
#include "cli/replay.h"
#include "fuzz/check.h"

#include <optional>
#include <sstream>

using namespace trellivar;

namespace {

/// Bad input is reported in one line that names the file.
void checkMessage(const std::string& message) {
  FUZZ_CHECK(message.starts_with("-:"));
  FUZZ_CHECK(message.find('\n') == std::string::npos);
}

void readEvents(const std::string& text) {
  std::istringstream in(text);
  std::ostringstream out;
  cli::Context context{.in = in, .live = out, .err = out};
  try {
    cli::readRecords<DeviceKeyEvent>(context, "-");
  } catch (const cli::BadInput& error) {
    checkMessage(error.what());
  }
}

/// Every event of a recording is answered, and time never runs backwards.
void play(const std::string& text) {
  std::istringstream in(text);
  std::ostringstream out;
  cli::Context context{.in = in, .live = out, .err = out};
  try {
    const auto steps = cli::readRecording(context, "-");
    std::size_t events = 0;
    for (const ReplayStep& step : steps)
      events += std::holds_alternative<TapEvent>(step.value);
    std::size_t answered = 0;
    std::optional<Instant> last;
    cli::replay({}, steps, Seconds(0.5), cli::FlushBy::timer, [&](const cli::Replayed& replayed) {
      FUZZ_CHECK(!last || replayed.t >= *last);
      last = replayed.t;
      if (!replayed.event) return;
      ++answered;
      FUZZ_CHECK(!replayed.actions.empty());
    });
    FUZZ_CHECK(answered == events);
  } catch (const cli::BadInput& error) {
    checkMessage(error.what());
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  readEvents(text);
  play(text);
  return 0;
}
