#pragma once

#include "core/device_identity.h"
#include "core/key_name.h"
#include "core/output.h"
#include "core/profile.h"
#include "core/tap_event.h"

#include <map>
#include <memory>
#include <set>
#include <span>
#include <unordered_map>
#include <variant>
#include <vector>

namespace trellivar {

/// The events of an output, immutable and shared: handing them on copies a pointer.
using SharedEvents = std::shared_ptr<const std::vector<TapEvent>>;

/// An output together with its expansion, made once so that firing the output allocates nothing.
class CompiledOutput {
public:
  explicit CompiledOutput(Output output);

  const Output& output() const noexcept { return output_; }
  /// Never null.
  const SharedEvents& events() const noexcept { return events_; }

  friend bool operator==(const CompiledOutput& a, const CompiledOutput& b) {
    return a.output_ == b.output_;
  }

private:
  Output output_;
  SharedEvents events_;
};

/// Everything that the engine must know to remap, compiled from the user's bindings: for each
/// device identity, which key names start a chord, fire alone, are swallowed, or are renamed.
struct MappingTable {
  /// Fires when all members are held together.
  struct ChordTrigger {
    std::set<KeyName, KeyName::ByText> members; ///< two or more
    CompiledOutput output;
    friend bool operator==(const ChordTrigger&, const ChordTrigger&) = default;
  };

  /// What a key name does on its own.
  struct SingleAction {
    struct Fire {
      CompiledOutput output;
      friend bool operator==(const Fire&, const Fire&) = default;
    };
    /// Part of a signature of several keys whose first key fires; produces nothing.
    struct Swallow {
      friend bool operator==(const Swallow&, const Swallow&) = default;
    };

    std::variant<Fire, Swallow> value;
    friend bool operator==(const SingleAction&, const SingleAction&) = default;
  };

  struct CompiledIdentity {
    /// Tried in this order; the first whose members are all held fires. A name that is a member of
    /// any of them is never looked up in `singles` on its press.
    std::vector<ChordTrigger> chords;
    /// Consulted before `normalization`.
    std::unordered_map<KeyName, SingleAction> singles;
    /// Right-side modifiers to rewrite to their left side.
    std::unordered_map<KeyName, KeyName> normalization;

    bool isEmpty() const noexcept {
      return chords.empty() && singles.empty() && normalization.empty();
    }
    friend bool operator==(const CompiledIdentity&, const CompiledIdentity&) = default;
  };

  /// Identities with nothing to do are absent.
  std::map<DeviceIdentity, CompiledIdentity> identities;

  /// The table without identities.
  static const MappingTable empty;

  /// Compiles the sets in order: of two singles for the same identity and name the later wins,
  /// chord triggers accumulate.
  ///
  /// - A portable set contributes normalisation only: the right side of each modifier that the
  ///   profile's combinations hold on the left is rewritten to the left side.
  /// - A set for a known pad binds every transport of the pad's mode "P", with the layouts of the
  ///   registry.
  /// - Any other set binds its own device identity with its own layout.
  ///
  /// Mappings to absent keys, and signatures that are empty or hold an unmappable key, are skipped.
  /// Requires: no layout of an unknown device names a key id twice (the process is aborted).
  static MappingTable compile(std::span<const MappingSet> sets);

  friend bool operator==(const MappingTable&, const MappingTable&) = default;
};

} // namespace trellivar
