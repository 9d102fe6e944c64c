#include "cli/simulate/script.h"

#include "core/utf8.h"
#include "fuzz/check.h"
#include "simulator/desk/key_codes.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>

using namespace trellivar;
using namespace trellivar::cli::simulate;

namespace {

void checkKey(int key) { FUZZ_CHECK(key >= 1 && key <= 3); }

void checkMode(std::string_view mode) { FUZZ_CHECK(mode == "P" || mode == "M" || mode == "R"); }

void checkDuration(Seconds duration) {
  FUZZ_CHECK(duration >= Seconds(0) && duration <= Seconds(7 * 24 * 3600));
}

/// Nothing that the simulated desk cannot do gets past the reader.
struct CheckAction {
  void operator()(const Connect& /*connect*/) const {}
  void operator()(const SetMode& set) const { checkMode(set.mode); }
  void operator()(const Bind& bind) const {
    checkMode(bind.mode);
    checkKey(bind.key);
  }
  void operator()(const Press& press) const {
    std::ranges::for_each(press.keys, checkKey);
    checkDuration(press.hold);
    checkDuration(press.stagger);
  }
  void operator()(const Type& type) const {
    for (const KeyName key : type.keys)
      FUZZ_CHECK(desk::keyCodes(key));
  }
  void operator()(const Learn& learn) const { checkKey(learn.key); }
  void operator()(const Record& record) const { checkKey(record.key); }
  void operator()(const Wait& wait) const { checkDuration(wait.duration); }
  void operator()(const Write& /*write*/) const {}
  void operator()(const SetPermissions& /*set*/) const {}
  void operator()(const DisableTap& /*disable*/) const {}
  void operator()(const Status& /*status*/) const {}
};

/// One line of valid text that names the file and a line of it.
void checkMessage(std::string_view message, std::size_t lines) {
  FUZZ_CHECK(message.starts_with("-:"));
  FUZZ_CHECK(message.find('\n') == std::string_view::npos);
  FUZZ_CHECK(utf8::isValid(message));
  std::size_t line = 0;
  std::istringstream(std::string(message.substr(2))) >> line;
  FUZZ_CHECK(line >= 1 && line <= lines);
}

} // namespace

/// A script is read whole, step by step in the order of its lines, or refused with a line of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
  std::istringstream in(text);
  std::ostringstream out;
  cli::Context context{.in = in, .live = out, .err = out};
  try {
    std::size_t last = 0;
    for (const Step& step : readScript(context, "-")) {
      FUZZ_CHECK(step.number > last && step.number <= lines);
      last = step.number;
      std::visit(CheckAction{}, step.action);
    }
  } catch (const cli::BadInput& error) {
    checkMessage(error.what(), lines);
  }
  FUZZ_CHECK(out.str().empty() && context.out.empty());
  return 0;
}
