#pragma once

#include "core/flat_map.h"
#include "core/instant.h"
#include "core/mapping_table.h"
#include "core/rule_index.h"
#include "core/tap_action.h"

#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace trellivar {

/// Decides what happens to each intercepted event. Knows names, senders, bindings and the time it
/// is told; nothing of the operating system. All calls come from one thread.
///
/// A key that may become part of a chord is held back until its chord completes (its output is
/// posted, the held keys are never delivered), another event proves that it will not (they are
/// replayed as they were), or the chord window has passed since the first of them:
///
///     chord {control, f}, window 0.5 s
///     t    0.0            0.1           0.3        0.4
///     in   control down   f down        f up       control up
///     out  (held)         post output   suppress   suppress
///
///     t    0.0            0.5           0.8
///     in   control down   (deadline)    control up
///     out  (held)         replay down   pass
///
/// Invariants:
///  1. A sender has a deadline exactly while it holds events.
///  2. The events of a completed chord are never delivered.
///  3. A name that fired, completed a chord or was swallowed stays silent until its release.
class TapProcessor {
public:
  using Senders = std::unordered_map<std::int64_t, DeviceIdentity>;
  using PausedDevices = std::unordered_set<DeviceIdentity>;

  explicit TapProcessor(Seconds chordWindow);
  TapProcessor(const TapProcessor&) = delete;
  TapProcessor& operator=(const TapProcessor&) = delete;

  /// How long held keys wait for the rest of their chord, counted from the first one.
  Seconds chordWindow() const noexcept { return chordWindow_; }

  const MappingTable& table() const noexcept { return table_; }
  /// Discards all state of all senders: held events are dropped, not replayed.
  void setTable(MappingTable table);

  const Senders& senders() const noexcept { return senders_; }
  /// Which device each sender id belongs to. The state of a sender outlives its absence.
  void setSenders(Senders senders);

  const PausedDevices& paused() const noexcept { return paused_; }
  /// Events of these devices pass untouched.
  void setPaused(PausedDevices paused);

  /// What to do about `event`. The result is valid until the next call of a non-const member.
  const TapActions& process(const TapEvent& event, Instant now);

  /// Replays what has been held up to its deadline, senders in ascending order; replay actions
  /// only. The result is valid until the next call of a non-const member.
  const TapActions& flush(Instant now);

  /// Replays at once what is held of senders whose events are no longer looked at: their releases
  /// pass, and would overtake it. Senders in ascending order; replay actions only. The result is
  /// valid until the next call of a non-const member.
  const TapActions& flushUnhandled();

  /// Whether events of this sender are looked at: it is known, has bindings and is not paused.
  bool handles(std::int64_t senderId) const noexcept { return active_.find(senderId) != nullptr; }

  /// The name under which applications would see the release of a key that is down, if it came now;
  /// none: it would be swallowed. Nothing changes.
  std::optional<KeyName> releasedAs(std::int64_t senderId, KeyName name) const;

  /// The press of this key has been seen and its release has not: a further press would be taken
  /// for a repetition.
  bool countsAsDown(std::int64_t senderId, KeyName name) const;

  /// The earliest deadline of all senders; call `flush` then. None while nothing is held.
  std::optional<Instant> nextDeadline() const noexcept {
    if (holding_.empty()) return std::nullopt;
    return earliestDeadline();
  }

private:
  class NameSet {
  public:
    bool contains(KeyName name) const noexcept;
    void insert(KeyName name);
    bool erase(KeyName name) noexcept;
    void clear() noexcept { names_.clear(); }
    std::size_t size() const noexcept { return names_.size(); }

  private:
    InlineVector<KeyName, 8> names_;
  };

  struct SenderState {
    TapEvents held;     ///< downs held back, in order of arrival
    NameSet heldNames;  ///< the names in `held`
    Instant deadline{}; ///< of the hold; meaningless while nothing is held
    NameSet consumed;   ///< names that acted and have not been released

    bool isHolding() const noexcept { return !held.empty(); }
  };

  struct Sender {
    const RuleIndex* rules = nullptr; ///< none: events pass
    SenderState state;
  };

  struct SenderHash {
    std::uint64_t operator()(std::int64_t id) const noexcept {
      return static_cast<std::uint64_t>(id) * 0x9E3779B97F4A7C15U;
    }
  };

  const TapActions& down(const TapEvent& event, Sender& sender, Instant now);
  const TapActions& up(const TapEvent& event, Sender& sender);
  const TapActions& holdForChord(const TapEvent& event, Sender& sender, const NameRules& rules,
                                 Instant now);
  void hold(const TapEvent& event, Sender& sender, Instant now);
  void dropHold(Sender& sender) noexcept;
  void replayHold(Sender& sender);
  void replayHoldWith(Sender& sender, const TapEvent& current);
  const TapActions& answer(const TapActions& constant);
  void resolveSenders();
  std::optional<Instant> earliestDeadline() const noexcept;

  Seconds chordWindow_;
  MappingTable table_;
  Senders senders_;
  PausedDevices paused_;

  std::map<DeviceIdentity, RuleIndex> rules_;         ///< of `table_`
  std::map<std::int64_t, Sender> states_;             ///< known senders, and gone ones with state
  FlatMap<std::int64_t, Sender*, SenderHash> active_; ///< senders with rules that are not paused
  std::vector<Sender*> holding_;                      ///< senders that hold events
  TapActions result_;
};

} // namespace trellivar
