#pragma once

#include "simulator/firmware/firmware_port.h"
#include "tests/cli/documents.h"
#include "tests/cli/profiles_fixture.h"

#include <memory>
#include <string>

namespace trellivar::cli {

/// Runs commands with a simulated pad on the cable.
class PadTest : public ProfilesTest {
protected:
  PadTest() { connect(); }

  /// Another pad takes the place of the one before.
  void connect(firmware::Faults faults = {}) {
    port_ = nullptr;
    pad_ = std::make_unique<firmware::PadFirmware>();
    port_ = std::make_unique<firmware::FirmwarePort>(*pad_, faults);
  }
  void disconnect() { port_ = nullptr; }

  const firmware::PadFirmware& pad() const { return *pad_; }
  const std::string& port() const { return port_->path(); }

  /// A list of profiles in which keys 1 to `keys` of mode P type a letter: three frames each.
  std::string letters(int keys) const {
    std::string mappings;
    for (int key = 1; key <= keys; ++key)
      mappings += (key == 1 ? "" : ",") + documents::mapping(key, documents::tap("a"));
    return file("letters", "[" + documents::profile("P", mappings) + "]");
  }

private:
  std::unique_ptr<firmware::PadFirmware> pad_;
  std::unique_ptr<firmware::FirmwarePort> port_;
};

inline constexpr auto needPad = "Plug in / reconnect the Orlo3 via USB (replug if unresponsive)";
inline constexpr auto stoppedMidWrite =
    "Pad stopped responding mid-write — reconnect (replug) the Orlo3 and try again.";

} // namespace trellivar::cli
