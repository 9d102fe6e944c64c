#pragma once

#include "simulator/firmware/pad_firmware.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::firmware {

/// What is wrong with a pad; nothing unless said otherwise.
struct Faults {
  enum class Reply : std::uint8_t {
    normal,
    twice,            ///< two replies in a row
    afterGarbage,     ///< a reply behind bytes that are none
    garbage,          ///< text with braces, but no reply
    notUtf8,          ///< a reply among bytes that are no text
    withoutOperation, ///< no "o"
    numberAsOperation,
    numberAsValue, ///< "v" is 107
  };

  Reply reply = Reply::normal;
  bool repliesByteByByte = false;            ///< each byte is a read of its own
  std::chrono::milliseconds delay{0};        ///< before each reply
  std::optional<int> silentAfter = {};       ///< so many commands; then it hears nothing any more
  std::optional<int> mumblesAfter = {};      ///< so many commands; from then on replies are garbage
  std::optional<std::size_t> takesOnly = {}; ///< so many bytes; then the port fills up
  std::optional<std::size_t> unpluggedAfter = {}; ///< so many bytes
};

/// A pad with faults, as its port sees it. No I/O and no time.
class FaultyPad {
public:
  explicit FaultyPad(PadFirmware& firmware, Faults faults = {})
      : firmware_(firmware), faults_(faults) {}

  /// Takes bytes, no more than `appetite`, and returns what the pad sends: each text is to arrive
  /// by itself, and `delay` after the bytes.
  std::vector<std::string> receive(std::string_view bytes);
  /// How many bytes the pad takes yet.
  std::size_t appetite() const;
  bool isUnplugged() const;
  void lineIsQuiet() { firmware_.lineIsQuiet(); }
  const Faults& faults() const noexcept { return faults_; }

private:
  bool hasReached(const std::optional<int>& commands) const;
  std::string deformed(const std::string& reply) const;

  PadFirmware& firmware_;
  Faults faults_;
  std::size_t taken_ = 0;
};

} // namespace trellivar::firmware
