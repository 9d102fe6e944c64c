#pragma once

#include "simulator/firmware/command_reader.h"
#include "simulator/firmware/set_command.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar::firmware {

/// The firmware of a pad: it understands the commands that arrive at its port and keeps the macros
/// of its keys, as a pad does across modes and connections. No I/O: a port brings the bytes.
///
///     PadFirmware pad;
///     FirmwarePort port(pad);             // pad is written through port.path()
///     auto macro = pad.macro("M", 2);     // what key 2 types over Bluetooth
///
/// Bytes come from one thread; everything else may be asked on any thread at the same time.
class PadFirmware {
public:
  struct Counts {
    int stored = 0;   ///< macros, each time one was stored
    int answered = 0; ///< queries
    int dropped = 0;  ///< commands of which a part was missing or wrong; none is ever half stored
    int commands() const noexcept { return stored + answered + dropped; }
  };
  using Slot = std::pair<std::string, int>; ///< mode and key

  explicit PadFirmware(std::string version = "1.0.7") : version_(std::move(version)) {}

  /// Takes bytes from the port and returns the replies to the queries that they complete. Storing a
  /// macro is not acknowledged.
  std::vector<std::string> receive(std::string_view bytes);
  /// The line has been quiet for long, or is gone: a command that is unfinished is dropped.
  void lineIsQuiet();

  /// What the pad plays over Bluetooth when the key is clicked in the mode; none while nothing has
  /// been written there. (On the cable it keeps its factory keys.)
  std::optional<StoredMacro> macro(std::string_view mode, int key) const;
  std::map<Slot, StoredMacro> macros() const;
  Counts counts() const;

private:
  std::optional<std::string> execute(const std::string& text);

  const std::string version_;
  CommandReader reader_; ///< of the thread that brings the bytes
  mutable std::mutex mutex_;
  std::map<Slot, StoredMacro> macros_;
  Counts counts_;
  int refused_ = 0; ///< whole commands that the pad does not know
};

} // namespace trellivar::firmware
