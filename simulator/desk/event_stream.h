#pragma once

#include "core/inline_vector.h"
#include "simulator/desk/input_event.h"
#include "simulator/desk/manual_queue.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <optional>
#include <vector>

namespace trellivar::desk {

/// What applications received, and when.
struct Received {
  Instant t;
  InputEvent event;
};

/// The stream of input events of one session: events of devices and of programs enter it, pass the
/// taps that are in its way, and reach the applications.
///
/// Events are delivered one after another from the main queue, never within the call that posts
/// them, in the order in which they were posted.
class EventStream {
public:
  /// The levels at which taps stand, in the order in which events pass them.
  enum class Level : std::uint8_t { hid, session, annotatedSession };

  struct Tap {
    Level level = Level::session;
    bool atHead = true;     ///< of its level, else behind the taps that are there
    bool isFilter = true;   ///< else it only listens, and its answer counts for nothing
    std::uint64_t mask = 0; ///< 1 << type for each type that it sees
    /// Lets the event go on as it is or changed, or ends it. None of them: the tap does not answer.
    std::function<std::optional<InputEvent>(const InputEvent&)> handle;
    /// The tap has been disabled: the notice, one of the two types in `InputEvent`.
    std::function<void(std::uint32_t)> disabled;
  };
  using TapId = int;

  explicit EventStream(ManualQueue& queue) : queue_(queue) {}

  /// The tap is enabled. It may be removed, disabled or enabled within its own callbacks.
  TapId addTap(Tap tap);
  void removeTap(TapId id);
  /// A tap that is enabled while its process may not filter (see `setMayFilter`) freezes the
  /// stream.
  void setEnabled(TapId id, bool enabled);
  bool isEnabled(TapId id) const;
  std::size_t tapCount() const noexcept { return taps_.size(); }

  /// The system disables every enabled tap and tells them.
  void disableTaps(std::uint32_t notice);

  /// Whether the process may filter events. When that is taken away, its taps are disabled by the
  /// system at the next event and told so; if one of them is enabled again all the same, nothing
  /// reaches the applications until it is removed.
  void setMayFilter(bool may);
  /// Nothing gets through: a tap stands in the way that may not answer.
  bool isFrozen() const;

  /// Delivers `event` from the main queue, past the taps from `level` on.
  void post(Level level, const InputEvent& event);

  /// The modifier flags that new events of programs start with: those of the keys that are down on
  /// any keyboard, swallowed or not, and those that programs have pressed.
  std::uint64_t sessionFlags() const noexcept { return hardwareFlags_ | postedFlags_; }
  std::uint64_t hardwareFlags() const noexcept { return hardwareFlags_; }
  void setHardwareFlags(std::uint64_t flags) noexcept { hardwareFlags_ = flags; }

  const std::vector<Received>& received() const noexcept { return received_; }
  void clearReceived() { received_.clear(); }
  /// Told of each event right after it was received.
  void setReceiver(std::function<void(const Received&)> receiver) {
    receiver_ = std::move(receiver);
  }
  /// Whether `received` grows; on from the start.
  void setRecording(bool recording) { recording_ = recording; }

private:
  struct Standing {
    TapId id;
    Tap tap;
    bool enabled = true;
  };

  /// May change the event.
  void deliver(Level from, InputEvent& event);
  void arrive(const InputEvent& event);
  void notePostedModifier(const InputEvent& event);
  Standing* find(TapId id);
  const Standing* find(TapId id) const;

  ManualQueue& queue_;
  int lastId_ = 0;
  bool mayFilter_ = true;
  bool recording_ = true;
  std::list<Standing> taps_; ///< in the order in which events pass them
  std::uint64_t hardwareFlags_ = 0;
  std::uint64_t postedFlags_ = 0;
  std::deque<std::pair<Level, InputEvent>> posted_;   ///< each has a block on the queue
  std::vector<std::pair<Level, InputEvent>> stopped_; ///< while frozen
  std::vector<Received> received_;
  std::function<void(const Received&)> receiver_;
};

} // namespace trellivar::desk
