#include "core/bound_layouts.h"
#include "core/known_devices.h"
#include "core/mapping_table.h"
#include "core/mode_sets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace trellivar {
namespace {

TrellivarDevice device(DeviceIdentity identity) {
  const Key q{KeyName("q"), Key::Kind::keyCode};
  const PhysicalKey key{.id = 1, .row = 0, .col = 0, .signature = {{q}, false}};
  return {"My pad", identity.vendorId, identity.productId, {{key}}};
}

TEST(BoundLayouts, ofADeviceAreItsOwn) {
  for (const DeviceIdentity identity : {DeviceIdentity{7, 9}, {0x05AC, 0x0220}}) {
    const TrellivarDevice own = device(identity);
    const auto bound = boundLayouts(own);
    ASSERT_EQ(bound.size(), 1U);
    EXPECT_EQ(bound[0].identity, identity);
    EXPECT_EQ(bound[0].layout, &own.layout);
  }
}

TEST(BoundLayouts, ofAKnownPadAreThoseOfTheRegistryForEachTransport) {
  const auto& transports = KnownDevices::all().front().primaryMode()->transports;
  for (const KnownTransport& transport : transports) {
    const TrellivarDevice learned = device(transport.identity);
    const auto bound = boundLayouts(learned);
    ASSERT_EQ(bound.size(), transports.size());
    for (std::size_t i = 0; i < bound.size(); ++i) {
      EXPECT_EQ(bound[i].identity, transports[i].identity);
      EXPECT_EQ(*bound[i].layout, transports[i].layout);
    }
  }
}

bool binds(const MappingTable::CompiledIdentity& compiled, const KeySignature& signature) {
  std::set<KeyName, KeyName::ByText> names;
  for (const Key& code : signature.codes)
    names.insert(code.keyCode);
  if (!signature.isChord) return compiled.singles.contains(*names.begin());
  return std::ranges::any_of(compiled.chords,
                             [&](const auto& trigger) { return trigger.members == names; });
}

TEST(BoundLayouts, areWhatTheTableBindsWhenEveryKeyHasABinding) {
  for (const TrellivarDevice& each :
       {initialDevice(), device({7, 9}), device({0x05AC, 0x022C}), device({0x05AC, 0x0220})}) {
    MappingSet set{each, {UUID::random(), "P", {}}, false};
    for (const int id : {1, 2, 3})
      set.profile.mappings.push_back({id, {Output::Modifiers{}}, std::nullopt});
    const MappingTable table = MappingTable::compile({&set, 1});
    const auto bound = boundLayouts(each);
    EXPECT_EQ(table.identities.size(), bound.size());
    for (const auto& [identity, layout] : bound) {
      ASSERT_TRUE(table.identities.contains(identity));
      for (const PhysicalKey& key : layout->keys)
        EXPECT_TRUE(binds(table.identities.at(identity), key.signature)) << "key " << key.id;
    }
  }
}

} // namespace
} // namespace trellivar
