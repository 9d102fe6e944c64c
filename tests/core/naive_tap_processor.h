#pragma once

#include "core/mapping_table.h"
#include "core/output_events.h"
#include "core/tap_action.h"

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace trellivar {

/// The tap processor once more, as plainly as its rules can be put: texts for names, standard
/// containers, every look-up where the rule speaks of it, and nothing shared with the real one.
class NaiveTapProcessor {
public:
  struct Action {
    std::string what; ///< "pass", "suppress", "rewrite", "post" or "replay"
    std::string name; ///< of a rewrite
    std::vector<TapEvent> events;
    friend bool operator==(const Action&, const Action&) = default;
  };
  using Actions = std::vector<Action>;

  explicit NaiveTapProcessor(double chordWindow) : chordWindow_(chordWindow) {}

  void setTable(const MappingTable& newTable) {
    table_ = newTable;
    states_.clear();
  }

  std::map<std::int64_t, DeviceIdentity> senders;
  std::set<DeviceIdentity> paused;

  Actions process(const TapEvent& event, double now) {
    if (!senders.contains(event.senderId)) return {{"pass", "", {}}};
    const DeviceIdentity identity = senders.at(event.senderId);
    if (!table_.identities.contains(identity)) return {{"pass", "", {}}};
    if (paused.contains(identity)) return {{"pass", "", {}}};

    State& state = states_[event.senderId];
    Actions result;
    if (state.deadline && now >= *state.deadline) {
      result.push_back({"replay", "", state.held});
      state.resetHold();
    }
    const bool isDown = event.kind == TapEvent::Kind::keyDown ||
                        event.kind == TapEvent::Kind::consumerDown ||
                        event.kind == TapEvent::Kind::pointingDown;
    const MappingTable::CompiledIdentity& entry = table_.identities.at(identity);
    const Actions own = isDown ? downRule(event, entry, state, now) : upRule(event, entry, state);
    result.insert(result.end(), own.begin(), own.end());
    return result;
  }

  /// Senders in ascending order.
  Actions flush(double now) {
    Actions result;
    for (auto& [sender, state] : states_) {
      if (state.deadline && now >= *state.deadline) {
        result.push_back({"replay", "", state.held});
        state.resetHold();
      }
    }
    return result;
  }

  std::optional<double> nextDeadline() const {
    std::optional<double> earliest;
    for (const auto& [sender, state] : states_) {
      if (state.deadline && (!earliest || *state.deadline < *earliest)) earliest = state.deadline;
    }
    return earliest;
  }

private:
  struct State {
    std::vector<TapEvent> held;
    std::set<std::string> heldNames;
    std::optional<double> deadline;
    std::set<std::string> consumed;

    void resetHold() {
      held.clear();
      heldNames.clear();
      deadline.reset();
    }
  };

  static Action postOf(const CompiledOutput& output) {
    return {"post", "", OutputEvents::events(output.output())};
  }

  Actions downRule(const TapEvent& event, const MappingTable::CompiledIdentity& entry, State& state,
                   double now) const {
    const std::string name = event.name.text();
    if (state.consumed.contains(name)) return {{"suppress", "", {}}};

    std::vector<const MappingTable::ChordTrigger*> candidates;
    for (const MappingTable::ChordTrigger& trigger : entry.chords) {
      if (trigger.members.contains(event.name)) candidates.push_back(&trigger);
    }
    if (!candidates.empty()) {
      state.held.push_back(event);
      state.heldNames.insert(name);
      if (!state.deadline) state.deadline = now + chordWindow_;
      for (const MappingTable::ChordTrigger* candidate : candidates) {
        bool complete = true;
        for (const KeyName member : candidate->members)
          complete = complete && state.heldNames.contains(member.text());
        if (!complete) continue;
        for (const KeyName member : candidate->members)
          state.consumed.insert(member.text());
        state.resetHold();
        return {{"suppress", "", {}}, postOf(candidate->output)};
      }
      return {{"suppress", "", {}}};
    }

    std::vector<TapEvent> oldHeld = state.held;
    if (entry.singles.contains(event.name)) {
      state.consumed.insert(name);
      Actions result{{"suppress", "", {}}};
      if (!oldHeld.empty()) {
        state.resetHold();
        result.push_back({"replay", "", oldHeld});
      }
      const auto& action = entry.singles.at(event.name).value;
      if (std::holds_alternative<MappingTable::SingleAction::Fire>(action))
        result.push_back(postOf(std::get<MappingTable::SingleAction::Fire>(action).output));
      return result;
    }
    if (entry.normalization.contains(event.name)) {
      const std::string target = entry.normalization.at(event.name).text();
      if (oldHeld.empty()) return {{"rewrite", target, {}}};
      state.resetHold();
      return {{"rewrite", target, {}}, {"replay", "", oldHeld}};
    }
    if (oldHeld.empty()) return {{"pass", "", {}}};
    state.resetHold();
    oldHeld.push_back(event);
    return {{"suppress", "", {}}, {"replay", "", oldHeld}};
  }

  static Actions upRule(const TapEvent& event, const MappingTable::CompiledIdentity& entry,
                        State& state) {
    const std::string name = event.name.text();
    if (state.consumed.contains(name)) {
      state.consumed.erase(name);
      return {{"suppress", "", {}}};
    }
    if (state.heldNames.contains(name)) {
      std::vector<TapEvent> oldHeld = state.held;
      state.resetHold();
      oldHeld.push_back(event);
      return {{"suppress", "", {}}, {"replay", "", oldHeld}};
    }
    if (entry.singles.contains(event.name)) return {{"suppress", "", {}}};
    if (entry.normalization.contains(event.name))
      return {{"rewrite", entry.normalization.at(event.name).text(), {}}};
    return {{"pass", "", {}}};
  }

  double chordWindow_;
  MappingTable table_;
  std::map<std::int64_t, State> states_;
};

/// The real processor's actions in the words of the naive one.
inline NaiveTapProcessor::Actions plainly(const TapActions& actions) {
  struct Plainly {
    NaiveTapProcessor::Action operator()(const TapAction::Pass&) const { return {"pass", "", {}}; }
    NaiveTapProcessor::Action operator()(const TapAction::Suppress&) const {
      return {"suppress", "", {}};
    }
    NaiveTapProcessor::Action operator()(const TapAction::Rewrite& rewrite) const {
      return {"rewrite", rewrite.name.text(), {}};
    }
    NaiveTapProcessor::Action operator()(const TapAction::Post& post) const {
      return {"post", "", *post.events};
    }
    NaiveTapProcessor::Action operator()(const TapAction::Replay& replay) const {
      return {"replay", "", {replay.events.begin(), replay.events.end()}};
    }
  };
  NaiveTapProcessor::Actions result;
  for (const TapAction& action : actions)
    result.push_back(std::visit(Plainly{}, action.value));
  return result;
}

} // namespace trellivar
