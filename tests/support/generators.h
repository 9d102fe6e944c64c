#pragma once

#include "core/device_identity.h"
#include "core/key_layout.h"
#include "core/output.h"
#include "core/profile.h"
#include "core/stored_signatures.h"
#include "core/trellivar_device.h"
#include "core/uuid.h"
#include "tests/support/printing.h" // so that a counterexample can be read

#include <rapidcheck.h>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Arbitrary values of the model for RapidCheck. `*rc::gen::arbitrary<Profile>()` works for every
/// type specialised at the end of this file; the functions of `generate` make narrower choices.
/// Lists are short, because long ones find nothing that short ones do not, only slower.
namespace trellivar::generate {

// Ranges, lists and optional values

/// Any integer from `first` to `last`, all equally likely from the first case on. (RapidCheck's own
/// range starts narrow and widens, so that most lists would be empty.)
template <class Integer> rc::Gen<Integer> range(Integer first, Integer last) {
  return rc::gen::resize(rc::kNominalSize,
                         rc::gen::inRange<Integer>(first, static_cast<Integer>(last + 1)));
}

/// A list of at most `most` elements.
template <class T> rc::Gen<std::vector<T>> upTo(std::size_t most, const rc::Gen<T>& element) {
  return rc::gen::mapcat(range<std::size_t>(0, most), [element](std::size_t count) {
    return rc::gen::container<std::vector<T>>(count, element);
  });
}
template <class T> rc::Gen<std::vector<T>> upTo(std::size_t most) {
  return upTo(most, rc::gen::arbitrary<T>());
}

template <class T> rc::Gen<std::optional<T>> optional(const rc::Gen<T>& value) {
  return rc::gen::map(rc::gen::maybe(value), [](rc::Maybe<T> maybe) {
    return maybe ? std::optional<T>(std::move(*maybe)) : std::nullopt;
  });
}

/// Any integer, the ends of the range more often than chance would have it.
template <class Integer> rc::Gen<Integer> integer() {
  using Limits = std::numeric_limits<Integer>;
  return rc::gen::weightedOneOf<Integer>({
      {8, rc::gen::arbitrary<Integer>()},
      {1, rc::gen::elementOf(std::vector<Integer>{Limits::min(), Limits::max(), 0})},
  });
}

// Texts

/// Any Unicode character as UTF-8, ASCII and control characters more often than the rest.
rc::Gen<std::string> character();
/// Valid UTF-8 of any kind, such as a name that somebody typed.
rc::Gen<std::string> text();
/// Any bytes at all, most of them not UTF-8.
rc::Gen<std::string> bytes();

// Keys and outputs

/// A name that some key table knows.
rc::Gen<KeyName> knownKeyName();
/// A known name, or now and then any text.
rc::Gen<KeyName> keyName();

rc::Gen<Output> chordOutput();
rc::Gen<Output> sequenceOutput();
rc::Gen<Output> modifiersOutput();

} // namespace trellivar::generate

// The types of the model. Values are as free as the types allow: ids may repeat, names may be
// unknown, signatures may be empty or name a key twice, a UUID is any 128 bits.

template <> struct rc::Arbitrary<trellivar::KeyName> {
  static Gen<trellivar::KeyName> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::Key::Kind> {
  static Gen<trellivar::Key::Kind> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::Key> {
  static Gen<trellivar::Key> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::Modifier> {
  static Gen<trellivar::Modifier> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::Output> {
  static Gen<trellivar::Output> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::KeySignature> {
  static Gen<trellivar::KeySignature> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::PhysicalKey> {
  static Gen<trellivar::PhysicalKey> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::KeyLayout> {
  static Gen<trellivar::KeyLayout> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::DeviceIdentity> {
  static Gen<trellivar::DeviceIdentity> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::TrellivarDevice> {
  static Gen<trellivar::TrellivarDevice> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::UUID> {
  static Gen<trellivar::UUID> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::KeyMapping> {
  static Gen<trellivar::KeyMapping> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::Profile> {
  static Gen<trellivar::Profile> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::StoredKeySignature> {
  static Gen<trellivar::StoredKeySignature> arbitrary();
};
template <> struct rc::Arbitrary<trellivar::StoredDeviceSignatures> {
  static Gen<trellivar::StoredDeviceSignatures> arbitrary();
};
