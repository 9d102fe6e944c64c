#pragma once

#include "files/file_descriptor.h"
#include "simulator/firmware/faulty_pad.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

namespace trellivar::firmware {

/// The serial port of a simulated pad: a pseudo-terminal whose far end a thread serves. The pad is
/// on the cable as long as the object lives.
class FirmwarePort {
public:
  /// `firmware` must outlive the port; one port at a time. Throws std::system_error when the system
  /// has no pseudo-terminal left.
  explicit FirmwarePort(PadFirmware& firmware, Faults faults = {});
  FirmwarePort(const FirmwarePort&) = delete;
  FirmwarePort& operator=(const FirmwarePort&) = delete;
  /// Pulls the cable: who has the port open gets errors, and the path is gone.
  ~FirmwarePort();

  /// The device file to open.
  const std::string& path() const noexcept { return path_; }

private:
  enum class Event : std::uint8_t { bytes, timeout, end };

  void serve();
  /// Takes what has arrived and sends the replies.
  Event answer();
  /// Waits for the end of the object, and for bytes if any are wanted.
  Event waitFor(bool wantsBytes, std::chrono::milliseconds timeout) const;

  FaultyPad pad_;
  FileDescriptor master_;
  /// Held open, since the far end reports errors whenever nobody has the port open.
  FileDescriptor slave_;
  std::string path_;
  FileDescriptor endReader_;
  FileDescriptor endWriter_; ///< closed in the end
  std::thread thread_;
};

} // namespace trellivar::firmware
