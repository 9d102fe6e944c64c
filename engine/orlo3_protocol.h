#pragma once

#include "engine/macro_event.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The text that the pad's configuration port understands. Pure; sending it is the serial link's
/// work.
namespace trellivar::Orlo3Protocol {

/// Asks for the firmware's version.
inline constexpr std::string_view firmwareQuery = R"({"o":"get","t":"firmware"})";

/// A command up to this many bytes goes out whole ...
inline constexpr std::size_t longestUnframed = 63;
/// ... and a longer one in pieces of this many, each behind a header. The two differ on purpose: a
/// command of 56 to 63 bytes is never cut.
inline constexpr std::size_t framePayload = 55;

/// The command that stores the macro of one key, for example
/// {"o":"set","k":2,"m":"keyboard","e":"click","v":[{"t":"wait","ms":30}],"r":1,"s":"M"}
/// `mode` and `event` are escaped where they need it; what the system itself passes never does.
std::string writeKeyMacro(int key, std::string_view mode, std::string_view event,
                          std::span<const MacroEvent> macro, int repeatCount);

/// Cuts a command into the frames to transmit: itself when it is short, else pieces headed
/// "S3[1/2]" with the sequence number, the piece and their count. No line ends are added. A
/// character that is split between two pieces becomes U+FFFD in both.
std::vector<std::string> frame(std::string_view line, int seq);

/// The sequence number of the command after the one with `seq`: 1 to 9, then 1 again.
constexpr int nextSequence(int seq) noexcept { return seq % 9 + 1; }

/// The frames of each line of one write. The first command carries the number 1.
std::vector<std::vector<std::string>> numberedFrames(std::span<const std::string> lines);

} // namespace trellivar::Orlo3Protocol
