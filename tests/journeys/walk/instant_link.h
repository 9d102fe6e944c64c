#pragma once

#include "engine/orlo3_link.h"
#include "engine/orlo3_protocol.h"
#include "simulator/machine/machine.h"
#include "tests/journeys/walk/dice.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::walk {

/// Writes into the pad's firmware in no time, or fails at random.
class InstantLink final : public Orlo3Linking {
public:
  InstantLink(desk::Machine& machine, Dice& dice) : machine_(machine), dice_(dice) {}

  std::optional<std::string> discoverPort() override { return std::nullopt; }
  std::optional<Orlo3Reply> query(std::string_view, double) override { return std::nullopt; }
  std::string writeMacros(const std::vector<std::string>& lines) override {
    if (machine_.pad.link() != desk::Pad::Link::usb) throw Orlo3Error(Orlo3Error::NoPort{});
    if (dice_.chance(10)) throw Orlo3Error(Orlo3Error::Dormant{});
    if (dice_.chance(10)) throw Orlo3Error(Orlo3Error::Io{"the port is in use"});
    for (const auto& frames : Orlo3Protocol::numberedFrames(lines)) {
      for (const std::string& frame : frames)
        machine_.firmware.receive(frame);
      if (dice_.chance(5)) throw Orlo3Error(Orlo3Error::HealthCheckFailed{});
    }
    return "1.0.7";
  }

private:
  desk::Machine& machine_;
  Dice& dice_;
};

} // namespace trellivar::walk
