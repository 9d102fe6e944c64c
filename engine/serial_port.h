#pragma once

#include "engine/link_clock.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace trellivar {

/// An open serial port. When the object goes, the port is closed, and what the pad has not taken by
/// then is forgotten. No function ever waits.
class SerialPort {
public:
  static constexpr std::size_t longestRead = 512;

  SerialPort() = default;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;
  virtual ~SerialPort() = default;

  /// Forgets what has arrived and was not read.
  virtual void discardInput() = 0;
  /// How many of the bytes, from the first on, were taken: 0 when the port is full. None when it
  /// takes no more for good, as after the cable was pulled.
  virtual std::optional<std::size_t> write(std::string_view bytes) = 0;
  /// What has arrived, at most `longestRead` bytes; empty when there is nothing, or nothing any
  /// more.
  virtual std::string read() = 0;
};

/// Opens a port of the system and makes it ready for the pad: raw, 460800 bit/s, DTR and RTS
/// raised, and time for the pad to settle. Throws Orlo3Error::Io, "open PATH: reason" or
/// "tcgetattr failed"; every other step may fail without harm, since not every port has it.
std::unique_ptr<SerialPort> openSerialPort(const std::string& path, LinkClock& clock);

} // namespace trellivar
