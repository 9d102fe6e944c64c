#pragma once

#include "core/key.h"

#include <vector>

namespace trellivar {

/// How a pad key is recognised: what the pad sends for it. Two signatures with the same keys in
/// another order are different; only the compiled mapping table matches without regard to order.
struct KeySignature {
  std::vector<Key> codes; ///< in the order recorded; none while the key is not learned
  bool isChord = false;   ///< the codes arrive together

  friend bool operator==(const KeySignature&, const KeySignature&) = default;
};

/// One key of a pad: where it sits and what it sends.
struct PhysicalKey {
  int id = 0;  ///< identity within the pad; what `KeyMapping::fromKeyId` refers to
  int row = 0; ///< zero-based
  int col = 0; ///< zero-based
  KeySignature signature;
  /// Further signatures that the same key is known to produce.
  std::vector<KeySignature> altSignatures = {};

  friend bool operator==(const PhysicalKey&, const PhysicalKey&) = default;
};

/// The keys of a pad in display order.
struct KeyLayout {
  std::vector<PhysicalKey> keys;

  friend bool operator==(const KeyLayout&, const KeyLayout&) = default;
};

} // namespace trellivar
