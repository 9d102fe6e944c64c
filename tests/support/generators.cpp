#include "tests/support/generators.h"

#include "core/key_table.h"
#include "tests/support/plain_utf8.h"

#include <cstdint>
#include <string_view>

namespace trellivar::generate {

rc::Gen<std::string> character() {
  using Scalar = std::uint32_t;
  return rc::gen::map(rc::gen::weightedOneOf<Scalar>({
                          {6, range<Scalar>(0x20, 0x7E)},
                          {1, range<Scalar>(0x00, 0x1F)},
                          {1, rc::gen::elementOf(std::vector<Scalar>{'"', '\\', '/', 0x7F})},
                          {1, range<Scalar>(0x80, 0x7FF)},
                          {1, range<Scalar>(0x800, 0xD7FF)},
                          {1, range<Scalar>(0xE000, 0xFFFF)},
                          {1, range<Scalar>(0x10000, 0x10FFFF)},
                      }),
                      plain::utf8);
}

rc::Gen<std::string> text() {
  return rc::gen::map(upTo(12, character()), [](const std::vector<std::string>& characters) {
    std::string text;
    for (const std::string& each : characters)
      text += each;
    return text;
  });
}

rc::Gen<std::string> bytes() { return rc::gen::container<std::string>(rc::gen::arbitrary<char>()); }

rc::Gen<KeyName> knownKeyName() {
  static const auto names = [] {
    std::vector<KeyName> result;
    for (const auto& row : keytable::keys)
      result.emplace_back(row.name);
    for (const auto& row : keytable::modifiers)
      result.emplace_back(row.name);
    for (const auto& row : keytable::consumers)
      result.emplace_back(row.name);
    for (int button = 1; button <= keytable::buttonCount; ++button)
      result.emplace_back("button" + std::to_string(button));
    return result;
  }();
  return rc::gen::elementOf(names);
}

rc::Gen<KeyName> keyName() {
  const auto fromText = [](const std::string& any) { return KeyName(any); };
  return rc::gen::weightedOneOf<KeyName>(
      {{4, knownKeyName()}, {1, rc::gen::map(text(), fromText)}});
}

rc::Gen<Output> chordOutput() {
  return rc::gen::apply(
      [](std::vector<Modifier> modifiers, Key key) {
        return Output{Output::Chord{std::move(modifiers), key}};
      },
      upTo<Modifier>(5), rc::gen::arbitrary<Key>());
}

rc::Gen<Output> sequenceOutput() {
  return rc::gen::map(upTo<Key>(5), [](std::vector<Key> keys) {
    return Output{Output::Sequence{std::move(keys)}};
  });
}

rc::Gen<Output> modifiersOutput() {
  return rc::gen::map(upTo<Modifier>(5), [](std::vector<Modifier> modifiers) {
    return Output{Output::Modifiers{std::move(modifiers)}};
  });
}

} // namespace trellivar::generate

namespace rc {

namespace generate = trellivar::generate;
using trellivar::DeviceIdentity;
using trellivar::Key;
using trellivar::KeyLayout;
using trellivar::KeyMapping;
using trellivar::KeyName;
using trellivar::KeySignature;
using trellivar::Modifier;
using trellivar::Output;
using trellivar::PhysicalKey;
using trellivar::Profile;
using trellivar::StoredDeviceSignatures;
using trellivar::StoredKeySignature;
using trellivar::TrellivarDevice;
using trellivar::UUID;

Gen<KeyName> Arbitrary<KeyName>::arbitrary() { return generate::keyName(); }

Gen<Key::Kind> Arbitrary<Key::Kind>::arbitrary() { return gen::elementOf(Key::allKinds); }

Gen<Key> Arbitrary<Key>::arbitrary() {
  return gen::construct<Key>(gen::arbitrary<KeyName>(), gen::arbitrary<Key::Kind>());
}

Gen<Modifier> Arbitrary<Modifier>::arbitrary() { return gen::elementOf(Modifier::allCases); }

Gen<Output> Arbitrary<Output>::arbitrary() {
  return gen::oneOf(generate::chordOutput(), generate::sequenceOutput(),
                    generate::modifiersOutput());
}

Gen<KeySignature> Arbitrary<KeySignature>::arbitrary() {
  return gen::construct<KeySignature>(generate::upTo<Key>(4), gen::arbitrary<bool>());
}

Gen<PhysicalKey> Arbitrary<PhysicalKey>::arbitrary() {
  return gen::construct<PhysicalKey>(generate::integer<int>(), generate::integer<int>(),
                                     generate::integer<int>(), gen::arbitrary<KeySignature>(),
                                     generate::upTo<KeySignature>(3));
}

Gen<KeyLayout> Arbitrary<KeyLayout>::arbitrary() {
  return gen::construct<KeyLayout>(generate::upTo<PhysicalKey>(4));
}

Gen<DeviceIdentity> Arbitrary<DeviceIdentity>::arbitrary() {
  return gen::construct<DeviceIdentity>(generate::integer<int>(), generate::integer<int>());
}

Gen<TrellivarDevice> Arbitrary<TrellivarDevice>::arbitrary() {
  return gen::construct<TrellivarDevice>(generate::text(), generate::integer<int>(),
                                         generate::integer<int>(), gen::arbitrary<KeyLayout>());
}

Gen<UUID> Arbitrary<UUID>::arbitrary() {
  const auto digit = gen::elementOf(std::string("0123456789ABCDEF"));
  return gen::map(gen::container<std::string>(32, digit), [](std::string text) {
    for (const std::size_t dash : {8U, 13U, 18U, 23U})
      text.insert(dash, "-");
    return UUID::fromText(text).value();
  });
}

Gen<KeyMapping> Arbitrary<KeyMapping>::arbitrary() {
  return gen::construct<KeyMapping>(generate::integer<int>(), gen::arbitrary<Output>(),
                                    generate::optional(generate::text()));
}

Gen<Profile> Arbitrary<Profile>::arbitrary() {
  return gen::construct<Profile>(gen::arbitrary<UUID>(), generate::text(),
                                 generate::upTo<KeyMapping>(4));
}

Gen<StoredKeySignature> Arbitrary<StoredKeySignature>::arbitrary() {
  return gen::construct<StoredKeySignature>(generate::integer<int>(),
                                            gen::arbitrary<KeySignature>());
}

Gen<StoredDeviceSignatures> Arbitrary<StoredDeviceSignatures>::arbitrary() {
  return gen::construct<StoredDeviceSignatures>(generate::integer<int>(), generate::integer<int>(),
                                                generate::upTo<StoredKeySignature>(4),
                                                generate::optional(generate::text()));
}

} // namespace rc
