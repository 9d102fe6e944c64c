#pragma once

#include "simulator/firmware/json_scanner.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::firmware {

/// Finds the commands in the bytes that arrive at the pad. There are no line ends, and several
/// commands may arrive glued together or in splinters, so a boundary is where the grammar puts it:
///
///     whole  := an object of at most 63 bytes
///     framed := "S3[1/3]" 55 bytes, "S3[2/3]" 55 bytes, "S3[3/3]" the rest of the object
///
/// A frame that is lost, comes twice or out of order, belongs to another sequence or count, or
/// whose bytes do not add up to one object ends its command: that command is dropped as a whole and
/// counted once, and reading goes on where the next command begins. Pure: what it answers depends
/// on the bytes, never on how they were cut.
class CommandReader {
public:
  /// The commands that these bytes complete, in order.
  std::vector<std::string> receive(std::string_view bytes);

  /// Nothing more will come of what is unfinished, as when the line has been quiet for long: it is
  /// dropped.
  void dropUnfinished();

  /// Commands, and stretches of bytes that were none, that have been dropped so far.
  int dropped() const noexcept { return dropped_; }

private:
  struct Header {
    int seq = 0;
    int index = 0;
    int total = 0;
    std::size_t size = 0; ///< of the header itself, in bytes
    bool isFirst() const noexcept { return index == 1; }
    bool isLast() const noexcept { return index == total; }
  };
  /// What the bytes are, as far as they go.
  struct Beginning {
    bool isUndecided = false; ///< they may become a header
    std::optional<Header> header;
  };
  /// The command whose frames are arriving.
  struct Assembly {
    Header last; ///< the frame that arrived last
    std::string object;
    JsonScanner scanner;
  };
  using Commands = std::vector<std::string>;

  // Each takes something off `unread_` and returns true, or needs more bytes for that.
  bool readOne(Commands& commands);
  bool readWhole(Commands& commands);
  bool readFrame(const Header& header, Commands& commands);
  bool readPayload(const Header& header, Commands& commands);
  bool findBeginning();

  bool continuesAssembly(const Header& header) const;
  void dropAssembly();
  void dropFrame(const Header& header);
  void loseTrack(std::size_t skipped);
  static Beginning beginningOf(std::string_view bytes);

  std::string unread_;
  std::optional<Assembly> assembly_;
  std::map<int, int> totals_; ///< of the dropped commands whose remaining frames may follow, by seq
  bool isLost_ = false;       ///< what comes next is the middle of something
  int dropped_ = 0;
};

} // namespace trellivar::firmware
